#include "backends/qt/status/StatusNotifierRegistration.h"

#include "foundation/Log.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace orbel::qt {

namespace {
constexpr auto kWatcher = "org.kde.StatusNotifierWatcher";
constexpr auto kWatcherPath = "/StatusNotifierWatcher";
constexpr auto kPropertiesInterface = "org.freedesktop.DBus.Properties";
} // namespace

StatusNotifierRegistration::StatusNotifierRegistration(QDBusConnection bus, QString service,
                                                       std::function<void(bool)> changed)
    : m_bus(std::move(bus)), m_service(std::move(service)), m_changed(std::move(changed)),
      m_watcher(QLatin1String(kWatcher), m_bus, QDBusServiceWatcher::WatchForOwnerChange) {
  m_hostMayHaveChanged.setSingleShot(true);
  m_hostMayHaveChanged.setInterval(0);
  QObject::connect(&m_hostMayHaveChanged, &QTimer::timeout, &m_watcher, [this] { askForHost(); });
  QObject::connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, &m_watcher,
                   [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
  for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
    m_bus.connect(QString(), QLatin1String(kWatcherPath), QLatin1String(kWatcher), QLatin1String(signal),
                  &m_hostMayHaveChanged, SLOT(start()));
  }
  ask();
}

void StatusNotifierRegistration::ask() {
  if (!m_bus.isConnected()) {
    QTimer::singleShot(0, &m_watcher, [this] { setHasHost(false); });
    return;
  }
  auto question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetNameOwner"));
  question << QLatin1String(kWatcher);
  auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), &m_watcher);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, &m_watcher,
                   [this](QDBusPendingCallWatcher* call) {
                     const QDBusPendingReply<QString> owner = *call;
                     call->deleteLater();
                     // A change that came meanwhile is newer.
                     if (m_owner.isEmpty()) ownerChanged(owner.isValid() ? owner.value() : QString());
                   });
}

void StatusNotifierRegistration::ownerChanged(const QString& owner) {
  m_owner = owner;
  if (owner.isEmpty()) {
    setHasHost(false);
    return;
  }
  registerItem();
  askForHost();
}

void StatusNotifierRegistration::registerItem() {
  auto registration =
      QDBusMessage::createMethodCall(m_owner, QLatin1String(kWatcherPath), QLatin1String(kWatcher),
                                     QStringLiteral("RegisterStatusNotifierItem"));
  registration << m_service;
  auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(registration), &m_watcher);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, &m_watcher, [](QDBusPendingCallWatcher* call) {
    if (call->isError()) {
      Log::warning("The desktop did not take the status icon: " + call->error().message().toStdString());
    }
    call->deleteLater();
  });
}

void StatusNotifierRegistration::askForHost() {
  if (m_owner.isEmpty()) return;
  auto question = QDBusMessage::createMethodCall(m_owner, QLatin1String(kWatcherPath),
                                                 QLatin1String(kPropertiesInterface), QStringLiteral("Get"));
  question << QLatin1String(kWatcher) << QStringLiteral("IsStatusNotifierHostRegistered");
  auto* answer = new QDBusPendingCallWatcher(m_bus.asyncCall(question), &m_watcher);
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, &m_watcher,
                   [this, asked = m_owner](QDBusPendingCallWatcher* call) {
                     const QDBusPendingReply<QDBusVariant> hasHost = *call;
                     call->deleteLater();
                     if (m_owner != asked) return;
                     setHasHost(hasHost.isValid() && hasHost.value().variant().toBool());
                   });
}

void StatusNotifierRegistration::setHasHost(bool hasHost) {
  if (m_hasHost == hasHost) return;
  m_hasHost = hasHost;
  m_changed(hasHost);
}

} // namespace orbel::qt
