#include "tests/support/x11/Keymap.h"

namespace orbel::test {

Keymap::Keymap(DisplayConnection& display)
    : m_display(display), m_symbols(xcb_key_symbols_alloc(display.get())) {}

std::optional<Key> Keymap::find(xcb_keysym_t keysym) const {
  const xcb_setup_t* setup = xcb_get_setup(m_display.get());
  for (const int level : {0, 1}) {
    for (int code = setup->min_keycode; code <= setup->max_keycode; ++code) {
      const auto keycode = static_cast<xcb_keycode_t>(code);
      if (xcb_key_symbols_get_keysym(m_symbols.get(), keycode, level) == keysym)
        return Key{keycode, level == 1};
    }
  }
  return std::nullopt;
}

xcb_keysym_t Keymap::keysym(xcb_keycode_t code) const {
  return xcb_key_symbols_get_keysym(m_symbols.get(), code, 0);
}

} // namespace orbel::test
