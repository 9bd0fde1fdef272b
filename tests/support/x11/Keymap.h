// Which key gives which character under the server's present layout (levels one and two of the first group).
#pragma once

#include "tests/support/x11/DisplayConnection.h"

#include <memory>
#include <optional>
#include <xcb/xcb_keysyms.h>

namespace orbel::test {

struct Key {
  xcb_keycode_t code = 0;
  bool needsShift = false;
};

class Keymap {
public:
  // Reads the layout; a later change of it needs a new object.
  explicit Keymap(DisplayConnection& display);

  std::optional<Key> find(xcb_keysym_t keysym) const;
  // The unshifted meaning of a key.
  xcb_keysym_t keysym(xcb_keycode_t code) const;

private:
  struct Release {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
  };

  DisplayConnection& m_display;
  std::unique_ptr<xcb_key_symbols_t, Release> m_symbols;
};

} // namespace orbel::test
