// Tells the user, once ever, that the touchpad may not be read and which command grants access. Called by the
// application delegate at the start.
#pragma once

#include <string>

namespace orbel {

class TouchpadAccessNotice {
public:
  // The command, for a terminal, lets whoever sits at the seat read the touchpads; it is shown as it is.
  // The telling is remembered in the preferences once the desktop has taken the message; without anybody who
  // shows messages it is tried again at the next start.
  static void deliverOnce(const std::string& command);
};

} // namespace orbel
