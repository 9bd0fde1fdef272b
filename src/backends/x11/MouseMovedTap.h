// The pointer's movements with no button held; with one held it is a drag. Presses and releases are listened
// to as well while it is enabled, to know which of the two a movement is without asking the server at each.
// During a drag, and for most of the interval in which the tap may leave movements out, the server is asked
// for none: a pointer that moves costs little however often the mouse reports, one that rests nothing.
#pragma once

#include "backends/x11/DelayedCall.h"
#include "foundation/Lifetime.h"
#include "foundation/Registration.h"
#include "platform/EventTaps.h"

#include <bitset>
#include <cstdint>
#include <functional>

namespace orbel::x11 {

class RawPointer;

class MouseMovedTap : public EventTap {
public:
  using Handler = std::function<EventTaps::MovementUse()>;

  MouseMovedTap(RawPointer& pointer, Handler mouseMoved);
  void setEnabled(bool enabled) override;
  bool isEnabled() const override { return m_enabled; }

private:
  void setHeld(std::uint32_t button, bool held);
  void listenAsNeeded();
  void moved();

  RawPointer& m_pointer;
  Handler m_mouseMoved;
  bool m_enabled = false;
  std::bitset<256> m_held;
  Registration m_presses;
  Registration m_releases;
  Registration m_motion;    // none during a drag and during a pause
  DelayedCall m_endOfPause; // pending during one
  Lifetime m_lifetime;      // a handler may end the tap
};

} // namespace orbel::x11
