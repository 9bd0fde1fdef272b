// Desktops that lack something: a session bus, a window manager, a compositor, or a manager that stays.
#include "tests/desktop/menu/MenuFixture.h"

#include <X11/keysym.h>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};
constexpr ScreenRect kCorner{20, 60, 200, 150};
constexpr Rgb kOrange{230, 120, 20};

class BareDesktopTest : public MenuFixture {
protected:
  using MenuFixture::MenuFixture;

  // Before there is anything to wait for on a bus.
  testing::AssertionResult summonOnceReady() {
    m_input.movePointer(kPlace);
    const auto pressed = [&] {
      if (!menuWindow()) pressShortcut();
      return menuWindow().has_value();
    };
    if (const auto result = waitFor(pressed, "the shortcut works"); !result) return result;
    return waitUntilMenuShown(kPlace);
  }
};

class NoBusTest : public BareDesktopTest {
protected:
  NoBusTest() : BareDesktopTest({.windowManager = WindowManagerKind::openbox, .bus = BusPresence::absent}) {}
};

TEST_F(NoBusTest, TheMenuWorksAndTheLogSaysWhatIsMissing) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  const InstalledProgram handler = installDefaultApplication("folder-window", "inode/directory", "%F");
  m_session.preferences().setShortcut(kControlAltSpace);
  m_session.preferences().setMenuItems({letters.item(), StoredItem::file("Home", m_session.home().string())});
  startAgentAlone({.readyText = "There is no session bus"});
  ASSERT_TRUE(summonOnceReady());
  savePicture("without a compositor");
  clickItem(0, 2);
  EXPECT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  ASSERT_TRUE(waitUntilMenuHidden());
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(1, 2);
  EXPECT_TRUE(waitFor([&] { return handler.startCount() == 1; }, "the folder handler has started"));
}

class NoManagerTest : public BareDesktopTest {
protected:
  NoManagerTest() : BareDesktopTest({.windowManager = WindowManagerKind::none}) {}
};

TEST_F(NoManagerTest, TheMenuShowsOpensAndGivesTheFocusBack) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  const TestWindow window(m_session, {.frame = {700, 60, 300, 200}});
  startAgent({letters.item(), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  // Without a list of a manager's, every ordinary window counts: that one is the third item.
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 3);
  EXPECT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  ASSERT_TRUE(waitUntilMenuHidden());

  ASSERT_TRUE(summonAt(kPlace));
  clickItem(2, 3);
  EXPECT_TRUE(waitFor([&] { return m_windows.focusWindow() == window.id(); }, "the window has the keys"));
  ASSERT_TRUE(waitUntilMenuHidden());
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 3);
  const auto started = m_windows.findByClass("letters");
  EXPECT_TRUE(waitFor([&] { return m_windows.focusWindow() == started; }, "the program's window has them"));
  EXPECT_EQ(letters.startCount(), 1);
  ASSERT_TRUE(waitUntilMenuHidden());
  ASSERT_TRUE(summonAt(kPlace));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_EQ(m_windows.focusWindow(), started);
}

class RestartTest : public BareDesktopTest {};

TEST_F(RestartTest, TheMenuGoesOnAfterTheWindowManagerAndTheCompositorHaveRestarted) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  const TestWindow other(m_session, {.title = "Other", .frame = {900, 60, 300, 200}});
  startAgent({letters.item(), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  // Once with the menu open, which stays, and stays usable.
  m_session.restartWindowManager();
  EXPECT_TRUE(waitUntilMenuShown(kPlace));
  savePicture("after the restart");
  clickItem(0, 3);
  EXPECT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  ASSERT_TRUE(waitUntilMenuHidden());
  const auto window = m_windows.findByClass("letters");
  ASSERT_TRUE(window);
  EXPECT_TRUE(waitFor([&] { return isActive(*window); }, "its window is active"));

  // And once without it: the new manager's lists are followed.
  m_session.restartWindowManager();
  m_windows.activate(other.id());
  ASSERT_TRUE(waitUntilActive(other));
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 3);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isActive(*window); }, "its window is brought forward"));
  EXPECT_EQ(letters.startCount(), 1);
  m_windows.activate(other.id());
  ASSERT_TRUE(waitUntilActive(other));
  ASSERT_TRUE(summonAt(kPlace));
  m_windows.activate(*window);
  ASSERT_TRUE(waitFor([&] { return isActive(*window); }, "another window is active"));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isInFront(other); }, "the earlier window is in front"));
}

TEST_F(RestartTest, TheOpenMenuLosesNothingWhenTheCompositorEnds) {
  startAgent();
  ASSERT_TRUE(summonAt(kPlace));
  m_session.windowManager().stop();
  ASSERT_FALSE(m_windows.hasCompositor());
  // The square around the disc would be black now.
  const auto menu = menuFrame().value();
  const ScreenPoint corner{menu.x + 20, menu.y + 20};
  EXPECT_TRUE(waitForResult([&] { return hasColor(corner, Wallpaper::colorAt(corner)); }, kPatience,
                            "the corner is free"));
  EXPECT_TRUE(waitUntilMenuShown(kPlace));
  savePicture("after the compositor");
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(summonAt(kPlace));
}

} // namespace
