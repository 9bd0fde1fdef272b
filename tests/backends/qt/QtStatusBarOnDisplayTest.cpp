// The status icon against panels of both kinds, on a real session bus and a real X server.
#include "backends/qt/status/QtStatusBar.h"

#include "backends/qt-x11/X11SystemTray.h"
#include "backends/x11/Connection.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/desktop/harness/StatusNotifierWatcher.h"
#include "tests/desktop/harness/SystemTray.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPalette>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>

namespace orbel::qt {
namespace {

using test::PanelPresence;
using test::Rgb;
using test::StatusNotifierWatcher;
using test::SystemTray;

constexpr Rgb kDark{30, 30, 34};
constexpr Rgb kLight{240, 240, 240};

class QtStatusBarOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    const auto environment = testDisplay()->environment();
    m_address = "unix:path=" + (m_folder.path() / "bus").string();
    auto own = environment;
    own["DBUS_SESSION_BUS_ADDRESS"] = m_address;
    m_connection = x11::Connection::open(environment.at("DISPLAY"));
    m_trayWatch.emplace(*m_connection);
    m_bus.emplace(own, m_folder.path() / "services", m_address, m_folder.path() / "bus.log");
  }
  void TearDown() override {
    m_item.reset();
    QDBusConnection::disconnectFromBus(connectionName());
  }
  static QString connectionName() { return QStringLiteral("status"); }
  QDBusConnection connection() const {
    return QDBusConnection::connectToBus(QString::fromStdString(m_address), connectionName());
  }
  void makeItem() { makeItemOn(connection()); }
  void makeItemOn(const QDBusConnection& bus) {
    QtStatusBar bar(*m_trayWatch, bus);
    m_item = bar.makeStatusItem(
        {.image = "small", .isTemplate = true, .title = "Orbel Menu", .clicked = [this] { ++m_clicks; }});
  }
  // What the item asked over the bus before has been answered by then, and the answers have been handled.
  testing::AssertionResult makesRoundTrip() {
    const QDBusPendingCallWatcher answer(connection().asyncCall(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"))));
    return becomesTrue([&] { return answer.isFinished(); }, "the bus answers");
  }
  testing::AssertionResult registersWith(StatusNotifierWatcher& watcher) {
    return becomesTrue([&] { return watcher.items().size() == 1; }, "the item registers");
  }
  testing::AssertionResult isDockedIn(SystemTray& tray) {
    return becomesTrue([&] { return tray.icons().size() == 1; }, "the icon is in the tray");
  }
  // The icon's pixels that differ from the bar clearly, and their mean brightness.
  static std::pair<int, int> markIn(SystemTray& tray, Rgb bar) {
    const auto icons = tray.icons();
    if (icons.empty()) return {0, 0};
    const auto picture = testDisplay()->screen().capture(icons.front());
    int marked = 0, brightness = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const Rgb color = picture.at({x, y});
        if (test::difference(color, bar) < 120) continue;
        ++marked;
        brightness += color.green;
      }
    }
    return {marked, marked ? brightness / marked : 0};
  }

  test::TemporaryDirectory m_folder{"orbel-status"};
  std::string m_address;
  std::optional<test::SessionBus> m_bus;
  test::LogCapture m_log;
  std::unique_ptr<x11::Connection> m_connection;
  std::optional<qtx11::X11SystemTray> m_trayWatch;
  std::unique_ptr<StatusItem> m_item;
  int m_clicks = 0;
};

TEST_F(QtStatusBarOnDisplay, APanelGetsTheItemAndItsClicksAreTold) {
  StatusNotifierWatcher watcher(m_address);
  makeItem();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  EXPECT_TRUE(watcher.click(item));
  EXPECT_TRUE(becomesTrue([&] { return m_clicks == 1; }, "the click is told"));
  EXPECT_TRUE(watcher.click(item, "ContextMenu"));
  EXPECT_TRUE(becomesTrue([&] { return m_clicks == 2; }, "the other button's click is told"));
  EXPECT_TRUE(watcher.click(item, "SecondaryActivate"));
  EXPECT_FALSE(watcher.click(item, "Explode"));
}

TEST_F(QtStatusBarOnDisplay, ThePanelLearnsWhatTheItemIs) {
  StatusNotifierWatcher watcher(m_address);
  makeItem();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  EXPECT_EQ(watcher.text(item, "Id"), "orbelmenu");
  EXPECT_EQ(watcher.text(item, "Title"), "Orbel Menu");
  EXPECT_EQ(watcher.text(item, "Status"), "Active");
  EXPECT_EQ(watcher.text(item, "Category"), "ApplicationStatus");
  EXPECT_EQ(watcher.text(item, "ItemIsMenu"), "false");
  EXPECT_EQ(watcher.text(item, "Menu"), "'/NO_DBUSMENU'");
  EXPECT_EQ(watcher.text(item, "ToolTip"), "('', [], 'Orbel Menu', '')");
  EXPECT_EQ(watcher.text(item, "OverlayIconPixmap"), "[]");
  EXPECT_EQ(watcher.text(item, "Explode"), std::nullopt);
}

TEST_F(QtStatusBarOnDisplay, ThePanelFindsASymbolicPictureByName) {
  StatusNotifierWatcher watcher(m_address);
  makeItem();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  const auto name = watcher.text(item, "IconName").value_or("");
  EXPECT_TRUE(name.ends_with("-symbolic")) << name;
  const auto folder = std::filesystem::path(watcher.text(item, "IconThemePath").value_or(""));
  EXPECT_TRUE(std::filesystem::is_regular_file(folder / "hicolor/symbolic/apps" / (name + ".svg"))) << folder;
}

