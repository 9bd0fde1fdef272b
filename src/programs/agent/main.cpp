// The agent: runs the application delegate on the desktop that it was started on.
#include "app/AppDelegate.h"
#include "backends/evdev/TouchpadAccess.h"
#include "backends/linux/LinuxLoginItem.h"
#include "backends/qt/resources/OwnResources.h"
#include "backends/qt/session/SingleInstance.h"
#include "foundation/SharedObjects.h"
#include "programs/agent/Desktop.h"

#include <QApplication>
#include <csignal>
#include <glib-unix.h>
#include <utility>

using namespace orbel;

namespace {

int quitOnSignal(void*) {
  QCoreApplication::quit();
  return G_SOURCE_CONTINUE;
}

int run(std::vector<std::string> privateVariables) {
  AppDelegate delegate([] { QCoreApplication::quit(); },
                       evdev::TouchpadAccess::grantingCommand(linux::LinuxLoginItem::ownExecutable()));
  // Found out before anything is set up: a second start only hands over.
  qt::SingleInstance instance({
      .activate = [&] { delegate.openSettings(); },
      .show = [&] { delegate.showMenuAtPointer(); },
      .hide = [&] { delegate.hideMenu(); },
      .settings = [&] { delegate.openSettings(); },
      .quit = [] { QCoreApplication::quit(); },
  });
  if (instance.start() == qt::SingleInstance::Role::second) return 0;

  qt::OwnResources::load();
  const auto desktop = openDesktop(
      {.privateVariables = std::move(privateVariables), .lost = [] { QCoreApplication::exit(1); }});
  if (!desktop) return 1;
  // Destroyed before the desktop, which what is shared still uses then.
  SharedObjects sharedObjects;
  delegate.applicationDidFinishLaunching();
  const int status = QCoreApplication::exec();
  delegate.applicationWillTerminate();
  return status;
}

} // namespace

int main(int argumentCount, char** arguments) {
  auto privateVariables = prepareEnvironment();
  QApplication application(argumentCount, arguments);
  QApplication::setApplicationName(QStringLiteral("orbelmenu"));
  QApplication::setApplicationDisplayName(QStringLiteral("Orbel Menu"));
  QApplication::setDesktopFileName(QStringLiteral("org.orbelmenu.OrbelMenu"));
  // An agent: the settings window may close, the program stays.
  QApplication::setQuitOnLastWindowClosed(false);
  if (!hasDesktop()) return 1;
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    g_unix_signal_add(signal, quitOnSignal, nullptr);
  return run(std::move(privateVariables));
}
