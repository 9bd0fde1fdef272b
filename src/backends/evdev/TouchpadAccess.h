// Whether the touchpads that are there may be read, and how the user grants it. Listens to nothing.
#pragma once

#include <optional>
#include <string>

namespace orbel::evdev {

class TouchpadAccess {
public:
  // A touchpad that is there and may not be read, with the cause, for a message; empty when all may be, or
  // there is none.
  static std::optional<std::string> unreadable();

  // The command, for a shell, that lets the user at the seat read the touchpads. The script comes with the
  // program, beside the executable (an absolute path, empty when it is unknown).
  static std::string grantingCommand(const std::string& executable);
};

} // namespace orbel::evdev
