// Escape alone, wherever the keyboard focus is, while it is enabled: the menu is dismissed by it and never has
// the focus. Hot keys and everything else that is typed reach their owners. Made by the display server for the
// menu's windows; main thread only.
#pragma once

namespace orbel::common {

class EscapeKey {
public:
  virtual ~EscapeKey() = default;
  // Stays off, and logs it, when another program holds the key.
  virtual void setEnabled(bool enabled) = 0;
};

} // namespace orbel::common
