// Escape alone, system-wide, while it is enabled: the menu never has the keyboard focus and is dismissed by
// Escape all the same. Hot keys and everything else that is typed go on as before. Used by the menu's window.
#pragma once

#include "foundation/Registration.h"

#include <functional>

namespace orbel {

class PassiveKeyGrabs;

class EscapeGrab {
public:
  EscapeGrab(PassiveKeyGrabs& grabs, std::function<void()> pressed);

  // Stays off, and logs it, when another program holds the key.
  void setEnabled(bool enabled);
  bool isEnabled() const { return static_cast<bool>(m_grab); }

private:
  PassiveKeyGrabs& m_grabs;
  std::function<void()> m_pressed;
  Registration m_grab;
};

} // namespace orbel
