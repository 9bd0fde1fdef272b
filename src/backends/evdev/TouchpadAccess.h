// Whether the touchpads that are there may be read. Listens to nothing.
#pragma once

#include <optional>
#include <string>

namespace orbel {

class TouchpadAccess {
public:
  // A touchpad that is there and may not be read, with the cause, for a message; empty when all may be, or
  // there is none.
  static std::optional<std::string> unreadable();
};

} // namespace orbel
