// Tells the user, once ever, that the touchpad may not be read and which command grants access. Called by the
// application delegate at the start.
#pragma once

namespace orbel {

class TouchpadAccessNotice {
public:
  // Applies the access rule that is installed with the program to the touchpads that are there already.
  static constexpr const char* kCommand = "sudo udevadm trigger --subsystem-match=input";

  // Remembered in the preferences once the desktop has taken the message; without anybody who shows messages
  // it is tried again at the next start.
  static void deliverOnce();
};

} // namespace orbel
