// The real program with its settings window open. Controls are found by their places in the window, which is
// always laid out alike with the fonts of the test session; a fixture that finds another size says so.
#pragma once

#include "tests/desktop/menu/MenuFixture.h"

#include <X11/keysym.h>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

// Pixels from the window's top left corner.
inline constexpr ScreenPoint kRecorder{209, 116};
inline constexpr ScreenPoint kGestureButton{246, 150};
inline constexpr ScreenPoint kHelpButton{400, 150};
inline constexpr ScreenPoint kMenuSizeButton{159, 229};
inline constexpr ScreenPoint kTintButton{129, 264};
inline constexpr ScreenPoint kMagnifyBox{123, 299};
inline constexpr ScreenPoint kRunningAppsBox{123, 378};
inline constexpr ScreenPoint kSwiftModeBox{123, 412};
inline constexpr ScreenPoint kSwiftModeInfoButton{227, 412};
inline constexpr ScreenPoint kLoginBox{123, 446};
inline constexpr ScreenPoint kWebsiteButton{152, 499};
inline constexpr ScreenPoint kQuitButton{360, 499};
inline constexpr ScreenPoint kCloseButton{413, 31};
inline constexpr ScreenPoint kBackground{271, 31};

class SettingsFixture : public MenuFixture {
protected:
  explicit SettingsFixture(WindowManagerKind windowManager = WindowManagerKind::openboxWithPicom)
      : MenuFixture({.windowManager = windowManager}) {}

  // Starts the program and opens the settings as the desktop does.
  void startAndOpen();
  testing::AssertionResult openSettings();
  testing::AssertionResult waitUntilOpen();
  testing::AssertionResult waitUntilClosed();
  std::optional<xcb_window_t> settingsWindow();
  ScreenRect settingsFrame();

  ScreenPoint placeOf(ScreenPoint control);
  void click(ScreenPoint control) { m_input.clickAt(placeOf(control)); }
  // Alt and the letter.
  void accelerate(xcb_keysym_t letter) { m_input.typeCombination({XK_Alt_L, letter}); }
  // A check box is blue when it is on.
  bool isOn(ScreenPoint box);
  // The program's pop-ups (lists, popovers) that are open, without the menu.
  std::optional<ScreenRect> popUp();
  testing::AssertionResult waitForPopUp();

  testing::AssertionResult becomes(const std::string& key, bool value);
  testing::AssertionResult becomes(const std::string& key, std::int64_t value);
  PreferencesFile& preferences() { return m_session.preferences(); }
};

} // namespace orbel::test
