#include "tests/desktop/settings/SettingsFixture.h"

#include <algorithm>

namespace orbel::test {

namespace {
constexpr const char* kTitle = "Settings — Orbel Menu";
constexpr int kWidth = 445;
constexpr int kHeight = 533;
} // namespace

void SettingsFixture::startAndOpen() {
  startAgent();
  ASSERT_TRUE(openSettings());
}

testing::AssertionResult SettingsFixture::openSettings() {
  if (const auto result = agent().activateAction("settings"); !result) return result;
  return waitUntilOpen();
}

testing::AssertionResult SettingsFixture::waitUntilOpen() {
  if (const auto result = waitFor([&] { return settingsWindow().has_value(); }, "the settings are shown");
      !result) {
    return result;
  }
  const xcb_window_t window = *settingsWindow();
  if (const auto result =
          waitForResult([&] { return isActive(window); }, kPatience, "the settings have the keyboard");
      !result) {
    return result;
  }
  const ScreenRect frame = settingsFrame();
  if (frame.width != kWidth || frame.height != kHeight) {
    return testing::AssertionFailure()
           << "the settings are " << frame << ": the places of their controls no longer hold";
  }
  // Shown is not on the screen yet: a compositor takes its time. The button's left end is nearly white.
  return waitFor(
      [&] {
        const Rgb button = m_session.screen().pixel(placeOf({kQuitButton.x - 58, kQuitButton.y}));
        return std::min({button.red, button.green, button.blue}) > 230;
      },
      "it is painted");
}

testing::AssertionResult SettingsFixture::waitUntilClosed() {
  return waitFor([&] { return !settingsWindow(); }, "the settings are closed");
}

std::optional<xcb_window_t> SettingsFixture::settingsWindow() {
  return m_windows.findByTitle(kTitle);
}

ScreenRect SettingsFixture::settingsFrame() {
  return m_windows.geometry(settingsWindow().value()).value();
}

ScreenPoint SettingsFixture::placeOf(ScreenPoint control) {
  const ScreenRect frame = settingsFrame();
  return {frame.x + control.x, frame.y + control.y};
}

bool SettingsFixture::isOn(ScreenPoint box) {
  // In a corner of the box, where the mark is not.
  const Rgb color = m_session.screen().pixel(placeOf({box.x - 5, box.y + 5}));
  return color.blue > 180 && color.red < 90;
}

std::optional<ScreenRect> SettingsFixture::popUp() {
  const auto menu = menuWindow();
  for (const xcb_window_t window : agent().menuWindows()) {
    if (window != menu) return m_windows.geometry(window);
  }
  return std::nullopt;
}

testing::AssertionResult SettingsFixture::waitForPopUp() {
  return waitFor([&] { return popUp().has_value(); }, "a list or a popover is open");
}

testing::AssertionResult SettingsFixture::becomes(const std::string& key, bool value) {
  return waitFor([&] { return preferences().boolean(key) == value; },
                 key + " is stored as " + (value ? "true" : "false"));
}

testing::AssertionResult SettingsFixture::becomes(const std::string& key, std::int64_t value) {
  return waitFor([&] { return preferences().integer(key) == value; },
                 key + " is stored as " + std::to_string(value));
}

} // namespace orbel::test
