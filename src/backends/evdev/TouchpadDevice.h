// A touchpad that the kernel has, whether it may be read or not.
#pragma once

#include <string>

namespace orbel::evdev {

struct TouchpadDevice {
  std::string systemPath; // unique among all devices while it is plugged in
  std::string node;       // such as /dev/input/event5
  std::string name;       // the maker's; may be empty

  friend bool operator==(const TouchpadDevice&, const TouchpadDevice&) = default;
};

// For messages: its name and its node.
inline std::string description(const TouchpadDevice& device) {
  return "the touchpad \"" + device.name + "\" (" + device.node + ")";
}

} // namespace orbel::evdev
