// A notification area that keeps what it was given; the test says whether it takes it.
#pragma once

#include "platform/UserNotifications.h"

#include <functional>
#include <utility>
#include <vector>

namespace orbel {

class FakeUserNotifications : public UserNotifications {
public:
  void deliver(const UserNotification& notification, std::function<void(const Result<>&)> done) override {
    delivered.push_back(notification);
    m_done = std::move(done);
  }
  void answer(const Result<>& taken) {
    if (const auto done = std::exchange(m_done, nullptr)) done(taken);
  }

  std::vector<UserNotification> delivered;

private:
  std::function<void(const Result<>&)> m_done;
};

} // namespace orbel
