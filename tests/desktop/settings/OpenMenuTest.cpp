// Settings that are changed, by keyboard or from outside, while the menu is open, and settings changed from
// outside while the window is open or closed.
#include "tests/desktop/settings/SettingsFixture.h"

using namespace orbel::test;

namespace {

constexpr ScreenPoint kMenuPlace{205, 500};

// A binary property list of a saturated red.
std::string archivedRed() {
  return PropertyListNode::dictionary()
      .with("red", PropertyListNode::real(0.9))
      .with("green", PropertyListNode::real(0.1))
      .with("blue", PropertyListNode::real(0.1))
      .with("alpha", PropertyListNode::real(1))
      .serialized(PropertyListFormat::binary);
}

class SettingsAndOpenMenuTest : public SettingsFixture {
protected:
  void SetUp() override {
    m_program.emplace(
        installProgram("painter", {.title = "Painter", .frame = {20, 20, 200, 150}}, {200, 30, 160}));
    m_running.emplace(m_session, TestWindowOptions{.title = "Other", .frame = {900, 20, 200, 150}});
    ASSERT_TRUE(waitUntilActive(*m_running));
    startAgent({StoredItem::core("Finder"), m_program->item(), StoredItem::core("Safari")});
    ASSERT_TRUE(openSettings());
  }
  // The menu beside the settings, which keep the keyboard.
  void openMenu() {
    ASSERT_TRUE(summonAt(kMenuPlace));
    ASSERT_TRUE(isActive(*settingsWindow()));
  }
  Picture menuPicture() { return m_session.screen().capture(menuFrame().value()); }
  testing::AssertionResult menuHasSide(int side) {
    return waitFor([&] { return menuFrame() && menuFrame()->width == side; },
                   "the menu has a side of " + std::to_string(side));
  }
  // Where the disc is empty.
  Rgb discColor() { return m_session.screen().pixel({kMenuPlace.x, kMenuPlace.y - 60}); }
  testing::AssertionResult discIsRed() {
    return waitFor([&] { return discColor().red > discColor().green + 60; }, "the disc is red");
  }
  // Once nothing moves any more: longer than frames of an animation lie apart.
  Picture settledMenu() {
    constexpr int kEqualPictures = 12;
    Picture last = menuPicture();
    int equal = 0;
    EXPECT_TRUE(waitFor(
        [&] {
          Picture now = menuPicture();
          equal = now == last ? equal + 1 : 0;
          last = std::move(now);
          return equal >= kEqualPictures;
        },
        "the menu stands still"));
    return last;
  }
  testing::AssertionResult menuChangesFrom(const Picture& before) {
    return waitFor([&] { return difference(menuPicture(), before).mean > 0.3; }, "the menu looks different");
  }
  testing::AssertionResult menuLooksLike(const Picture& before) {
    return waitFor([&] { return difference(menuPicture(), before).mean < 0.1; }, "the menu looks as before");
  }

