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
    m_pending.push_back(std::move(done));
  }
  // All that wait for their answer.
  void answer(const Result<>& taken) {
    for (const auto& done : std::exchange(m_pending, {})) {
      if (done) done(taken);
    }
  }
  bool isWaiting() const { return !m_pending.empty(); }

  std::vector<UserNotification> delivered;

private:
  std::vector<std::function<void(const Result<>&)>> m_pending;
};

} // namespace orbel
