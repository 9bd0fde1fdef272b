// Owning pointers to libudev's objects, for the .cpp files of this folder alone.
#pragma once

#include <libudev.h>
#include <memory>

namespace orbel::evdev {

struct UdevUnref {
  void operator()(udev* object) const { udev_unref(object); }
  void operator()(udev_device* object) const { udev_device_unref(object); }
  void operator()(udev_enumerate* object) const { udev_enumerate_unref(object); }
  void operator()(udev_monitor* object) const { udev_monitor_unref(object); }
};

template <typename T>
using UdevPointer = std::unique_ptr<T, UdevUnref>;

} // namespace orbel::evdev
