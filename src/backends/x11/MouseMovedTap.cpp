#include "backends/x11/MouseMovedTap.h"

#include "backends/x11/RawPointer.h"

#include <chrono>
#include <utility>

namespace orbel {

namespace {
constexpr std::chrono::milliseconds kPause{static_cast<int>(EventTaps::kMovementPause * 1000)};
}

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
  // Before the block, which may disable the tap.
  m_motion.reset();
  m_endOfPause.schedule(kPause);
  if (m_held.none()) m_mouseMoved();
}

void MouseMovedTap::setHeld(std::uint32_t button, bool held) {
  if (button < m_held.size()) m_held.set(button, held);
}

} // namespace orbel
