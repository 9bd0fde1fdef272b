// Starts Qt without a display system, away from the user's own settings and without a session bus.
#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();

  const QTemporaryDir home;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"})
    qputenv(variable, home.path().toUtf8());
  const QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
