// Short messages in the desktop's notification area. Called by the touchpad access notice. Main thread only.
#pragma once

#include <functional>
#include <string>

namespace orbel {

struct UserNotification {
  std::string title;
  std::string text; // plain; may have several lines
};

class UserNotifications {
public:
  virtual ~UserNotifications() = default;
  // Returns at once. The block is called later, exactly once unless the program ends before: true when the
  // desktop has taken the message, false (logged) when it has nobody who shows one.
  virtual void deliver(const UserNotification& notification, std::function<void(bool isTaken)> done) = 0;
};

} // namespace orbel
