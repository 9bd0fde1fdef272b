#include "backends/x11/MouseUpTap.h"

#include "backends/x11/RawPointer.h"

#include <utility>

namespace orbel::x11 {

namespace {
constexpr std::uint32_t kPrimaryButton = 1;
}

MouseUpTap::MouseUpTap(RawPointer& pointer, std::function<void()> mouseUp)
    : m_pointer(pointer), m_mouseUp(std::move(mouseUp)) {}

void MouseUpTap::setEnabled(bool enabled) {
  if (enabled == m_enabled) return;
  m_enabled = enabled;
  if (!enabled) {
    m_releases.reset();
    return;
  }
  // A copy in the block, which outlives its call: the tap may not.
  m_releases = m_pointer.observeReleases([mouseUp = m_mouseUp](std::uint32_t button, xcb_timestamp_t) {
    if (button == kPrimaryButton) mouseUp();
  });
}

} // namespace orbel::x11
