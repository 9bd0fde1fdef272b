#include "backends/x11/X11KeyboardLayout.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/Connection.h"
#include "foundation/Log.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace orbel::x11 {

namespace {

struct DeadKey {
  xkb_keysym_t symbol;
  std::string_view spacing;
};

// Dead keys yield no text of their own. Each as the spacing character of its mark.
constexpr std::array kDeadKeys = {
    DeadKey{XKB_KEY_dead_grave, "`"},
    DeadKey{XKB_KEY_dead_acute, "´"},
    DeadKey{XKB_KEY_dead_circumflex, "^"},
    DeadKey{XKB_KEY_dead_tilde, "~"},
    DeadKey{XKB_KEY_dead_macron, "¯"},
    DeadKey{XKB_KEY_dead_breve, "˘"},
    DeadKey{XKB_KEY_dead_abovedot, "˙"},
    DeadKey{XKB_KEY_dead_diaeresis, "¨"},
    DeadKey{XKB_KEY_dead_abovering, "˚"},
    DeadKey{XKB_KEY_dead_doubleacute, "˝"},
    DeadKey{XKB_KEY_dead_caron, "ˇ"},
    DeadKey{XKB_KEY_dead_cedilla, "¸"},
    DeadKey{XKB_KEY_dead_ogonek, "˛"},
    DeadKey{XKB_KEY_dead_iota, "ͺ"},
    DeadKey{XKB_KEY_dead_voiced_sound, "゛"},
    DeadKey{XKB_KEY_dead_semivoiced_sound, "゜"},
    DeadKey{XKB_KEY_dead_belowdot, "."},
    DeadKey{XKB_KEY_dead_stroke, "/"},
    DeadKey{XKB_KEY_dead_belowcomma, ","},
    DeadKey{XKB_KEY_dead_abovecomma, "᾿"},
    DeadKey{XKB_KEY_dead_abovereversedcomma, "῾"},
    DeadKey{XKB_KEY_dead_greek, "µ"},
    DeadKey{XKB_KEY_dead_currency, "¤"},
};

template <class Object, void (*release)(Object*)>
struct Unref {
  void operator()(Object* object) const { release(object); }
};

} // namespace

struct X11KeyboardLayout::Keymap {
  std::unique_ptr<xkb_keymap, Unref<xkb_keymap, xkb_keymap_unref>> keymap;
  std::unique_ptr<xkb_state, Unref<xkb_state, xkb_state_unref>> state;
};

X11KeyboardLayout::X11KeyboardLayout(Connection& connection)
    : m_connection(connection), m_xkb(XkbEvents::selectKeymapChanges(connection)),
      m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
  if (!m_xkb) return;
  m_xkb->selectGroupChanges(connection);
  m_events =
      connection.observeEvents([this](const xcb_generic_event_t& event) { forgetKeymapIfChanged(event); });
}

X11KeyboardLayout::~X11KeyboardLayout() {
  m_keymap.reset();
  xkb_context_unref(m_context);
}

void X11KeyboardLayout::forgetKeymapIfChanged(const xcb_generic_event_t& event) const {
  if (m_xkb->isKeymapChange(event) || m_xkb->isGroupChange(event)) m_keymap.reset();
}

const X11KeyboardLayout::Keymap* X11KeyboardLayout::currentKeymap() const {
  if (!m_xkb || !m_context) return nullptr;
  // A change may be on its way; being asked for a text is rare enough for a round trip.
  m_connection.peek([this](const xcb_generic_event_t& event) { forgetKeymapIfChanged(event); });
  if (m_keymap) return m_keymap.get();

  const std::int32_t device = xkb_x11_get_core_keyboard_device_id(m_connection.xcb());
  Keymap read;
  read.keymap.reset(
      xkb_x11_keymap_new_from_device(m_context, m_connection.xcb(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
  if (!read.keymap) {
    Log::warning("the keyboard layout cannot be read from the X server");
    return nullptr;
  }
  read.state.reset(xkb_x11_state_new_from_device(read.keymap.get(), m_connection.xcb(), device));
  if (!read.state) {
    Log::warning("the keyboard's state cannot be read from the X server");
    return nullptr;
  }
  // The group alone: what is held or locked while we ask does not matter.
  const xkb_layout_index_t group = xkb_state_serialize_layout(read.state.get(), XKB_STATE_LAYOUT_EFFECTIVE);
  xkb_state_update_mask(read.state.get(), 0, 0, 0, 0, 0, group);
  m_keymap = std::make_unique<Keymap>(std::move(read));
  return m_keymap.get();
}

std::optional<std::string> X11KeyboardLayout::textForKeyCode(std::uint64_t virtualKeyCode) const {
  const auto evdevCode = common::VirtualKeyCodes::evdevCode(virtualKeyCode);
  const Keymap* keymap = evdevCode ? currentKeymap() : nullptr;
  if (!keymap) return std::nullopt;

  const xkb_keycode_t keyCode = *evdevCode + common::VirtualKeyCodes::kXKeyCodeOffset;
  const xkb_keysym_t symbol = xkb_state_key_get_one_sym(keymap->state.get(), keyCode);
  const auto dead = std::ranges::find(kDeadKeys, symbol, &DeadKey::symbol);
  if (dead != kDeadKeys.end()) return std::string(dead->spacing);

  std::array<char, 64> text{};
  const int length = xkb_state_key_get_utf8(keymap->state.get(), keyCode, text.data(), text.size());
  if (length <= 0) return std::nullopt;
  return std::string(text.data());
}

} // namespace orbel::x11
