#include "backends/qt/session/QtUserNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QTimer>
#include <QVariantMap>

#include <utility>

namespace orbel::qt {

namespace {
constexpr auto kService = "org.freedesktop.Notifications";
constexpr auto kPath = "/org/freedesktop/Notifications";
constexpr auto kIcon = "org.orbelmenu.OrbelMenu";
constexpr uint kReplacesNone = 0;
constexpr int kServersOwnTime = -1;

using Done = std::function<void(const Result<>& taken)>;

void tell(const Done& done, const Result<>& taken) {
  if (done) done(taken);
}
} // namespace

QtUserNotifications::QtUserNotifications(QDBusConnection bus) : m_bus(std::move(bus)) {}

void QtUserNotifications::deliver(const UserNotification& notification, Done done) {
  if (!m_bus.isConnected()) {
    Failure failure{"There is no session bus to show a notification by: " + notification.text};
    QTimer::singleShot(0, &m_pending,
                       [done = std::move(done), failure = std::move(failure)] { tell(done, failure); });
    return;
  }
  auto call = QDBusMessage::createMethodCall(QLatin1String(kService), QLatin1String(kPath),
                                             QLatin1String(kService), QStringLiteral("Notify"));
  // Many servers read the text as markup.
  const QString text = QString::fromStdString(notification.text).toHtmlEscaped();
  call << QGuiApplication::applicationDisplayName() << kReplacesNone << QLatin1String(kIcon)
       << QString::fromStdString(notification.title) << text << QStringList()
       << QVariantMap{{QStringLiteral("desktop-entry"), QLatin1String(kIcon)}} << kServersOwnTime;
  auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(call), &m_pending);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, &m_pending,
                   [done = std::move(done)](QDBusPendingCallWatcher* finished) {
                     const QDBusPendingReply<uint> number = *finished;
                     finished->deleteLater();
                     if (number.isValid()) {
                       tell(done, {});
                     } else {
                       tell(done, Failure{"The desktop shows no notifications: " +
                                          number.error().message().toStdString()});
                     }
                   });
}

} // namespace orbel::qt
