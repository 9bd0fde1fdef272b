// The real program with its settings window, and the shortcut recorder in it as a person finds it.
#pragma once

#include "tests/desktop/menu/MenuFixture.h"

#include "tests/support/x11/Picture.h"

#include <X11/keysym.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

class AgentFixture : public MenuFixture {
protected:
  using MenuFixture::MenuFixture;

  // Managed windows of the program, such as the settings and its alerts.
  std::vector<xcb_window_t> ownWindows();
  testing::AssertionResult waitForOwnWindows(std::size_t count);
  // Until there is one window, it has the keys and stands still.
  testing::AssertionResult waitForSettings();
  ScreenRect settingsFrame();
  // Asks for the settings and waits for them.
  testing::AssertionResult openSettings();

  // Finds the recorder by the ring of the keyboard focus, which it has when the settings are first shown.
  testing::AssertionResult findRecorder();
  ScreenPoint shortcutArea() const { return {m_recorder.x + m_recorder.width / 3, m_recorder.center().y}; }
  ScreenPoint hintArea() const { return {m_recorder.x + m_recorder.width - 14, m_recorder.center().y}; }
  // What the recorder shows where its text stands.
  Picture recorderText();
  // Does it and waits until the recorder shows something else.
  testing::AssertionResult changesRecorder(const std::function<void()>& act, const std::string& description);
  testing::AssertionResult waitUntilRecorderShows(const Picture& text);
  testing::AssertionResult waitUntilStored(std::optional<StoredShortcut> shortcut);
  // The recorder keeps the keyboard until the key that ended a recording is released.
  testing::AssertionResult waitUntilKeyboardIsFree();
  // Another program can have the combination.
  testing::AssertionResult waitUntilFree(xcb_keysym_t key, std::uint16_t modifiers);

private:
  ScreenRect m_recorder;
};

} // namespace orbel::test
