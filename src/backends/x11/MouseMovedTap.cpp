#include "backends/x11/MouseMovedTap.h"

#include "backends/x11/RawPointer.h"

#include <chrono>
#include <utility>

namespace orbel::x11 {

namespace {
using Clock = std::chrono::steady_clock;
constexpr std::chrono::duration<double> kInterval{EventTaps::kMovementInterval};
// A little less: the first movement after the interval must not be missed while the server is being asked.
constexpr std::chrono::milliseconds kPause{45};
static_assert(kPause < kInterval);
} // namespace

MouseMovedTap::MouseMovedTap(RawPointer& pointer, Handler mouseMoved)
    : m_pointer(pointer), m_mouseMoved(std::move(mouseMoved)), m_endOfPause([this] { listenAsNeeded(); }) {}

void MouseMovedTap::setEnabled(bool enabled) {
  if (enabled == m_enabled) return;
  m_enabled = enabled;
  m_held.reset();
  m_endOfPause.cancel();
  if (!enabled) {
    m_presses.reset();
    m_releases.reset();
    listenAsNeeded();
    return;
  }
  m_presses =
      m_pointer.observePresses([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, true); });
  m_releases =
      m_pointer.observeReleases([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, false); });
  listenAsNeeded();
  // After the selection: a press in between is then noticed twice rather than never.
  for (const std::uint32_t button : m_pointer.heldButtons())
    setHeld(button, true);
}

void MouseMovedTap::listenAsNeeded() {
  const bool isNeeded = m_enabled && m_held.none() && !m_endOfPause.isPending();
  if (isNeeded == static_cast<bool>(m_motion)) return;
  m_motion = isNeeded ? m_pointer.observeMotion([this] { moved(); }) : Registration();
}

// Only whoever takes movements knows which one he took: with a clock of the tap's own, a movement that came
// just before it was due would begin a pause, and the one that was due would fall into it.
void MouseMovedTap::moved() {
  const auto start = Clock::now();
  const auto mouseMoved = m_mouseMoved; // it may end the tap
  const auto life = m_lifetime.watch();
  if (mouseMoved() == EventTaps::MovementUse::ignored || life.hasEnded() || !m_enabled) return;
  // What was summoned by it may have taken a while.
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(kPause - (Clock::now() - start));
  if (rest.count() > 0) m_endOfPause.schedule(rest);
  listenAsNeeded();
}

void MouseMovedTap::setHeld(std::uint32_t button, bool held) {
  if (button < m_held.size()) m_held.set(button, held);
  listenAsNeeded();
}

} // namespace orbel::x11
