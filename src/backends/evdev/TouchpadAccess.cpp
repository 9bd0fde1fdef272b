#include "backends/evdev/TouchpadAccess.h"

#include "backends/evdev/TouchpadDevice.h"
#include "backends/evdev/TouchpadWatch.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace orbel {

std::optional<std::string> TouchpadAccess::unreadable() {
  for (const TouchpadDevice& device : TouchpadWatch::present()) {
    // Opened as the tap would: access control lists and sandboxes count, too.
    const int descriptor = open(device.node.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return description(device) + ": " + std::strerror(errno);
    close(descriptor);
  }
  return std::nullopt;
}

} // namespace orbel
