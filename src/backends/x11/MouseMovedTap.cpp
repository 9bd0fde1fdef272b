#include "backends/x11/MouseMovedTap.h"

#include "backends/x11/RawPointer.h"

#include <chrono>
#include <utility>

namespace orbel {

namespace {
constexpr std::chrono::duration<double> kInterval{EventTaps::kMovementInterval};
// A little less: the first movement after the interval must not be missed while the server is being asked.
constexpr std::chrono::milliseconds kPause{45};
static_assert(kPause < kInterval);
} // namespace

MouseMovedTap::MouseMovedTap(RawPointer& pointer, std::function<void()> mouseMoved)
    : m_pointer(pointer), m_mouseMoved(std::move(mouseMoved)), m_endOfPause([this] { listen(); }) {}

void MouseMovedTap::setEnabled(bool enabled) {
  if (enabled == m_enabled) return;
  m_enabled = enabled;
  if (!enabled) {
    m_presses.reset();
    m_releases.reset();
    m_motion.reset();
    m_endOfPause.cancel();
    m_lastPause = {};
    return;
  }
  m_presses =
      m_pointer.observePresses([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, true); });
  m_releases =
      m_pointer.observeReleases([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, false); });
  listen();
  // After the selection: a press in between is then told twice rather than never.
  m_held.reset();
  for (const std::uint32_t button : m_pointer.heldButtons())
    setHeld(button, true);
}

void MouseMovedTap::listen() {
  m_motion = m_pointer.observeMotion([this] { moved(); });
}

void MouseMovedTap::moved() {
  pauseOnceAnInterval();                // before the block, which may disable the tap
  const auto mouseMoved = m_mouseMoved; // which it may end as well
  if (m_held.none()) mouseMoved();
}

// The movements between the end of the pause and that of the interval begin no pause of their own: the next
// one that matters is only a moment away.
void MouseMovedTap::pauseOnceAnInterval() {
  const auto now = std::chrono::steady_clock::now();
  if (now - m_lastPause < kInterval) return;
  m_lastPause = now;
  m_motion.reset();
  m_endOfPause.schedule(kPause);
}

void MouseMovedTap::setHeld(std::uint32_t button, bool held) {
  if (button < m_held.size()) m_held.set(button, held);
}

} // namespace orbel
