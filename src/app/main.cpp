// Puts the backends of an X11 desktop together and runs the program.
#include "app/AppDelegate.h"
#include "app/settings/AppSettings.h"
#include "backends/evdev/TouchpadAccess.h"
#include "backends/evdev/TouchpadTap.h"
#include "backends/linux/AutostartEntry.h"
#include "backends/linux/GlibRunLoop.h"
#include "backends/linux/LinuxWorkspace.h"
#include "backends/linux/PreferencesFile.h"
#include "backends/qt/DesktopNotifications.h"
#include "backends/qt/OwnResources.h"
#include "backends/qt/QtContextMenus.h"
#include "backends/qt/QtDialogs.h"
#include "backends/qt/QtFocusedWindow.h"
#include "backends/qt/QtGraphics.h"
#include "backends/qt/QtIconLoader.h"
#include "backends/qt/QtStatusBar.h"
#include "backends/qt/QtTextServices.h"
#include "backends/qt/QtWindowSystem.h"
#include "backends/qt/SingleInstance.h"
#include "backends/qt/settings/QtSettingsForms.h"
#include "backends/qt/video/QtVideoPlayers.h"
#include "backends/x11/ClickWatch.h"
#include "backends/x11/Connection.h"
#include "backends/x11/PassiveKeyGrabs.h"
#include "backends/x11/PinchGestures.h"
#include "backends/x11/RawPointer.h"
#include "backends/x11/SystemTrayWatch.h"
#include "backends/x11/X11EventTaps.h"
#include "backends/x11/X11HotKeys.h"
#include "backends/x11/X11KeyRecorder.h"
#include "backends/x11/X11KeyboardLayout.h"
#include "backends/x11/X11TopLevelWindows.h"
#include "foundation/Log.h"
#include "model/ImageCache.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QStandardPaths>
#include <csignal>
#include <glib-unix.h>
#include <utility>

using namespace orbel;

namespace {

// One of our own variables in the environment, which programs that we start must not inherit.
constexpr const char* kPlatformVariable = "QT_QPA_PLATFORM";

// Returns the variables that were set for this process alone.
std::vector<std::string> prepareEnvironment() {
  // The backends wait for their events in GLib's main loop; without it in the toolkit nothing of theirs would
  // arrive.
  qunsetenv("QT_NO_GLIB");
  if (qEnvironmentVariableIsSet(kPlatformVariable)) return {};
  qputenv(kPlatformVariable, "xcb");
  return {kPlatformVariable};
}

std::string configurationFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString();
}

// Everything of the desktop, in the order in which it depends on each other.
class Desktop {
public:
  Desktop(std::unique_ptr<Connection> connection, std::unique_ptr<Connection> pointerConnection,
          std::vector<std::string> privateVariables)
      : m_connection(std::move(connection)), m_pointerConnection(std::move(pointerConnection)),
        m_workspace(m_topLevelWindows, m_icons, std::move(privateVariables)) {
    Platform::setCurrent(&m_platform);
  }
  ~Desktop() {
    // A menu that was to be reloaded in a moment still has its window.
    m_runLoop.dropPending();
    Platform::setCurrent(nullptr);
  }
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

private:
  // Dialogs are the only windows of ours that take the focus while a menu is open; they give it back.
  DialogHooks dialogHooks() {
    return {
        .willTakeFocus = [this] { m_beforeDialogs = m_workspace.frontmostApplication(); },
        .dialogInFrontChanged = [this](std::optional<WId> dialog) { m_windows.standBelow(dialog); },
        .giveFocusBack =
            [this] {
              if (const auto application = std::exchange(m_beforeDialogs, nullptr)) {
                application->activate(ActivationReason::restore);
              }
            },
    };
  }

