// Every pointer movement with no button held; with one held it is a drag. Presses and releases are listened
// to as well while it is enabled, to know which of the two a movement is without asking the server at each.
#pragma once

#include "foundation/Registration.h"
#include "platform/EventTaps.h"

#include <bitset>
#include <cstdint>
#include <functional>

namespace orbel {

class RawPointer;

class MouseMovedTap : public EventTap {
public:
  MouseMovedTap(RawPointer& pointer, std::function<void()> mouseMoved);
  void setEnabled(bool enabled) override;
  bool isEnabled() const override { return m_enabled; }

private:
  void setHeld(std::uint32_t button, bool held);

  RawPointer& m_pointer;
  std::function<void()> m_mouseMoved;
  bool m_enabled = false;
  std::bitset<256> m_held;
  Registration m_presses;
  Registration m_releases;
  Registration m_motion;
};

} // namespace orbel
