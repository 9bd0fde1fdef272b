// The settings follow the desktop's light or dark look and the user's language.
#include "tests/desktop/settings/SettingsFixture.h"

#include <csignal>

using namespace orbel::test;

namespace {

class SettingsAppearanceTest : public SettingsFixture {
protected:
  // Of the glass between the groups.
  int brightness() {
    const Rgb glass = m_session.screen().pixel(placeOf(kBackground));
    return (glass.red + glass.green + glass.blue) / 3;
  }
  testing::AssertionResult isDark() {
    return waitFor([&] { return brightness() < 110; }, "the glass is dark");
  }
  testing::AssertionResult isLight() {
    return waitFor([&] { return brightness() > 170; }, "the glass is light");
  }
  // Returns when the portal answers, so that the settings receive its signals.
  std::unique_ptr<ChildProcess> startPortal() {
    auto portal = m_session.start("portal", {TestWindow::clientPath("test-portal").string()});
    const auto answers = [&] {
      return m_session
                 .run({"gdbus", "call", "--session", "-d", "org.freedesktop.portal.Desktop", "-o",
                       "/org/freedesktop/portal/desktop", "-m", "org.freedesktop.DBus.Peer.Ping"})
                 .exitStatus == 0;
    };
    EXPECT_TRUE(waitFor(answers, "the portal answers"));
    return portal;
  }
  testing::AssertionResult show() {
    if (const auto result = agent().activateAction("settings"); !result) return result;
    return waitFor([&] { return settingsWindow().has_value(); }, "the settings are shown");
  }
};

TEST_F(SettingsAppearanceTest, WithoutAPortalTheyAreLight) {
  startAndOpen();
  EXPECT_TRUE(isLight());
}

TEST_F(SettingsAppearanceTest, OnADarkDesktopTheyAreDarkAndFollowWhenItTurnsLight) {
  const auto portal = startPortal();
  startAgent();
  ASSERT_TRUE(show());
  EXPECT_TRUE(isDark());
  savePicture("dark");
  portal->sendSignal(SIGUSR1);
  EXPECT_TRUE(isLight());
  portal->sendSignal(SIGUSR1);
  EXPECT_TRUE(isDark());
}

TEST_F(SettingsAppearanceTest, ADesktopThatTurnsDarkWhileTheyAreClosedShowsWhenTheyOpen) {
  startAndOpen();
  EXPECT_TRUE(isLight());
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilClosed());
  const auto portal = startPortal();
  ASSERT_TRUE(show());
  EXPECT_TRUE(isDark());
}

TEST_F(SettingsAppearanceTest, InGermanAcceleratorsAreThoseOfTheWordsShown) {
  m_session.preferences().setMenuItems(builtInItems());
  startAgentAlone({.changes = {{"LC_ALL", "de_DE.UTF-8"}, {"LANGUAGE", "de"}}});
  ASSERT_TRUE(agent().activateAction("settings"));
  const auto german = [&] { return m_windows.findByTitle("Einstellungen — Orbel Menu"); };
  ASSERT_TRUE(
      waitFor([&] { return german() && m_windows.focusWindow() == german(); }, "the settings are shown"));
  accelerate(XK_v);
  EXPECT_TRUE(becomes("magnifySettings", false));
  accelerate(XK_s);
  EXPECT_TRUE(becomes("swiftMode", true));
}

} // namespace
