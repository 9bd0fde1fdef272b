#include "backends/x11/X11EventTaps.h"

#include "backends/x11/MouseMovedTap.h"
#include "backends/x11/MouseUpTap.h"
#include "backends/x11/PinchAwareTouchTap.h"
#include "backends/x11/RawPointer.h"
#include "foundation/Log.h"

#include <utility>

namespace orbel::x11 {

namespace {

class MissingTouchTap : public EventTap {
public:
  void setEnabled(bool enabled) override {
    if (enabled && !m_enabled) Log::warning("there is no source of touches; touchpad gestures do nothing");
    m_enabled = enabled;
  }
  bool isEnabled() const override { return m_enabled; }

private:
  bool m_enabled = false;
};

} // namespace

X11EventTaps::X11EventTaps(RawPointer& pointer, TouchSource touches, PinchGestures* pinches)
    : m_pointer(pointer), m_touches(std::move(touches)), m_pinches(pinches) {}

std::unique_ptr<EventTap> X11EventTaps::makeMouseUpTap(std::function<void()> mouseUp) {
  return std::make_unique<MouseUpTap>(m_pointer, std::move(mouseUp));
}

std::unique_ptr<EventTap> X11EventTaps::makeMouseMovedTap(std::function<MovementUse()> mouseMoved) {
  return std::make_unique<MouseMovedTap>(m_pointer, std::move(mouseMoved));
}

std::unique_ptr<EventTap> X11EventTaps::makeTouchTap(TouchHandlers handlers) {
  if (!m_touches.makeTap) return std::make_unique<MissingTouchTap>();
  if (!m_pinches) return m_touches.makeTap(std::move(handlers));
  return std::make_unique<PinchAwareTouchTap>(*m_pinches, m_touches.makeTap, std::move(handlers));
}

bool X11EventTaps::isTrusted() {
  const auto access = checkTouchpadAccess();
  if (!access) Log::warning("may not read " + access.cause());
  // Every client of an X server may listen to raw input.
  return m_pointer.isAvailable() && access;
}

Result<> X11EventTaps::checkTouchpadAccess() {
  return m_touches.checkAccess ? m_touches.checkAccess() : Result<>();
}

void X11EventTaps::drain() {
  m_pointer.drain();
}

} // namespace orbel::x11
