#include "shortcut/KeyNames.h"

#include <algorithm>
#include <array>

namespace orbel {

namespace {
struct FixedText {
  std::uint64_t keyCode;
  std::string_view text;
};

constexpr std::array kFixedTexts = {
    FixedText{36, "\u21A9"}, // Return
    FixedText{48, "\u21E5"}, // Tab
    FixedText{kSpaceKeyCode, "Space"},
    FixedText{kDeleteKeyCode, kDeleteGlyph},
    FixedText{kEscapeKeyCode, kEscapeGlyph},
    FixedText{71, "\u2327"},  // keypad Clear
    FixedText{76, "\u2305"},  // keypad Enter
    FixedText{114, "?"},      // Help
    FixedText{115, "\u2196"}, // Home
    FixedText{116, "\u21DE"}, // Page Up
    FixedText{kForwardDeleteKeyCode, "\u2326"},
    FixedText{119, "\u2198"}, // End
    FixedText{121, "\u21DF"}, // Page Down
    FixedText{123, "\u2190"}, // the arrows: left, right, down, up
    FixedText{124, "\u2192"},
    FixedText{125, "\u2193"},
    FixedText{126, "\u2191"},
    FixedText{65, "."}, // the keypad from here on
    FixedText{67, "*"},
    FixedText{69, "+"},
    FixedText{75, "/"},
    FixedText{78, "\u2013"}, // an en dash: a hyphen is hard to see beside the modifiers' glyphs
    FixedText{81, "="},
    FixedText{82, "0"},
    FixedText{83, "1"},
    FixedText{84, "2"},
    FixedText{85, "3"},
    FixedText{86, "4"},
    FixedText{87, "5"},
    FixedText{88, "6"},
    FixedText{89, "7"},
    FixedText{91, "8"}, // 90 is F20
    FixedText{92, "9"},
};

// In the order F1 to F19.
constexpr std::array<std::uint64_t, 19> kFunctionKeyCodes = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                             103, 111, 105, 107, 113, 106, 64, 79,  80};
constexpr std::array<std::string_view, 19> kFunctionKeyTexts = {
    "F1",  "F2",  "F3",  "F4",  "F5",  "F6",  "F7",  "F8",  "F9", "F10",
    "F11", "F12", "F13", "F14", "F15", "F16", "F17", "F18", "F19"};
constexpr std::uint64_t kF20KeyCode = 90;
} // namespace

std::optional<std::string_view> KeyNames::fixedText(std::uint64_t keyCode) {
  if (const auto number = functionKeyNumber(keyCode)) {
    return kFunctionKeyTexts[static_cast<std::size_t>(*number) - 1];
  }
  const auto entry = std::find_if(kFixedTexts.begin(), kFixedTexts.end(),
                                  [&](const FixedText& fixed) { return fixed.keyCode == keyCode; });
  if (entry == kFixedTexts.end()) return std::nullopt;
  return entry->text;
}

std::optional<int> KeyNames::functionKeyNumber(std::uint64_t keyCode) {
  const auto entry = std::find(kFunctionKeyCodes.begin(), kFunctionKeyCodes.end(), keyCode);
  if (entry == kFunctionKeyCodes.end()) return std::nullopt;
  return static_cast<int>(entry - kFunctionKeyCodes.begin()) + 1;
}

bool KeyNames::isFunctionKey(std::uint64_t keyCode) {
  return keyCode == kF20KeyCode || functionKeyNumber(keyCode).has_value();
}

} // namespace orbel
