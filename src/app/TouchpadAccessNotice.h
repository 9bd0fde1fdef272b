// Tells the user, once ever, that the touchpad may not be read and which command grants access. Called by the
// application delegate at the start.
#pragma once

namespace orbel {

class TouchpadAccessNotice {
public:
  // Installed with the program: it lets whoever sits at the seat read the touchpads.
  static constexpr const char* kCommand = "sudo orbelmenu-touchpad-access";

  // Remembered in the preferences once the desktop has taken the message; without anybody who shows messages
  // it is tried again at the next start.
  static void deliverOnce();
};

} // namespace orbel