  std::optional<InstalledProgram> m_program;
  std::optional<TestWindow> m_running;
};

TEST_F(SettingsAndOpenMenuTest, TheSizeChangesAtOnceByKeyboardAndFromOutside) {
  openMenu();
  accelerate(XK_z);
  m_input.typeKey(XK_Down);
  EXPECT_TRUE(menuHasSide(500));
  // What is not saved yet would win over a change from outside.
  ASSERT_TRUE(becomes("menuSizeSettings", std::int64_t{2}));
  preferences().setInteger("menuSizeSettings", 3);
  EXPECT_TRUE(menuHasSide(600));
  preferences().setInteger("menuSizeSettings", 77);
  EXPECT_TRUE(menuHasSide(400));
  EXPECT_EQ(preferences().integer("menuSizeSettings"), 77);
}

TEST_F(SettingsAndOpenMenuTest, TheTintChangesAtOnceByKeyboard) {
  openMenu();
  accelerate(XK_c);
  m_input.typeKey(XK_space);
  ASSERT_TRUE(waitForPopUp());
  m_input.typeKey(XK_Down);
  m_input.typeKey(XK_Return);
  EXPECT_TRUE(discIsRed());
  EXPECT_TRUE(menuFrame());
}

TEST_F(SettingsAndOpenMenuTest, TheTintChangesAtOnceFromOutsideAndNonsenseIsWhite) {
  openMenu();
  preferences().setData("windowTintColor", archivedRed());
  EXPECT_TRUE(discIsRed());
  preferences().setData("windowTintColor", "no colour");
  EXPECT_TRUE(waitFor([&] { return discColor().green > 120; }, "the disc is white again"));
  EXPECT_EQ(preferences().data("windowTintColor"), "no colour");
}

TEST_F(SettingsAndOpenMenuTest, RunningProgramsComeAndGoAtOnce) {
  openMenu();
  const Picture with = settledMenu();
  accelerate(XK_r);
  EXPECT_TRUE(becomes("showRunningApps", false));
  EXPECT_TRUE(menuChangesFrom(with));
  const Picture without = settledMenu();
  preferences().setBoolean("showRunningApps", true);
  EXPECT_TRUE(menuChangesFrom(without));
  EXPECT_TRUE(menuLooksLike(with));
}

TEST_F(SettingsAndOpenMenuTest, MagnificationChangesAtOnceUnderAPointerThatRests) {
  openMenu();
  const Picture atRest = settledMenu();
  pointAtItem(0, 4);
  ASSERT_TRUE(menuChangesFrom(atRest));
  const Picture large = settledMenu();
  accelerate(XK_m);
  EXPECT_TRUE(becomes("magnifySettings", false));
  EXPECT_TRUE(menuChangesFrom(large));
  const Picture small = settledMenu();
  preferences().setBoolean("magnifySettings", true);
  EXPECT_TRUE(menuChangesFrom(small));
}

TEST_F(SettingsAndOpenMenuTest, SwiftModeOpensWhatIsReachedFromThenOn) {
  openMenu();
  pointAtItem(1, 4);
  settledMenu();
  EXPECT_EQ(m_program->startCount(), 0);
  m_input.movePointer(kMenuPlace);
  accelerate(XK_w);
  EXPECT_TRUE(becomes("swiftMode", true));
  pointAtItem(1, 4);
  EXPECT_TRUE(waitFor([&] { return m_program->startCount() == 1; }, "the program has been opened"));
  EXPECT_TRUE(waitUntilMenuHidden());
}

TEST_F(SettingsAndOpenMenuTest, ValuesFromOutsideShowWhileTheWindowIsOpen) {
  EXPECT_TRUE(waitFor([&] { return isOn(kMagnifyBox) && !isOn(kSwiftModeBox); }, "the defaults show"));
  preferences().setBoolean("magnifySettings", false);
  preferences().setBoolean("swiftMode", true);
  EXPECT_TRUE(waitFor([&] { return !isOn(kMagnifyBox) && isOn(kSwiftModeBox); }, "the new values show"));
}

TEST_F(SettingsAndOpenMenuTest, ValuesFromOutsideShowWhenTheWindowIsShownAgain) {
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilClosed());
  preferences().setBoolean("showRunningApps", false);
  preferences().setBoolean("launchAtLogin", false);
  preferences().setBoolean("swiftMode", true);
  preferences().setData("windowTintColor", archivedRed());
  ASSERT_TRUE(openSettings());
  EXPECT_TRUE(waitFor([&] { return !isOn(kRunningAppsBox) && isOn(kSwiftModeBox); }, "the new values show"));
  EXPECT_TRUE(waitFor(
      [&] {
        const Rgb swatch = m_session.screen().pixel(placeOf(kTintButton));
        return swatch.red > 200 && swatch.green < 60;
      },
      "the swatch is red"));
}

} // namespace
