#include "tests/desktop/harness/SharedDesktop.h"

#include "tests/desktop/harness/SessionProcesses.h"
#include "tests/desktop/harness/TestGrabber.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/Waiting.h"

#include <X11/keysym.h>
#include <algorithm>
#include <gtest/gtest.h>

using namespace orbel::test;

namespace {

constexpr Rgb kRed{200, 60, 60};
constexpr Rgb kBlue{40, 80, 220};

testing::AssertionResult hasColor(DesktopSession& session, ScreenPoint place, Rgb expected) {
  const Rgb seen = session.screen().pixel(place);
  if (seen == expected) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " at " << place << " instead of " << expected;
}

class DesktopSessionTest : public testing::TestWithParam<WindowManagerKind> {
protected:
  testing::AssertionResult isActive(const TestWindow& window) {
    const auto active = m_session.windows().activeWindow();
    if (active == window.id()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "active is " << active.value_or(0);
  }

  SharedDesktop m_desktop{{.windowManager = GetParam()}};
  DesktopSession& m_session = m_desktop.session();
  Windows& m_windows = m_session.windows();
};

TEST_P(DesktopSessionTest, HasTheWindowManagerAndTheCompositorItAskedFor) {
  const xcb_window_t check =
      m_session.display().value(m_session.display().root(), "_NET_SUPPORTING_WM_CHECK").value();
  std::string expected(nameOf(GetParam()).substr(0, nameOf(GetParam()).find(' ')));
  std::string name = m_windows.title(check);
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char letter) { return std::tolower(letter); });
  EXPECT_EQ(name, expected);
  EXPECT_EQ(m_windows.hasCompositor(), isCompositing(GetParam()));
}

TEST_P(DesktopSessionTest, ShowsTheWallpaperAndAWindowWithItsColourPlaceAndProcess) {
  const TestWindow window(m_session,
                          {.title = "Letters", .className = "Mail", .frame = {200, 150, 320, 240}});
  EXPECT_TRUE(waitFor([&] { return isActive(window); }, "the new window is active"));
  EXPECT_TRUE(
      waitFor([&] { return hasColor(m_session, window.frame().center(), kRed); }, "the window is painted"));
  EXPECT_TRUE(waitFor(
      [&] {
        return hasColor(m_session, {900, 700}, Wallpaper::colorAt({900, 700}));
      },
      "the wallpaper is painted"));
  EXPECT_EQ(window.frame().width, 320);
  EXPECT_EQ(window.frame().height, 240);
  EXPECT_EQ(m_windows.findByTitle("Letters"), window.id());
  EXPECT_EQ(m_windows.findByClass("Mail"), window.id());
  EXPECT_EQ(m_windows.className(window.id()), "Mail");
  EXPECT_EQ(m_windows.processOf(window.id()), window.pid());
  EXPECT_EQ(m_windows.windowAt(window.frame().center()), window.id());
  EXPECT_EQ(m_windows.mappingOrder(), std::vector{window.id()});
  EXPECT_FALSE(m_windows.isOverrideRedirect(window.id()));
  EXPECT_EQ(m_windows.opacity(window.id()), 1);
  m_session.screen().save(std::string("harness ").append(nameOf(GetParam())));
}

TEST_P(DesktopSessionTest, BringsAClickedWindowToTheFrontAndGivesItTheKeys) {
  const TestWindow back(m_session, {.title = "Back", .frame = {100, 100, 400, 300}});
  const TestWindow front(m_session, {.title = "Front", .frame = {300, 250, 400, 300}, .color = kBlue});
  ASSERT_TRUE(waitFor([&] { return isActive(front); }, "the second window is active"));
  EXPECT_TRUE(m_windows.isAbove(front.id(), back.id()));
  EXPECT_EQ(m_windows.mappingOrder(), (std::vector{back.id(), front.id()}));

  m_session.input().clickAt({back.frame().x + 20, back.frame().y + 20});
  ASSERT_TRUE(waitFor([&] { return isActive(back); }, "the clicked window is active"));
  EXPECT_TRUE(waitFor([&] { return m_windows.isAbove(back.id(), front.id()); }, "it is in front"));
  EXPECT_TRUE(waitFor([&] { return m_windows.focusWindow() == back.id(); }, "it has the focus"));
  EXPECT_TRUE(waitFor([&] { return back.log().contains("button-press 1 20 20"); }, "it saw the click"));
  EXPECT_EQ(m_windows.stackingOrder(), (std::vector{front.id(), back.id()}));

  m_session.input().typeText("a");
  EXPECT_TRUE(waitFor([&] { return back.log().contains("key-release 0x61"); }, "it saw the key"));
  EXPECT_TRUE(back.log().contains("key-press 0x61"));
  EXPECT_FALSE(front.log().contains("key-press"));
}

TEST_P(DesktopSessionTest, LetsAProgramRaiseItselfAndATaskListActivateAnother) {
  TestWindow first(m_session, {.title = "First", .frame = {100, 100, 400, 300}});
  TestWindow second(m_session, {.title = "Second", .frame = {200, 200, 400, 300}, .color = kBlue});
  ASSERT_TRUE(waitFor([&] { return isActive(second); }, "the second window is active"));
  first.raiseItself();
  ASSERT_TRUE(waitFor([&] { return isActive(first); }, "the first has activated itself"));
  EXPECT_TRUE(waitFor([&] { return m_windows.isAbove(first.id(), second.id()); }, "the first is in front"));
  m_windows.activate(second.id());
  EXPECT_TRUE(waitFor([&] { return isActive(second); }, "the second is active again"));
}

