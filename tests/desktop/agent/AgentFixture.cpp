#include "tests/desktop/agent/AgentFixture.h"

#include "tests/desktop/harness/TestGrabber.h"
#include "tests/support/x11/XcbReply.h"

#include <algorithm>

namespace orbel::test {

namespace {
constexpr int kUpperPart = 200; // of the window; below it other things are of the ring's colour
constexpr int kLeftPart = 80;   // the program's picture
bool isRing(const Rgb& color) {
  return color.blue > 170 && color.red < 90 && color.green < 160;
}
} // namespace

std::vector<xcb_window_t> AgentFixture::ownWindows() {
  std::vector<xcb_window_t> own;
  for (const xcb_window_t window : m_windows.mappingOrder()) {
    if (m_windows.isViewable(window) && m_windows.processOf(window) == agent().pid()) own.push_back(window);
  }
  return own;
}

testing::AssertionResult AgentFixture::waitForOwnWindows(std::size_t count) {
  return waitFor([&] { return ownWindows().size() == count; },
                 "so many windows are open: " + std::to_string(count));
}

testing::AssertionResult AgentFixture::waitForSettings() {
  return waitFor(
      [&] {
        const auto own = ownWindows();
        return own.size() == 1 && m_windows.focusWindow() == own.front();
      },
      "the settings are shown and have the keys");
}

ScreenRect AgentFixture::settingsFrame() {
  return m_windows.geometry(ownWindows().at(0)).value();
}

testing::AssertionResult AgentFixture::openSettings() {
  if (const auto result = agent().activateAction("settings"); !result) return result;
  return waitForSettings();
}

testing::AssertionResult AgentFixture::findRecorder() {
  return waitFor(
      [&] {
        const ScreenRect window = settingsFrame();
        const Picture picture = m_session.screen().capture(
            {window.x + kLeftPart, window.y, window.width - kLeftPart, kUpperPart});
        int left = picture.width(), right = -1, top = picture.height(), bottom = -1;
        for (int y = 0; y < picture.height(); ++y) {
          for (int x = 0; x < picture.width(); ++x) {
            if (!isRing(picture.at({x, y}))) continue;
            left = std::min(left, x), right = std::max(right, x);
            top = std::min(top, y), bottom = std::max(bottom, y);
          }
        }
        m_recorder = {window.x + kLeftPart + left, window.y + top, right - left + 1, bottom - top + 1};
        return m_recorder.width > 120 && m_recorder.width < 300 && m_recorder.height > 18 &&
               m_recorder.height < 50;
      },
      "the recorder has the ring of the focus");
}

Picture AgentFixture::recorderText() {
  return m_session.screen().capture(
      {m_recorder.x + 14, m_recorder.y + 6, m_recorder.width - 50, m_recorder.height - 12});
}

testing::AssertionResult AgentFixture::changesRecorder(const std::function<void()>& act,
                                                       const std::string& description) {
  const Picture before = recorderText();
  act();
  return waitFor([&] { return !(recorderText() == before); }, "the recorder changes: " + description);
}

testing::AssertionResult AgentFixture::waitUntilRecorderShows(const Picture& text) {
  return waitFor([&] { return recorderText() == text; }, "the recorder shows the text");
}

testing::AssertionResult AgentFixture::waitUntilStored(std::optional<StoredShortcut> shortcut) {
  return waitFor([&] { return m_session.preferences().shortcut() == shortcut; }, "the shortcut is stored");
}

testing::AssertionResult AgentFixture::waitUntilKeyboardIsFree() {
  xcb_connection_t* display = m_session.display().get();
  const auto isFree = [&] {
    const XcbReply<xcb_grab_keyboard_reply_t> grab(
        xcb_grab_keyboard_reply(display,
                                xcb_grab_keyboard(display, 0, m_session.display().root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    xcb_ungrab_keyboard(display, XCB_CURRENT_TIME);
    m_session.display().roundTrip();
    return grab && grab->status == XCB_GRAB_STATUS_SUCCESS;
  };
  return waitFor(isFree, "nobody holds the keyboard");
}

testing::AssertionResult AgentFixture::waitUntilFree(xcb_keysym_t key, std::uint16_t modifiers) {
  return waitFor([&] { return TestGrabber(m_session, key, modifiers).isGranted(); },
                 "another program can have the combination");
}

} // namespace orbel::test
