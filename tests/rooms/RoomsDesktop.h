// A desktop of Qt's rooms without a display system. What has no room is a double: files and programs, what
// input outside our windows there is, the login item, and time. While one lives it is the process's platform,
// and what the process shares begins and ends with it.
#pragma once

#include "backends/qt/canvas/QtGraphics.h"
#include "backends/qt/popups/QtContextMenus.h"
#include "backends/qt/popups/QtDialogs.h"
#include "backends/qt/resources/OwnResources.h"
#include "backends/qt/session/QtUserNotifications.h"
#include "backends/qt/settings/QtSettingsFormFactory.h"
#include "backends/qt/status/NoSystemTray.h"
#include "backends/qt/status/QtStatusBar.h"
#include "backends/qt/text/QtTextServices.h"
#include "backends/qt/video/QtVideoPlayerFactory.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "backends/qt/windows/QtWindowSystem.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"
#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakeLoginItem.h"
#include "tests/doubles/FakePreferences.h"
#include "tests/doubles/FakeSystemServices.h"
#include "tests/doubles/ManualRunLoop.h"
#include "tests/rooms/PictureWorkspace.h"

#include <optional>

namespace orbel::rooms {

class RoomsDesktop {
public:
  RoomsDesktop() {
    qt::OwnResources::load();
    Platform::setCurrent(&m_platform);
  }
  ~RoomsDesktop() {
    runLoop.dropPending();
    m_sharedObjects.reset(); // they use the platform to the end
    Platform::setCurrent(nullptr);
  }
  RoomsDesktop(const RoomsDesktop&) = delete;
  RoomsDesktop& operator=(const RoomsDesktop&) = delete;

  ManualRunLoop runLoop;
  PictureWorkspace workspace;
  FakePreferences preferences;

private:
  qt::PlainDisplayServer m_display;
  qt::QtGraphics m_graphics;
  qt::QtTextServices m_text;
  FakeHotKeys m_hotKeys;
  FakeKeyboardLayout m_keyboardLayout;
  FakeEventTaps m_eventTaps;
  qt::PopUpRegistry m_popUps;
  qt::QtWindowSystem m_windows{
      m_display, {.drainTaps = {}, .pointerIsOverPopUp = [this] { return m_popUps.isPointerOver(); }}};
  qt::QtContextMenus m_contextMenus{m_popUps};
  qt::QtDialogs m_dialogs{m_popUps, m_text, {}};
  FakeKeyRecorder m_keyRecorder;
  qt::QtSettingsFormFactory m_settingsFormFactory{{.display = m_display, .runLoop = runLoop, .activate = {}}};
  qt::QtVideoPlayerFactory m_videoPlayerFactory{QString()};
  qt::NoSystemTray m_systemTray;
  qt::QtStatusBar m_statusBar{m_systemTray};
  FakeLoginItem m_loginItem;
  qt::QtUserNotifications m_userNotifications;
  Platform m_platform{runLoop,
                      workspace,
                      preferences,
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
                      m_userNotifications};
  std::optional<SharedObjects> m_sharedObjects{std::in_place};
};

} // namespace orbel::rooms
