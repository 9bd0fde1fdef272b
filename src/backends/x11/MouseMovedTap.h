// The pointer's movements with no button held; with one held it is a drag. Presses and releases are listened
// to as well while it is enabled, to know which of the two a movement is without asking the server at each.
// For most of the interval in which the tap may leave movements out, the server is asked for none: a pointer
// that moves costs little however often the mouse reports, one that rests nothing.
#pragma once

#include "backends/x11/DelayedCall.h"
#include "foundation/Registration.h"
#include "platform/EventTaps.h"

#include <bitset>
#include <chrono>
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
  void listen();
  void moved();
  void pauseOnceAnInterval();

  RawPointer& m_pointer;
  std::function<void()> m_mouseMoved;
  bool m_enabled = false;
  std::bitset<256> m_held;
  Registration m_presses;
  Registration m_releases;
  Registration m_motion; // none during a pause
  std::chrono::steady_clock::time_point m_lastPause;
  DelayedCall m_endOfPause;
};

} // namespace orbel
