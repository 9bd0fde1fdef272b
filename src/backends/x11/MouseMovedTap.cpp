#include "backends/x11/MouseMovedTap.h"

#include "backends/x11/RawPointer.h"

#include <utility>

namespace orbel {

MouseMovedTap::MouseMovedTap(RawPointer& pointer, std::function<void()> mouseMoved)
    : m_pointer(pointer), m_mouseMoved(std::move(mouseMoved)) {}

void MouseMovedTap::setEnabled(bool enabled) {
  if (enabled == m_enabled) return;
  m_enabled = enabled;
  if (!enabled) {
    m_presses.reset();
    m_releases.reset();
    m_motion.reset();
    return;
  }
  m_presses =
      m_pointer.observePresses([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, true); });
  m_releases =
      m_pointer.observeReleases([this](std::uint32_t button, xcb_timestamp_t) { setHeld(button, false); });
  // A copy in the block, which outlives its call: the tap may not.
  m_motion = m_pointer.observeMotion([this, mouseMoved = m_mouseMoved] {
    if (m_held.none()) mouseMoved();
  });
  // After the selection: a press in between is then told twice rather than never.
  m_held.reset();
  for (const std::uint32_t button : m_pointer.heldButtons())
    setHeld(button, true);
}

void MouseMovedTap::setHeld(std::uint32_t button, bool held) {
  if (button < m_held.size()) m_held.set(button, held);
}

} // namespace orbel
