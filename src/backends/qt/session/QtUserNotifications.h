// Messages in the desktop's notification area, over the session bus (the org.freedesktop.Notifications
// standard). Made by main.
#pragma once

#include "platform/UserNotifications.h"

#include <QDBusConnection>
#include <QObject>

namespace orbel::qt {

class QtUserNotifications final : public UserNotifications {
public:
  explicit QtUserNotifications(QDBusConnection bus = QDBusConnection::sessionBus());

  void deliver(const UserNotification& notification,
               std::function<void(const Result<>& taken)> done) override;

private:
  QDBusConnection m_bus;
  QObject m_pending; // owns the calls that wait for their answers
};

} // namespace orbel::qt
