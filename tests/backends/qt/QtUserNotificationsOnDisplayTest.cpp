// Messages to a notification area on a real session bus.
#include "backends/qt/session/QtUserNotifications.h"

#include "tests/backends/qt/TestDisplay.h"
#include "tests/desktop/harness/NotificationServer.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace orbel::qt {
namespace {

class QtUserNotificationsOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    auto environment = testDisplay()->environment();
    m_address = "unix:path=" + (m_folder.path() / "bus").string();
    environment["DBUS_SESSION_BUS_ADDRESS"] = m_address;
    m_bus.emplace(environment, m_folder.path() / "services", m_address, m_folder.path() / "bus.log");
  }
  void TearDown() override { QDBusConnection::disconnectFromBus(QStringLiteral("notifications")); }

  void deliver(QtUserNotifications& notifications) {
    notifications.deliver({"Title", "a < b & c\nsecond"},
                          [this](const Result<>& taken) { m_causes.push_back(taken.cause()); });
  }
  testing::AssertionResult isAnswered() {
    return becomesTrue([&] { return m_causes.size() == 1; }, "the answer comes");
  }
  QDBusConnection connection() const {
    return QDBusConnection::connectToBus(QString::fromStdString(m_address), QStringLiteral("notifications"));
  }

  test::TemporaryDirectory m_folder{"orbel-notifications"};
  std::string m_address;
  std::optional<test::SessionBus> m_bus;
  test::LogCapture m_log;
  std::vector<std::string> m_causes; // of each answer; empty for a success
};

TEST_F(QtUserNotificationsOnDisplay, TheDesktopShowsTheMessageAsPlainText) {
  test::NotificationServer server(m_address);
  QtUserNotifications notifications(connection());
  deliver(notifications);
  EXPECT_TRUE(m_causes.empty()) << "answered within the call";
  ASSERT_TRUE(isAnswered());
  EXPECT_EQ(m_causes[0], "");
  ASSERT_EQ(server.messages().size(), 1u);
  EXPECT_EQ(server.messages()[0].program, "Orbel Menu");
  EXPECT_EQ(server.messages()[0].title, "Title");
  EXPECT_EQ(server.messages()[0].text, "a &lt; b &amp; c\nsecond");
}

TEST_F(QtUserNotificationsOnDisplay, WithoutAnybodyWhoShowsMessagesThatIsTheAnswer) {
  QtUserNotifications notifications(connection());
  deliver(notifications);
  ASSERT_TRUE(isAnswered());
  EXPECT_TRUE(m_causes[0].starts_with("The desktop shows no notifications: ")) << m_causes[0];
  EXPECT_TRUE(m_log.lines.empty()) << "whoever asked logs it";
}

TEST_F(QtUserNotificationsOnDisplay, WithoutABusTheTextIsInTheAnswer) {
  QtUserNotifications notifications(
      QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere/bus"), "missing"));
  deliver(notifications);
  EXPECT_TRUE(m_causes.empty()) << "answered within the call";
  ASSERT_TRUE(isAnswered());
  EXPECT_NE(m_causes[0].find("a < b & c"), std::string::npos) << m_causes[0];
}

} // namespace
} // namespace orbel::qt
