// All doubles together; while one lives it is the process's platform, and what the process shares begins and
// ends with it. Make it the first member of a fixture.
#pragma once

#include "foundation/Log.h"
#include "foundation/SharedObjects.h"
#include "platform/Platform.h"
#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakeLoginItem.h"
#include "tests/doubles/FakePreferences.h"
#include "tests/doubles/FakeSettingsForm.h"
#include "tests/doubles/FakeStatusBar.h"
#include "tests/doubles/FakeSystemServices.h"
#include "tests/doubles/FakeUserNotifications.h"
#include "tests/doubles/FakeVideoPlayerFactory.h"
#include "tests/doubles/FakeWindowSystem.h"
#include "tests/doubles/FakeWorkspace.h"
#include "tests/doubles/ManualRunLoop.h"

#include <optional>
#include <string>
#include <vector>

namespace orbel {

class FakePlatform {
public:
  FakePlatform() {
    Platform::setCurrent(&m_platform);
    m_earlierSink =
        Log::setSink([this](Log::Severity, const std::string& message) { logged.push_back(message); });
  }
  ~FakePlatform() {
    m_sharedObjects.reset(); // they use the platform to the end
    Log::setSink(std::move(m_earlierSink));
    Platform::setCurrent(nullptr);
  }
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;

  ManualRunLoop runLoop;
  FakeWorkspace workspace;
  FakePreferences preferences;
  FakeWindowSystem windows;
  FakeGraphics graphics;
  FakeTextServices text;
  FakeHotKeys hotKeys;
  FakeKeyboardLayout keyboardLayout;
  FakeEventTaps eventTaps;
  FakeContextMenus contextMenus;
  FakeDialogs dialogs;
  FakeKeyRecorder keyRecorder;
  FakeSettingsFormFactory settingsFormFactory;
  FakeVideoPlayerFactory videoPlayerFactory;
  FakeStatusBar statusBar;
  FakeLoginItem loginItem;
  FakeUserNotifications userNotifications;
  std::vector<std::string> logged;

private:
  Platform m_platform{runLoop,
                      workspace,
                      preferences,
                      windows,
                      graphics,
                      text,
                      hotKeys,
                      keyboardLayout,
                      eventTaps,
                      contextMenus,
                      dialogs,
                      keyRecorder,
                      settingsFormFactory,
                      videoPlayerFactory,
                      statusBar,
                      loginItem,
                      userNotifications};
  Log::Sink m_earlierSink;
  std::optional<SharedObjects> m_sharedObjects{std::in_place};
};

} // namespace orbel
