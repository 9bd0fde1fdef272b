// Each control of the settings changes the store at once, by mouse and by keyboard.
#include "tests/desktop/settings/SettingsFixture.h"

#include "tests/support/base/TextFile.h"

#include <fstream>

using namespace orbel::test;

namespace {

class SettingsControlsTest : public SettingsFixture {
protected:
  void SetUp() override { startAndOpen(); }
  // Clicks the entry of the list that a pop-up button opens.
  void chooseEntry(ScreenPoint button, int entry, int count) {
    click(button);
    ASSERT_TRUE(waitForPopUp());
    const ScreenRect list = popUp().value();
    m_input.clickAt({list.center().x, list.y + list.height * (2 * entry + 1) / (2 * count)});
    ASSERT_TRUE(waitFor([&] { return !popUp(); }, "the list is closed"));
  }
  bool playsVideo() const {
    std::ifstream children("/proc/" + std::to_string(m_agentProcess) + "/task/" +
                           std::to_string(m_agentProcess) + "/children");
    for (pid_t child = 0; children >> child;) {
      if (readFile("/proc/" + std::to_string(child) + "/comm").starts_with("orbelmenu-video")) return true;
    }
    return false;
  }
  pid_t m_agentProcess = 0;
};

TEST_F(SettingsControlsTest, ByMouse) {
  click(kMagnifyBox);
  EXPECT_TRUE(becomes("magnifySettings", false));
  click(kMagnifyBox);
  EXPECT_TRUE(becomes("magnifySettings", true));
  click(kRunningAppsBox);
  EXPECT_TRUE(becomes("showRunningApps", false));
  click(kSwiftModeBox);
  EXPECT_TRUE(becomes("swiftMode", true));
  chooseEntry(kMenuSizeButton, 2, 3);
  EXPECT_TRUE(becomes("menuSizeSettings", std::int64_t{3}));
  chooseEntry(kGestureButton, 4, 5);
  EXPECT_TRUE(becomes("gestureSettings", std::int64_t{5}));
  chooseEntry(kGestureButton, 1, 5);
  EXPECT_TRUE(becomes("gestureSettings", std::int64_t{4}));

  click(kTintButton);
  ASSERT_TRUE(waitForPopUp());
  m_session.screen().save("settings-colors");
  // The first colour of the second row of three.
  const ScreenRect colors = popUp().value();
  m_input.clickAt({colors.x + 34, colors.center().y});
  ASSERT_TRUE(waitFor([&] { return !popUp(); }, "the colours are closed"));
  ASSERT_TRUE(waitFor([&] { return preferences().data("windowTintColor").has_value(); }, "a tint is stored"));
  EXPECT_TRUE(waitFor(
      [&] {
        const Rgb swatch = m_session.screen().pixel(placeOf(kTintButton));
        return swatch.red > 180 && swatch.green < 110;
      },
      "the swatch is red"));
}

TEST_F(SettingsControlsTest, ByKeyboard) {
  accelerate(XK_m);
  EXPECT_TRUE(becomes("magnifySettings", false));
  accelerate(XK_r);
  EXPECT_TRUE(becomes("showRunningApps", false));
  accelerate(XK_w);
  EXPECT_TRUE(becomes("swiftMode", true));
  accelerate(XK_z);
  m_input.typeKey(XK_Down);
  EXPECT_TRUE(becomes("menuSizeSettings", std::int64_t{2}));
  accelerate(XK_g);
  m_input.typeKey(XK_Down);
  EXPECT_TRUE(becomes("gestureSettings", std::int64_t{4}));

  accelerate(XK_c);
  m_input.typeKey(XK_space);
  ASSERT_TRUE(waitForPopUp());
  m_input.typeKey(XK_Down);
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitFor([&] { return preferences().data("windowTintColor").has_value(); }, "a tint is stored"));
  EXPECT_TRUE(waitFor([&] { return !popUp(); }, "the colours are closed"));
  // From the tint to the magnification below it.
  m_input.typeKey(XK_Tab);
  m_input.typeKey(XK_space);
  EXPECT_TRUE(becomes("magnifySettings", true));
}

TEST_F(SettingsControlsTest, EscapeAndAClickElsewhereCloseTheColoursAndChangeNothing) {
  click(kTintButton);
  ASSERT_TRUE(waitForPopUp());
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitFor([&] { return !popUp(); }, "the colours are closed"));
  EXPECT_TRUE(settingsWindow());
  click(kTintButton);
  ASSERT_TRUE(waitForPopUp());
  click(kBackground);
  ASSERT_TRUE(waitFor([&] { return !popUp(); }, "the colours are closed"));
  EXPECT_FALSE(preferences().contains("windowTintColor"));
}

TEST_F(SettingsControlsTest, TheWebSiteOpensInTheDefaultBrowser) {
  const auto browser = installDefaultApplication("browser", "x-scheme-handler/https", "%u");
  click(kWebsiteButton);
  EXPECT_TRUE(
      waitFor([&] { return readFile(browser.log.path()).find("https://orbelmenu.org") != std::string::npos; },
              "the browser was given the address"));
}

TEST_F(SettingsControlsTest, TheHelpPlaysAVideoInAProcessOfItsOwnWhileItIsOpen) {
  m_agentProcess = agent().pid();
  EXPECT_FALSE(playsVideo());
  click(kHelpButton);
  ASSERT_TRUE(waitForPopUp());
  ASSERT_TRUE(waitFor([&] { return playsVideo(); }, "the video program runs"));
  const ScreenRect help = popUp().value();
  EXPECT_GE(help.width, 282);
  EXPECT_GE(help.height, 360);
  const auto first = m_session.screen().capture(help);
  EXPECT_TRUE(waitFor([&] { return m_session.screen().capture(help) != first; }, "the picture moves"));
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(waitFor([&] { return !popUp() && !playsVideo(); }, "popover and video program have gone"));
  const std::string maps = readFile("/proc/" + std::to_string(m_agentProcess) + "/maps");
  EXPECT_FALSE(maps.empty());
  EXPECT_EQ(maps.find("libQt6Multimedia"), std::string::npos);
  EXPECT_EQ(maps.find("libavcodec"), std::string::npos);
}

} // namespace
