// The settings window as a window: how it opens, where it stands, how it moves, closes and quits.
#include "tests/desktop/settings/SettingsFixture.h"

#include "tests/support/x11/WindowManagers.h"

#include <cmath>

using namespace orbel::test;

namespace {

class SettingsWindowTest : public SettingsFixture, public testing::WithParamInterface<WindowManagerKind> {
protected:
  SettingsWindowTest() : SettingsFixture(GetParam()) {}

  testing::AssertionResult isCentred() {
    const ScreenPoint middle = settingsFrame().center();
    const ScreenRect screen = m_session.screen().bounds();
    if (std::abs(middle.x - screen.center().x) <= 2 && std::abs(middle.y - screen.center().y) <= 2)
      return testing::AssertionSuccess();
    return testing::AssertionFailure() << "its middle is at " << middle;
  }
};

TEST_P(SettingsWindowTest, StartingTheProgramASecondTimeOpensItCentredInTheRunningOne) {
  TestWindow other(m_session, {.title = "Other", .frame = {100, 100, 700, 600}});
  startAgent();
  ASSERT_TRUE(waitUntilActive(other));
  EXPECT_FALSE(settingsWindow());
  EXPECT_EQ(m_session.run({OrbelAgent::executable()}).exitStatus, 0);
  ASSERT_TRUE(waitUntilOpen());
  EXPECT_TRUE(isCentred());
  savePicture("settings");
  EXPECT_TRUE(m_windows.isAbove(*settingsWindow(), other.id()));
}

TEST_P(SettingsWindowTest, OpensAgainInFrontWithTheKeyboardAndFloatsAboveOthers) {
  startAndOpen();
  TestWindow other(m_session, {.title = "Other", .frame = {100, 100, 700, 600}});
  ASSERT_TRUE(waitUntilActive(other));
  EXPECT_TRUE(m_windows.isAbove(*settingsWindow(), other.id()));
  ASSERT_TRUE(agent().activate());
  EXPECT_TRUE(waitUntilOpen());
}

TEST_P(SettingsWindowTest, IsMovedByItsBackgroundAndNotByItsControls) {
  startAndOpen();
  const ScreenRect before = settingsFrame();
  const ScreenPoint from = placeOf(kBackground);
  m_input.drag(from, {from.x + 90, from.y - 60});
  EXPECT_TRUE(waitFor(
      [&] {
        const ScreenRect now = settingsFrame();
        return now.x == before.x + 90 && now.y == before.y - 60;
      },
      "the window has moved by exactly that"));
  // Between the controls of a group, too.
  const ScreenPoint between = placeOf({400, 299});
  m_input.drag(between, {between.x - 40, between.y + 20});
  EXPECT_TRUE(waitFor([&] { return settingsFrame().x == before.x + 50; }, "the window has moved back"));
  const ScreenRect after = settingsFrame();
  const ScreenPoint control = placeOf(kQuitButton);
  m_input.drag(control, {control.x + 200, control.y - 60});
  EXPECT_EQ(settingsFrame(), after);
}

TEST_P(SettingsWindowTest, EscapeControlWAndTheCloseButtonCloseItAndTheProgramStays) {
  startAndOpen();
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilClosed());
  ASSERT_TRUE(openSettings());
  m_input.typeCombination({XK_Control_L, XK_w});
  ASSERT_TRUE(waitUntilClosed());
  ASSERT_TRUE(openSettings());
  click(kCloseButton);
  ASSERT_TRUE(waitUntilClosed());
  ASSERT_TRUE(openSettings());
  m_windows.close(*settingsWindow());
  ASSERT_TRUE(waitUntilClosed());
  EXPECT_TRUE(agent().isRunning());
  EXPECT_TRUE(openSettings());
}

TEST_P(SettingsWindowTest, ControlQQuits) {
  startAndOpen();
  m_input.typeCombination({XK_Control_L, XK_q});
  expectAgentQuits();
}

TEST_P(SettingsWindowTest, TheQuitButtonQuits) {
  startAndOpen();
  click(kQuitButton);
  expectAgentQuits();
}

TEST_P(SettingsWindowTest, SwiftModeIsExplainedAboveItAndTheKeyboardComesBack) {
  startAndOpen();
  click(kSwiftModeInfoButton);
  const auto alert = [&]() -> std::optional<xcb_window_t> {
    for (const xcb_window_t window : m_windows.stackingOrder()) {
      if (window != settingsWindow() && m_windows.processOf(window) == agent().pid()) return window;
    }
    return std::nullopt;
  };
  ASSERT_TRUE(waitFor([&] { return alert().has_value(); }, "the alert is shown"));
  const xcb_window_t shown = *alert();
  EXPECT_TRUE(
      waitFor([&] { return m_windows.isAbove(shown, *settingsWindow()); }, "it is above the settings"));
  EXPECT_TRUE(
      waitFor([&] { return m_windows.focusWindow() == shown || isActive(shown); }, "it has the keyboard"));
  m_input.typeKey(XK_Return);
  EXPECT_TRUE(waitFor([&] { return !alert(); }, "the alert is closed"));
  EXPECT_TRUE(waitUntilOpen());
  accelerate(XK_m);
  EXPECT_TRUE(becomes("magnifySettings", false));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, SettingsWindowTest, allWindowManagers(), nameOfInstance);

} // namespace