TEST_F(QtStatusBarOnDisplay, ThePixelsAreTheShapeInTheThemesTextColour) {
  StatusNotifierWatcher watcher(m_address);
  const QPalette before = QApplication::palette();
  QPalette dark;
  dark.setColor(QPalette::WindowText, QColor(238, 221, 204));
  QApplication::setPalette(dark);
  makeItem();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  const auto isOpaque = [](std::uint32_t color) {
    return [color](std::uint32_t pixel) { return pixel == (0xFF000000 | color); };
  };
  const auto first = watcher.pixels(item, 48);
  ASSERT_EQ(first.size(), 48u * 48u);
  EXPECT_GT(std::ranges::count_if(first, isOpaque(0xEEDDCC)), 300);
  EXPECT_GT(std::ranges::count_if(first, [](std::uint32_t pixel) { return pixel >> 24 == 0; }), 600);
  EXPECT_EQ(watcher.pixels(item, 22).size(), 22u * 22u);

  QPalette light;
  light.setColor(QPalette::WindowText, QColor(17, 34, 51));
  QApplication::setPalette(light);
  EXPECT_TRUE(
      becomesTrue([&] { return std::ranges::count_if(watcher.pixels(item, 48), isOpaque(0x112233)) > 300; },
                  "the colour follows the theme"));
  QApplication::setPalette(before);
}

TEST_F(QtStatusBarOnDisplay, AnItemThatEndsLeavesTheBus) {
  StatusNotifierWatcher watcher(m_address);
  makeItem();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  ASSERT_TRUE(m_bus->hasOwner(item));
  m_item.reset();
  EXPECT_TRUE(becomesTrue([&] { return !m_bus->hasOwner(item); }, "the name is free"));
  EXPECT_FALSE(watcher.click(item));
}

TEST_F(QtStatusBarOnDisplay, WithoutAnyPanelNothingHappens) {
  makeItem();
  ASSERT_TRUE(makesRoundTrip());
  ASSERT_TRUE(makesRoundTrip()); // for what was asked on the first answer
  EXPECT_EQ(m_log.lines, std::vector<std::string>());
}

TEST_F(QtStatusBarOnDisplay, WithoutASessionBusTheOlderTrayHasTheIcon) {
  SystemTray tray(testDisplay()->environment().at("DISPLAY"), kDark, kLight);
  makeItemOn(QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere/bus"), "missing"));
  EXPECT_TRUE(isDockedIn(tray));
}

TEST_F(QtStatusBarOnDisplay, WhereThereIsOnlyTheOlderTrayTheIconIsThereInItsColour) {
  for (const auto& [bar, foreground] : {std::pair(kDark, kLight), std::pair(kLight, kDark)}) {
    SystemTray tray(testDisplay()->environment().at("DISPLAY"), bar, foreground);
    makeItem();
    ASSERT_TRUE(isDockedIn(tray));
    EXPECT_TRUE(becomesTrue([&] { return markIn(tray, bar).first > 100; }, "the icon is drawn"));
    const int brightness = markIn(tray, bar).second;
    EXPECT_NEAR(brightness, foreground.green, 60);
    testDisplay()->screen().save("tray-" + std::to_string(bar.red), {0, 0, 96, 32});
    m_clicks = 0;
    testDisplay()->input().clickAt(tray.icons().front().center());
    EXPECT_TRUE(becomesTrue([&] { return m_clicks == 1; }, "the click is told"));
    m_item.reset();
    EXPECT_TRUE(becomesTrue([&] { return tray.icons().empty(); }, "the icon is gone"));
  }
}

TEST_F(QtStatusBarOnDisplay, AnOlderTrayThatComesLaterOrComesBackGetsTheIcon) {
  makeItem();
  QCoreApplication::processEvents();
  for (int round = 0; round < 2; ++round) {
    SystemTray tray(testDisplay()->environment().at("DISPLAY"), kDark, kLight);
    ASSERT_TRUE(isDockedIn(tray)) << round;
  }
}

TEST_F(QtStatusBarOnDisplay, TheIconFollowsATrayThatChangesItsColour) {
  SystemTray tray(testDisplay()->environment().at("DISPLAY"), kDark, kDark);
  makeItem();
  ASSERT_TRUE(isDockedIn(tray));
  tray.setForeground(kLight);
  EXPECT_TRUE(becomesTrue([&] { return markIn(tray, kDark).first > 100; }, "the icon stands out"));
}

TEST_F(QtStatusBarOnDisplay, TheOlderTrayLosesTheIconToAPanelAndGetsItBack) {
  SystemTray tray(testDisplay()->environment().at("DISPLAY"), kDark, kLight);
  makeItem();
  ASSERT_TRUE(isDockedIn(tray));
  StatusNotifierWatcher watcher(m_address, PanelPresence::absent);
  ASSERT_TRUE(registersWith(watcher));
  EXPECT_EQ(tray.icons().size(), 1u);
  watcher.setPanel(PanelPresence::drawsItems);
  EXPECT_TRUE(
      becomesTrue([&] { return watcher.items().size() == 1 && tray.icons().empty(); }, "the panel has it"));
  watcher.setPanel(PanelPresence::absent);
  EXPECT_TRUE(becomesTrue([&] { return watcher.items().size() == 1 && tray.icons().size() == 1; },
                          "the tray has it again"));
}

} // namespace
} // namespace orbel::qt
