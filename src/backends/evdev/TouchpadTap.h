// The touch tap: the fingers on every touchpad that is there or comes, each reported by itself, and pinches.
// While it is disabled no touchpad is open. Touchpads that may not be read are logged and tried again when
// their access rights change. Main thread.
#pragma once

#include "backends/evdev/TouchpadDevice.h"
#include "platform/EventTaps.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orbel::evdev {

class Touchpad;
class TouchpadWatch;

class TouchpadTap : public EventTap {
public:
  explicit TouchpadTap(TouchHandlers handlers);
  ~TouchpadTap() override;
  // May be called from a handler.
  void setEnabled(bool enabled) override;
  bool isEnabled() const override { return m_watch != nullptr; }

private:
  void open(const TouchpadDevice& device);
  void remove(const std::string& systemPath);

  TouchHandlers m_handlers;
  std::unique_ptr<TouchpadWatch> m_watch;
  std::vector<std::shared_ptr<Touchpad>> m_touchpads;
  std::int32_t m_lastNumber = 0;
};

} // namespace orbel::evdev
