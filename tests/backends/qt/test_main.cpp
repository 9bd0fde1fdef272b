// Starts Qt for the tests of this folder, away from the user's own settings: offscreen, or, when
// the environment chooses Qt's X11 platform, on a private desktop. Fixtures "…OnDisplay" need
// the latter.
#include "tests/backends/qt/TestDisplay.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QApplication>

#include <filesystem>
#include <optional>

namespace orbel::qt {

namespace {
test::DesktopSession* currentDisplay = nullptr;

void takeOver(const test::Environment& environment) {
  for (const auto& [name, value] : environment)
    qputenv(name.c_str(), QByteArray::fromStdString(value));
}

int runTests(int argc, char** argv) {
  std::optional<test::DesktopSession> session;
  std::optional<test::TemporaryDirectory> home;
  if (qgetenv("QT_QPA_PLATFORM") == "xcb") {
    session.emplace();
    takeOver(session->environment());
    setTestDisplay(&*session);
  } else {
    home.emplace("orbel-qt");
    const auto folder = [&](const char* name) { return (home->path() / name).string(); };
    std::filesystem::create_directories(folder("run"));
    std::filesystem::permissions(folder("run"), std::filesystem::perms::owner_all);
    takeOver({{"QT_QPA_PLATFORM", "offscreen"},
              {"HOME", home->path().string()},
              {"XDG_CONFIG_HOME", folder("config")},
              {"XDG_DATA_HOME", folder("data")},
              {"XDG_RUNTIME_DIR", folder("run")},
              {"DBUS_SESSION_BUS_ADDRESS", "disabled:"}});
  }
  int status = 0;
  {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("orbelmenu"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orbel Menu"));
    QApplication::setQuitOnLastWindowClosed(false);
    status = RUN_ALL_TESTS();
  }
  setTestDisplay(nullptr);
  return status;
}
} // namespace

test::DesktopSession* testDisplay() {
  return currentDisplay;
}
void setTestDisplay(test::DesktopSession* session) {
  currentDisplay = session;
}

} // namespace orbel::qt

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  return orbel::qt::runTests(argc, argv);
}
