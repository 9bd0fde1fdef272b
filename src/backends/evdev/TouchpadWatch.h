// Which touchpads there are, from udev's database: it alone distinguishes a touchpad from a touch screen or a
// mouse without reading the device, and reports a new one once its access rights are set.
#pragma once

#include "backends/evdev/DescriptorWatch.h"
#include "backends/evdev/TouchpadDevice.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct udev_device;
struct udev_monitor;

namespace orbel::evdev {

class TouchpadWatch {
public:
  struct Handlers {
    // Plugged in, or its access rights may have changed: so also for one that is known already.
    std::function<void(const TouchpadDevice&)> appeared;
    std::function<void(const std::string& systemPath)> gone;
  };

  static std::vector<TouchpadDevice> present();

  // Reports changes from now on, from the main loop. Where udev is not running, that is logged and nothing
  // is reported.
  explicit TouchpadWatch(Handlers handlers);
  ~TouchpadWatch();
  TouchpadWatch(const TouchpadWatch&) = delete;
  TouchpadWatch& operator=(const TouchpadWatch&) = delete;

private:
  void handle(udev_device& device);

  Handlers m_handlers;
  std::shared_ptr<udev_monitor> m_monitor;
  std::unique_ptr<DescriptorWatch> m_descriptor;
};

} // namespace orbel::evdev
