// Short messages in the desktop's notification area. Called by the touchpad access notice. Main thread only.
#pragma once

#include "foundation/Result.h"

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
  // Returns at once. The block is called later, exactly once unless the program ends before. Succeeds when
  // the desktop has taken the message, fails when no part of it shows messages.
  virtual void deliver(const UserNotification& notification,
                       std::function<void(const Result<>& taken)> done) = 0;
};

} // namespace orbel
