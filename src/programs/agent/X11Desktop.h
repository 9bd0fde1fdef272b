// An X11 session: Qt's windows, the X server's keys, pointer and window lists, the touchpads of the kernel, the
// session bus and the user's files, in the order in which they depend on each other.
#pragma once

#include "backends/evdev/TouchpadAccess.h"
#include "backends/evdev/TouchpadTap.h"
#include "backends/linux/GlibRunLoop.h"
#include "backends/linux/LinuxLoginItem.h"
#include "backends/linux/LinuxPreferencesStore.h"
#include "backends/linux/LinuxWorkspace.h"
#include "backends/qt-x11/QtFocusedWindow.h"
#include "backends/qt-x11/X11DisplayServer.h"
#include "backends/qt-x11/X11SystemTray.h"
#include "backends/qt/canvas/QtGraphics.h"
#include "backends/qt/icons/QtIconLoader.h"
#include "backends/qt/popups/QtContextMenus.h"
#include "backends/qt/popups/QtDialogs.h"
#include "backends/qt/session/QtUserNotifications.h"
#include "backends/qt/settings/QtSettingsFormFactory.h"
#include "backends/qt/status/QtStatusBar.h"
#include "backends/qt/text/QtTextServices.h"
#include "backends/qt/video/QtVideoPlayerFactory.h"
#include "backends/qt/windows/QtWindowSystem.h"
#include "backends/x11/ClickWatch.h"
#include "backends/x11/Connection.h"
#include "backends/x11/PassiveKeyGrabs.h"
#include "backends/x11/PinchGestures.h"
#include "backends/x11/RawPointer.h"
#include "backends/x11/X11EventTaps.h"
#include "backends/x11/X11HotKeys.h"
#include "backends/x11/X11KeyRecorder.h"
#include "backends/x11/X11KeyboardLayout.h"
#include "backends/x11/X11TopLevelWindows.h"
#include "platform/Platform.h"
#include "programs/agent/Desktop.h"

namespace orbel {

class X11Desktop final : public Desktop {
public:
  // Null, and logged, when the X server cannot be reached.
  static std::unique_ptr<Desktop> open(Surroundings surroundings);
  ~X11Desktop() override;
  X11Desktop(const X11Desktop&) = delete;
  X11Desktop& operator=(const X11Desktop&) = delete;

private:
  // What must be there before anything else can be made. The pointer has a connection of its own, so that
  // draining it handles nothing else.
  struct Server {
    std::unique_ptr<x11::Connection> connection;
    std::unique_ptr<x11::Connection> pointerConnection;
    xcb_connection_t* windowConnection; // Qt's
  };
  X11Desktop(Server server, std::vector<std::string> privateVariables);
  qt::DialogHooks dialogHooks();

  linux::GlibRunLoop m_runLoop;
  linux::LinuxPreferencesStore m_preferences;
  Server m_server;
  x11::PassiveKeyGrabs m_keyGrabs{*m_server.connection};
  x11::RawPointer m_rawPointer{*m_server.pointerConnection};
  qtx11::X11DisplayServer m_display{{*m_server.connection, m_rawPointer, m_keyGrabs},
                                    m_server.windowConnection};
  x11::ClickWatch m_clicks{*m_server.connection, m_rawPointer};
  x11::X11HotKeys m_hotKeys{m_keyGrabs};
  x11::X11KeyboardLayout m_keyboardLayout{*m_server.connection};
  x11::PinchGestures m_pinches{*m_server.connection};
  x11::X11EventTaps m_eventTaps;
  x11::X11TopLevelWindows m_topLevelWindows{*m_server.connection, m_clicks};
  qt::QtIconLoader m_icons;
  linux::LinuxWorkspace m_workspace;
  qt::QtTextServices m_text;
  qt::QtGraphics m_graphics;
  qt::PopUpRegistry m_popUps{[this] { m_eventTaps.drain(); }};
  qt::QtWindowSystem m_windows;
  qt::QtContextMenus m_contextMenus{m_popUps};
  RunningApplicationPointer m_beforeDialogs; // had the focus
  qt::QtDialogs m_dialogs{m_popUps, m_text, dialogHooks()};
  qtx11::QtFocusedWindow m_focusedWindow;
  x11::X11KeyRecorder m_keyRecorder{*m_server.connection, m_focusedWindow};
  qt::QtSettingsFormFactory m_settingsFormFactory;
  qt::QtVideoPlayerFactory m_videoPlayerFactory{qt::QtVideoPlayerFactory::findProgram()};
  qtx11::X11SystemTray m_systemTray{*m_server.connection};
  qt::QtStatusBar m_statusBar{m_systemTray};
  linux::LinuxLoginItem m_loginItem;
  qt::QtUserNotifications m_userNotifications;
  Platform m_platform;
};

} // namespace orbel
