#include "backends/common/VirtualKeyCodes.h"

#include <algorithm>
#include <array>
#include <linux/input-event-codes.h>

namespace orbel::common {

namespace {

struct Key {
  std::uint16_t virtualKeyCode;
  std::uint16_t evdevCode;
};

// A key stands once on either side. Keys that the two worlds name differently are paired by where they
// are: keypad Clear is where Num Lock is, Help where Insert is, the section key of an ISO keyboard is the
// extra key.
constexpr std::array kKeys = {
    Key{0, KEY_A},           Key{1, KEY_S},          Key{2, KEY_D},           Key{3, KEY_F},
    Key{4, KEY_H},           Key{5, KEY_G},          Key{6, KEY_Z},           Key{7, KEY_X},
    Key{8, KEY_C},           Key{9, KEY_V},          Key{10, KEY_102ND},      Key{11, KEY_B},
    Key{12, KEY_Q},          Key{13, KEY_W},         Key{14, KEY_E},          Key{15, KEY_R},
    Key{16, KEY_Y},          Key{17, KEY_T},         Key{18, KEY_1},          Key{19, KEY_2},
    Key{20, KEY_3},          Key{21, KEY_4},         Key{22, KEY_6},          Key{23, KEY_5},
    Key{24, KEY_EQUAL},      Key{25, KEY_9},         Key{26, KEY_7},          Key{27, KEY_MINUS},
    Key{28, KEY_8},          Key{29, KEY_0},         Key{30, KEY_RIGHTBRACE}, Key{31, KEY_O},
    Key{32, KEY_U},          Key{33, KEY_LEFTBRACE}, Key{34, KEY_I},          Key{35, KEY_P},
    Key{36, KEY_ENTER},      Key{37, KEY_L},         Key{38, KEY_J},          Key{39, KEY_APOSTROPHE},
    Key{40, KEY_K},          Key{41, KEY_SEMICOLON}, Key{42, KEY_BACKSLASH},  Key{43, KEY_COMMA},
    Key{44, KEY_SLASH},      Key{45, KEY_N},         Key{46, KEY_M},          Key{47, KEY_DOT},
    Key{48, KEY_TAB},        Key{49, KEY_SPACE},     Key{50, KEY_GRAVE},      Key{51, KEY_BACKSPACE},
    Key{53, KEY_ESC},        Key{54, KEY_RIGHTMETA}, Key{55, KEY_LEFTMETA},   Key{56, KEY_LEFTSHIFT},
    Key{57, KEY_CAPSLOCK},   Key{58, KEY_LEFTALT},   Key{59, KEY_LEFTCTRL},   Key{60, KEY_RIGHTSHIFT},
    Key{61, KEY_RIGHTALT},   Key{62, KEY_RIGHTCTRL}, Key{64, KEY_F17},        Key{65, KEY_KPDOT},
    Key{67, KEY_KPASTERISK}, Key{69, KEY_KPPLUS},    Key{71, KEY_NUMLOCK},    Key{72, KEY_VOLUMEUP},
    Key{73, KEY_VOLUMEDOWN}, Key{74, KEY_MUTE},      Key{75, KEY_KPSLASH},    Key{76, KEY_KPENTER},
    Key{78, KEY_KPMINUS},    Key{79, KEY_F18},       Key{80, KEY_F19},        Key{81, KEY_KPEQUAL},
    Key{82, KEY_KP0},        Key{83, KEY_KP1},       Key{84, KEY_KP2},        Key{85, KEY_KP3},
    Key{86, KEY_KP4},        Key{87, KEY_KP5},       Key{88, KEY_KP6},        Key{89, KEY_KP7},
    Key{90, KEY_F20},        Key{91, KEY_KP8},       Key{92, KEY_KP9},        Key{93, KEY_YEN},
    Key{94, KEY_RO},         Key{95, KEY_KPJPCOMMA}, Key{96, KEY_F5},         Key{97, KEY_F6},
    Key{98, KEY_F7},         Key{99, KEY_F3},        Key{100, KEY_F8},        Key{101, KEY_F9},
    Key{102, KEY_HANJA},     Key{103, KEY_F11},      Key{104, KEY_HANGEUL},   Key{105, KEY_F13},
    Key{106, KEY_F16},       Key{107, KEY_F14},      Key{109, KEY_F10},       Key{110, KEY_COMPOSE},
    Key{111, KEY_F12},       Key{113, KEY_F15},      Key{114, KEY_INSERT},    Key{115, KEY_HOME},
    Key{116, KEY_PAGEUP},    Key{117, KEY_DELETE},   Key{118, KEY_F4},        Key{119, KEY_END},
    Key{120, KEY_F2},        Key{121, KEY_PAGEDOWN}, Key{122, KEY_F1},        Key{123, KEY_LEFT},
    Key{124, KEY_RIGHT},     Key{125, KEY_DOWN},     Key{126, KEY_UP},
};

} // namespace

std::optional<std::uint16_t> VirtualKeyCodes::evdevCode(std::uint64_t virtualKeyCode) {
  const auto key = std::ranges::find(kKeys, virtualKeyCode, &Key::virtualKeyCode);
  if (key == kKeys.end()) return std::nullopt;
  return key->evdevCode;
}

std::optional<std::uint64_t> VirtualKeyCodes::virtualKeyCode(std::uint16_t evdevCode) {
  const auto key = std::ranges::find(kKeys, evdevCode, &Key::evdevCode);
  if (key == kKeys.end()) return std::nullopt;
  return key->virtualKeyCode;
}

} // namespace orbel::common
