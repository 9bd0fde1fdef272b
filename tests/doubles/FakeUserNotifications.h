// A notification area that keeps what it was given; the test says whether it takes it.
#pragma once

#include "platform/UserNotifications.h"

#include <functional>
#include <utility>
#include <vector>

namespace orbel {

class FakeUserNotifications : public UserNotifications {
public:
  void deliver(const UserNotification& notification, std::function<void(bool)> done) override {
    delivered.push_back(notification);
    m_done = std::move(done);
  }
  void answer(bool isTaken) {
    if (const auto done = std::exchange(m_done, nullptr)) done(isTaken);
  }

  std::vector<UserNotification> delivered;

private:
  std::function<void(bool)> m_done;
};

} // namespace orbel
