// Escape as a passive grab: it alone is taken from the window that has the focus, and the hot keys continue
// to work.
#pragma once

#include "backends/common/EscapeKey.h"
#include "foundation/Registration.h"

#include <functional>

namespace orbel::x11 {

class PassiveKeyGrabs;

class EscapeGrab final : public common::EscapeKey {
public:
  EscapeGrab(PassiveKeyGrabs& grabs, std::function<void()> pressed);

  void setEnabled(bool enabled) override;
  bool isEnabled() const { return static_cast<bool>(m_grab); }

private:
  PassiveKeyGrabs& m_grabs;
  std::function<void()> m_pressed;
  Registration m_grab;
};

} // namespace orbel::x11
