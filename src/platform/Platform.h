// Everything the desktop gives the core, in one place. main fills it with the backends' objects before
// anything else of the core is made, tests with doubles; the objects outlive every user. Main thread only.
#pragma once

#include "foundation/RunLoop.h"
#include "platform/ContextMenus.h"
#include "platform/Dialogs.h"
#include "platform/EventTaps.h"
#include "platform/Graphics.h"
#include "platform/HotKeys.h"
#include "platform/KeyRecorder.h"
#include "platform/KeyboardLayout.h"
#include "platform/LoginItem.h"
#include "platform/PreferencesStore.h"
#include "platform/SettingsForm.h"
#include "platform/StatusBar.h"
#include "platform/TextServices.h"
#include "platform/UserNotifications.h"
#include "platform/VideoPlayer.h"
#include "platform/WindowSystem.h"
#include "platform/Workspace.h"

namespace orbel {

struct Platform {
  RunLoop& runLoop;
  Workspace& workspace;
  PreferencesStore& preferences;
  WindowSystem& windows;
  Graphics& graphics;
  TextServices& text;
  HotKeys& hotKeys;
  KeyboardLayout& keyboardLayout;
  EventTaps& eventTaps;
  ContextMenus& contextMenus;
  Dialogs& dialogs;
  KeyRecorder& keyRecorder;
  SettingsFormFactory& settingsFormFactory;
  VideoPlayerFactory& videoPlayerFactory;
  StatusBar& statusBar;
  LoginItem& loginItem;
  UserNotifications& userNotifications;

  // The process's platform. Asking before one was set ends the program: nothing works without it.
  static Platform& current();
  static void setCurrent(Platform* platform);
};

} // namespace orbel
