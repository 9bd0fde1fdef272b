#include "programs/agent/X11Desktop.h"

#include <QStandardPaths>
#include <glib.h>
#include <utility>

namespace orbel {

namespace {
std::string configurationFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation).toStdString();
}

x11::TouchSource touchpads() {
  return {
      .makeTap =
          [](TouchHandlers handlers) { return std::make_unique<evdev::TouchpadTap>(std::move(handlers)); },
      .checkAccess = evdev::TouchpadAccess::check,
  };
}
} // namespace

std::unique_ptr<Desktop> X11Desktop::open(Surroundings surroundings) {
  Server server{x11::Connection::open({}, surroundings.lost), x11::Connection::open({}, surroundings.lost),
                qtx11::X11DisplayServer::windowConnection()};
  if (!server.connection || !server.pointerConnection || !server.windowConnection) return nullptr;
  return std::unique_ptr<Desktop>(
      new X11Desktop(std::move(server), std::move(surroundings.privateVariables)));
}

X11Desktop::X11Desktop(Server server, std::vector<std::string> privateVariables)
    : m_preferences(configurationFolder() + "/orbelmenu/preferences.plist", m_runLoop),
      m_server(std::move(server)), m_eventTaps(m_rawPointer, touchpads(), &m_pinches),
      m_workspace(m_topLevelWindows, m_icons, std::move(privateVariables)),
      m_windows(m_display, {.drainTaps = [this] { m_eventTaps.drain(); },
                            .pointerIsOverPopUp = [this] { return m_popUps.isPointerOver(); }}),
      m_settingsFormFactory({
          .display = m_display,
          .runLoop = m_runLoop,
          .activate = [this](WId window) { m_topLevelWindows.activate(window); },
      }),
      m_loginItem(configurationFolder(), g_get_user_state_dir(), linux::LinuxLoginItem::ownExecutable()),
      m_platform{m_runLoop,
                 m_workspace,
                 m_preferences,
                 m_windows,
                 m_graphics,
                 m_text,
                 m_hotKeys,
                 m_keyboardLayout,
                 m_eventTaps,
                 m_contextMenus,
                 m_dialogs,
                 m_keyRecorder,
                 m_settingsFormFactory,
                 m_videoPlayerFactory,
                 m_statusBar,
                 m_loginItem,
                 m_userNotifications} {
  Platform::setCurrent(&m_platform);
}

X11Desktop::~X11Desktop() {
  // A menu that was to be reloaded in a moment still has its window.
  m_runLoop.dropPending();
  Platform::setCurrent(nullptr);
}

// Dialogs are the only windows of ours that take the focus while a menu is open; they give it back.
qt::DialogHooks X11Desktop::dialogHooks() {
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

} // namespace orbel
