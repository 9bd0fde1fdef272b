// Informs the user, once ever, that the touchpad may not be read and which command grants access. Called by
// the application delegate at the start.
#pragma once

#include <string>

namespace orbel {

class TouchpadAccessNotice {
public:
  // The command, for a terminal, lets whoever sits at the seat read the touchpads; it is shown as it is.
  // The preferences record the message once the desktop has accepted it; where nothing shows messages, it is
  // sent again at the next start.
  static void deliverOnce(const std::string& command);
};

} // namespace orbel
