// Keeps a status item registered with the desktop's watcher of such items, whenever there is one: it may
// start after the program, end and start again. Reports whether some panel draws the items. Owned by the
// status item.
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QString>
#include <QTimer>

#include <functional>
#include <optional>

namespace orbel::qt {

class StatusNotifierRegistration {
public:
  // The item's service must be on the bus. The block is called later, first when it is known whether a panel
  // draws the items and then at every change.
  StatusNotifierRegistration(QDBusConnection bus, QString service, std::function<void(bool hasHost)> changed);
  StatusNotifierRegistration(const StatusNotifierRegistration&) = delete;
  StatusNotifierRegistration& operator=(const StatusNotifierRegistration&) = delete;

private:
  void ask();
  void ownerChanged(const QString& owner);
  void registerItem();
  void askForHost();
  void setHasHost(bool hasHost);

  QDBusConnection m_bus;
  QString m_service;
  std::function<void(bool)> m_changed;
  QDBusServiceWatcher m_watcher;
  QTimer m_hostMayHaveChanged; // signals of the bus start it; the answer to many of them is one
  QString m_owner;             // of the watcher's name; empty while there is none
  std::optional<bool> m_hasHost;
};

} // namespace orbel::qt