TEST_P(DesktopSessionTest, ClosesAWindowPolitelyAndOneThatAsksStays) {
  TestWindow plain(m_session, {.title = "Plain"});
  TestWindow asking(m_session, {.title = "Asking", .asksBeforeClosing = true});
  m_windows.close(plain.id());
  EXPECT_TRUE(waitFor([&] { return !plain.process().isRunning(); }, "the plain program has ended"));
  EXPECT_EQ(plain.process().exitStatus(), 0);
  m_windows.close(asking.id());
  EXPECT_TRUE(waitFor([&] { return asking.log().contains("delete-window"); }, "it was asked"));
  EXPECT_TRUE(asking.process().isRunning());
  EXPECT_TRUE(m_windows.isViewable(asking.id()));
  EXPECT_FALSE(m_windows.isViewable(plain.id()));
}

TEST_P(DesktopSessionTest, ManagesTheOpenWindowsAgainAfterARestartOfTheManager) {
  const TestWindow window(m_session, {.title = "Survivor"});
  m_session.restartWindowManager();
  EXPECT_TRUE(waitFor([&] { return m_windows.mappingOrder() == std::vector{window.id()}; }, "it is managed"));
  EXPECT_TRUE(waitFor([&] { return m_windows.isViewable(window.id()); }, "it is shown"));
  EXPECT_EQ(m_windows.hasCompositor(), isCompositing(GetParam()));
}

TEST_P(DesktopSessionTest, LeavesTheCombinationsOfTheTestsFreeUntilAProgramGrabsThem) {
  constexpr std::uint16_t kControlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;
  const TestGrabber first(m_session, XK_space, kControlAlt);
  ASSERT_TRUE(first.isGranted());
  const TestGrabber second(m_session, XK_space, kControlAlt);
  EXPECT_FALSE(second.isGranted());
  m_session.input().typeCombination({XK_Control_L, XK_Alt_L, XK_space});
  EXPECT_TRUE(waitFor([&] { return first.pressCount() == 1; }, "the grab reports the press"));
  EXPECT_TRUE(TestGrabber(m_session, XK_Tab, XCB_MOD_MASK_1).isGranted());
  EXPECT_TRUE(TestGrabber(m_session, XK_space, XCB_MOD_MASK_4).isGranted());
  EXPECT_TRUE(TestGrabber(m_session, XK_Escape, 0).isGranted());
}

TEST_P(DesktopSessionTest, ShowsAFullscreenWindowOverTheWholeScreen) {
  const TestWindow window(m_session, {.title = "Film", .color = kBlue, .isFullscreen = true});
  EXPECT_TRUE(waitFor([&] { return window.frame() == m_session.screen().bounds(); }, "it covers the screen"));
  EXPECT_TRUE(m_windows.hasState(window.id(), "_NET_WM_STATE_FULLSCREEN"));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, DesktopSessionTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::openboxWithPicom,
                                         WindowManagerKind::xfwm4, WindowManagerKind::xfwm4Compositing,
                                         WindowManagerKind::kwin),
                         [](const auto& instance) {
                           std::string name(nameOf(instance.param));
                           std::replace(name.begin(), name.end(), ' ', '_');
                           return name;
                         });

TEST(PlainSessionTest, ComesUpWithoutWindowManagerAndBus) {
  DesktopSession session({.windowManager = WindowManagerKind::none, .bus = BusPresence::absent});
  const TestWindow window(session, {.frame = {10, 20, 300, 200}});
  EXPECT_EQ(window.frame(), (ScreenRect{10, 20, 300, 200}));
  EXPECT_TRUE(waitFor([&] { return hasColor(session, {20, 30}, kRed); }, "the window is painted"));
  EXPECT_EQ(session.windows().activeWindow(), std::nullopt);
  EXPECT_EQ(session.windows().findByTitle("Test window"), window.id());
}

TEST(PlainSessionTest, GivesProgramsAPrivateHomeAndOnlyItsOwnFolders) {
  DesktopSession session({.windowManager = WindowManagerKind::none, .bus = BusPresence::absent});
  const RunResult result =
      session.run({"sh", "-c", "echo $HOME $XDG_DATA_DIRS; stat -c %a $XDG_RUNTIME_DIR; exit 3"});
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_EQ(result.output, session.home().string() + ' ' + session.dataFolder().string() + "\n700\n");
}

TEST(PlainSessionTest, LeavesNoProcessAndNoFolderBehind) {
  std::filesystem::path runtimeFolder;
  {
    DesktopSession session;
    runtimeFolder = session.runtimeFolder();
    // What a launcher does: a process in a session of its own, whose parent has ended.
    session.run({"sh", "-c", "setsid sleep 1000 & exit 0"});
    // Server, bus, manager and sleeper. A process has no environment for a moment while its program is
    // exchanged, which the sleeper may be doing still when its shell has ended.
    EXPECT_TRUE(waitFor([&] { return processesOfSession(runtimeFolder).size() >= 4U; }, "all four are seen"));
  }
  EXPECT_TRUE(processesOfSession(runtimeFolder).empty());
  EXPECT_FALSE(std::filesystem::exists(runtimeFolder.parent_path()));
}

} // namespace
