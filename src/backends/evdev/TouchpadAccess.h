// Whether the touchpads that are there may be read, and how the user grants it. Listens to nothing.
#pragma once

#include "foundation/Result.h"

#include <string>

namespace orbel::evdev {

class TouchpadAccess {
public:
  // Fails when a touchpad is there that may not be read; the cause names it. Without any it succeeds.
  static Result<> check();

  // The command, for a shell, that lets the user at the seat read the touchpads. The script comes with the
  // program, beside the executable (an absolute path, empty when it is unknown).
  static std::string grantingCommand(const std::string& executable);
};

} // namespace orbel::evdev
