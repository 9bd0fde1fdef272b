#include "backends/evdev/TouchpadTap.h"

#include "backends/evdev/PinchDetector.h"
#include "backends/evdev/Touchpad.h"
#include "backends/evdev/TouchpadWatch.h"
#include "foundation/Log.h"

#include <algorithm>
#include <utility>

namespace orbel::evdev {

namespace {
constexpr int kFingersOfGestures = 3; // the fewest that any gesture needs
} // namespace

TouchpadTap::TouchpadTap(TouchHandlers handlers) : m_handlers(std::move(handlers)) {}

TouchpadTap::~TouchpadTap() {
  setEnabled(false);
}

void TouchpadTap::setEnabled(bool enabled) {
  if (enabled == isEnabled()) return;
  if (!enabled) {
    m_watch.reset();
    for (const auto& touchpad : std::exchange(m_touchpads, {}))
      touchpad->close();
    return;
  }
  // First the watch: a touchpad that comes in between is then found twice rather than never.
  m_watch = std::make_unique<TouchpadWatch>(
      TouchpadWatch::Handlers{[this](const TouchpadDevice& device) { open(device); },
                              [this](const std::string& systemPath) { remove(systemPath); }});
  for (const TouchpadDevice& device : TouchpadWatch::present())
    open(device);
}

void TouchpadTap::open(const TouchpadDevice& device) {
  const auto isSame = [&](const auto& touchpad) { return touchpad->systemPath() == device.systemPath; };
  if (std::any_of(m_touchpads.begin(), m_touchpads.end(), isSame)) return;
  const auto changed = [this, pinch = PinchDetector()](const std::vector<Touch>& touches) mutable {
    const bool isPinching = pinch.touchesChanged(touches);
    m_handlers.touchesChanged(touches);
    // After the touches, which would otherwise stand as a hand at rest until the next movement.
    if (isPinching && isEnabled()) m_handlers.magnified();
  };
  const auto vanished = [this, path = device.systemPath] { remove(path); };
  auto opened = Touchpad::open(device, ++m_lastNumber, {changed, vanished});
  if (!opened) {
    Log::warning(description(device) + " gives no gestures: " + opened.cause());
    return;
  }
  auto touchpad = *std::move(opened);
  if (touchpad->slotCount() < kFingersOfGestures)
    Log::warning(description(device) + " tells only " + std::to_string(touchpad->slotCount()) +
                 " fingers apart; gestures of three and four do nothing on it");
  m_touchpads.push_back(std::move(touchpad));
}

void TouchpadTap::remove(const std::string& systemPath) {
  const auto found = std::find_if(m_touchpads.begin(), m_touchpads.end(),
                                  [&](const auto& touchpad) { return touchpad->systemPath() == systemPath; });
  if (found == m_touchpads.end()) return;
  const auto touchpad = *found;
  m_touchpads.erase(found);
  touchpad->vanish();
}

} // namespace orbel::evdev