  GlibRunLoop m_runLoop;
  PreferencesFile m_preferences{configurationFolder() + "/orbelmenu/preferences.plist", m_runLoop};
  std::unique_ptr<Connection> m_connection;
  std::unique_ptr<Connection> m_pointerConnection;
  PassiveKeyGrabs m_keyGrabs{*m_connection};
  RawPointer m_rawPointer{*m_pointerConnection};
  ClickWatch m_clicks{*m_connection, m_rawPointer};
  X11HotKeys m_hotKeys{m_keyGrabs};
  X11KeyboardLayout m_keyboardLayout{*m_connection};
  PinchGestures m_pinches{*m_connection};
  X11EventTaps m_eventTaps{
      m_rawPointer,
      TouchSource{
          .makeTap =
              [](TouchHandlers handlers) { return std::make_unique<TouchpadTap>(std::move(handlers)); },
          .unreadableTouchpad = TouchpadAccess::unreadable,
      },
      &m_pinches};
  X11TopLevelWindows m_topLevelWindows{*m_connection, m_clicks};
  QtIconLoader m_icons;
  LinuxWorkspace m_workspace;
  QtTextServices m_text;
  QtGraphics m_graphics;
  PopUpRegistry m_popUps{[this] { m_eventTaps.drain(); }};
  QtWindowSystem m_windows{X11Parts{*m_connection, m_rawPointer, m_keyGrabs},
                           WindowSystemHooks{
                               .drainTaps = [this] { m_eventTaps.drain(); },
                               .pointerIsOverPopUp = [this] { return m_popUps.isPointerOver(); },
                           }};
  QtContextMenus m_contextMenus{m_popUps};
  RunningApplicationPointer m_beforeDialogs;
  QtDialogs m_dialogs{m_popUps, m_text, dialogHooks()};
  QtFocusedWindow m_focusedWindow;
  X11KeyRecorder m_keyRecorder{*m_connection, m_focusedWindow};
  QtSettingsForms m_settingsForms{{
      .display = m_windows.display(),
      .text = m_text,
      .runLoop = m_runLoop,
      .activate = [this](WId window) { m_topLevelWindows.activate(window); },
  }};
  QtVideoPlayers m_videoPlayers{QtVideoPlayers::findProgram()};
  SystemTrayWatch m_systemTray{*m_connection};
  QtStatusBar m_statusBar{m_systemTray};
  AutostartEntry m_loginItem{configurationFolder(), g_get_user_state_dir(), AutostartEntry::ownExecutable()};
  DesktopNotifications m_userNotifications;
  Platform m_platform{m_runLoop,   m_workspace,        m_preferences,    m_windows,      m_graphics,
                      m_text,      m_hotKeys,          m_keyboardLayout, m_eventTaps,    m_contextMenus,
                      m_dialogs,   m_keyRecorder,      m_settingsForms,  m_videoPlayers, m_statusBar,
                      m_loginItem, m_userNotifications};
};

int quitOnSignal(void*) {
  QCoreApplication::quit();
  return G_SOURCE_CONTINUE;
}

int run(std::vector<std::string> privateVariables) {
  // Found out before anything is set up: a second start only hands over.
  AppDelegate delegate([] { QCoreApplication::quit(); },
                       TouchpadAccess::grantingCommand(AutostartEntry::ownExecutable()));
  SingleInstance instance({
      .activate = [&] { delegate.openSettings(); },
      .show = [&] { delegate.showMenuAtPointer(); },
      .hide = [&] { delegate.hideMenu(); },
      .settings = [&] { delegate.openSettings(); },
      .quit = [] { QCoreApplication::quit(); },
  });
  if (instance.start() == SingleInstance::Role::second) return 0;

  // The desktop has gone; there is nobody left to serve, but the store is still to be written.
  const auto lost = [] { QCoreApplication::exit(1); };
  auto connection = Connection::open({}, lost);
  auto pointerConnection = Connection::open({}, lost);
  if (!connection || !pointerConnection) return 1;

  OwnResources::load();
  const Desktop desktop(std::move(connection), std::move(pointerConnection), std::move(privateVariables));
  delegate.applicationDidFinishLaunching();
  const int status = QCoreApplication::exec();
  delegate.applicationWillTerminate();
  AppSettings::destroySharedInstance();
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
  if (QGuiApplication::platformName() != QStringLiteral("xcb")) {
    Log::error("Orbel Menu needs an X11 display; this is " + QGuiApplication::platformName().toStdString());
    return 1;
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP})
    g_unix_signal_add(signal, quitOnSignal, nullptr);
  return run(std::move(privateVariables));
}
