// The contracts of the status bar and of notifications, on a session bus of the test's own.
#include "backends/qt/session/QtUserNotifications.h"
#include "backends/qt/status/NoSystemTray.h"
#include "backends/qt/status/QtStatusBar.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/contracts/StatusBarContract.h"
#include "tests/contracts/UserNotificationsContract.h"
#include "tests/desktop/harness/NotificationServer.h"
#include "tests/desktop/harness/StatusNotifierWatcher.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QDBusConnection>

#include <optional>

namespace orbel::contracts {
namespace {

class OwnBus {
public:
  OwnBus() {
    auto environment = qt::testDisplay()->environment();
    environment["DBUS_SESSION_BUS_ADDRESS"] = address();
    m_bus.emplace(environment, m_folder.path() / "services", address(), m_folder.path() / "bus.log");
  }
  ~OwnBus() { QDBusConnection::disconnectFromBus(name()); }
  OwnBus(const OwnBus&) = delete;
  OwnBus& operator=(const OwnBus&) = delete;

  std::string address() const { return "unix:path=" + (m_folder.path() / "bus").string(); }
  QDBusConnection connection() const {
    return QDBusConnection::connectToBus(QString::fromStdString(address()), name());
  }

private:
  static QString name() { return QStringLiteral("contract"); }
  test::TemporaryDirectory m_folder{"orbel-contract"};
  std::optional<test::SessionBus> m_bus;
};

bool runUntil(const std::function<bool()>& condition) {
  return bool(qt::becomesTrue(condition, "the contract holds"));
}

class QtStatusBarSubject {
public:
  StatusBar& bar() { return m_bar; }
  void addStatusArea() { m_watcher.emplace(m_bus.address()); }
  void removeStatusArea() {
    m_watcher.reset();
    QCoreApplication::processEvents();
  }
  // An item that ends leaves the bus, and with it every panel.
  bool shows(std::size_t icons) {
    return runUntil([&] { return shown().size() == icons; });
  }
  std::string title() { return m_watcher->text(shown().at(0), "Title").value_or(""); }
  bool click(const std::function<bool()>& cameOfIt) {
    m_watcher->click(shown().at(0));
    return runUntil(cameOfIt);
  }

private:
  std::vector<std::string> shown() {
    std::vector<std::string> items = m_watcher->items();
    std::erase_if(items, [&](const std::string& item) { return !m_watcher->text(item, "Id"); });
    return items;
  }
  OwnBus m_bus;
  qt::NoSystemTray m_noTray;
  qt::QtStatusBar m_bar{m_noTray, m_bus.connection()};
  std::optional<test::StatusNotifierWatcher> m_watcher;
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtStatusBarContractOnDisplay, StatusBarContract, QtStatusBarSubject);

class QtUserNotificationsSubject {
public:
  UserNotifications& notifications() { return m_notifications; }
  void stopShowingMessages() { m_server.reset(); }
  std::vector<std::string> titles() {
    std::vector<std::string> all;
    for (const auto& message : m_server->messages())
      all.push_back(message.title);
    return all;
  }
  static bool runUntil(const std::function<bool()>& condition) { return contracts::runUntil(condition); }

private:
  OwnBus m_bus;
  std::optional<test::NotificationServer> m_server{std::in_place, m_bus.address()};
  qt::QtUserNotifications m_notifications{m_bus.connection()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtUserNotificationsContractOnDisplay, UserNotificationsContract,
                               QtUserNotificationsSubject);

} // namespace
} // namespace orbel::contracts
