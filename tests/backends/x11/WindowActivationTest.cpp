#include "backends/x11/X11TopLevelWindows.h"

#include "tests/backends/x11/support/WindowsTest.h"
#include "tests/support/x11/WindowManagers.h"

#include <algorithm>

namespace orbel::test {
namespace {

class WindowActivationTest : public WindowsTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
  WindowActivationTest() : WindowsTest(GetParam()) {}
  void SetUp() override {
    WindowsTest::SetUp();
    ASSERT_TRUE(iterateUntil([this] { return ids().empty(); }));
    m_earlier = programAt(50, 100);
    m_other = programAt(150, 150); // covers a part of the earlier one
    ASSERT_TRUE(windows().activate(m_earlier->window()));
    ASSERT_TRUE(iterateUntil([this] { return isInFront(m_earlier->window(), m_other->window()); }));
  }
  void TearDown() override {
    m_earlier.reset();
    m_other.reset();
    WindowsTest::TearDown();
  }

  bool isInFront(xcb_window_t window, xcb_window_t other) {
    return isActive(window) && driver().stackingPlace(window) > driver().stackingPlace(other);
  }
  std::string state() {
    return "earlier " + std::to_string(m_earlier->window()) + ", other " + std::to_string(m_other->window()) +
           ", active " + testing::PrintToString(driver().numbers(driver().root(), "_NET_ACTIVE_WINDOW")) +
           ", stack " +
           testing::PrintToString(driver().numbers(driver().root(), "_NET_CLIENT_LIST_STACKING")) +
           ", focus " + std::to_string(driver().focus());
  }
  // A click that hits this window and no other. A window manager holds clicks back until it has looked
  // at them.
  void clickOnOther() {
    driver().clickAt(320, 270);
    ++m_clicks;
    const auto arrived = [&] { return std::ranges::count(m_other->lines(), "release 1") == m_clicks; };
    EXPECT_TRUE(waitFor(arrived, "the click has arrived")) << testing::PrintToString(m_other->lines());
  }

  std::unique_ptr<OtherClient> m_earlier, m_other;
  int m_clicks = 0;
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, WindowActivationTest,
                         testing::Values(WindowManagerKind::none, WindowManagerKind::openbox,
                                         WindowManagerKind::xfwm4, WindowManagerKind::kwin),
                         nameOfInstance);

TEST_P(WindowActivationTest, ActivatingBringsAWindowToTheFrontWithTheFocus) {
  EXPECT_TRUE(windows().activate(m_other->window()));
  EXPECT_TRUE(iterateUntil([&] { return isInFront(m_other->window(), m_earlier->window()); }));
  EXPECT_TRUE(iterateUntil([&] { return driver().focus() == m_other->window(); }));
}

TEST_P(WindowActivationTest, ActivatingAWindowThatIsGoneSaysSo) {
  EXPECT_FALSE(windows().activate(0x7FFFFFF));
  EXPECT_FALSE(windows().restore(0x7FFFFFF, windows().summonMark()));
}

TEST_P(WindowActivationTest, RestoringTheActiveWindowLeavesEverythingAlone) {
  const std::uint64_t mark = windows().summonMark();
  const auto place = driver().stackingPlace(m_earlier->window());
  EXPECT_TRUE(windows().restore(m_earlier->window(), mark));
  EXPECT_TRUE(iterateUntil([&] { return isActive(m_earlier->window()); }));
  EXPECT_EQ(driver().stackingPlace(m_earlier->window()), place);
}

TEST_P(WindowActivationTest, RestoringWinsOverAProgramThatHasRaisedItself) {
  const std::uint64_t mark = windows().summonMark();
  raiseItself(m_other->window());
  ASSERT_TRUE(iterateUntil([&] { return isInFront(m_other->window(), m_earlier->window()); }));
  EXPECT_TRUE(windows().restore(m_earlier->window(), mark));
  EXPECT_TRUE(iterateUntil([&] { return isInFront(m_earlier->window(), m_other->window()); })) << state();
  EXPECT_TRUE(iterateUntil([&] { return driver().focus() == m_earlier->window(); }));
}

TEST_P(WindowActivationTest, RestoringWinsOverAProgramThatHasStartedMeanwhile) {
  const std::uint64_t mark = windows().summonMark();
  const auto newcomer = programAt(100, 120);
  EXPECT_TRUE(windows().restore(m_earlier->window(), mark));
  EXPECT_TRUE(iterateUntil([&] { return isInFront(m_earlier->window(), newcomer->window()); }));
}

TEST_P(WindowActivationTest, AWindowThatTheUserHasClickedSinceKeepsTheFocus) {
  const std::uint64_t mark = windows().summonMark();
  clickOnOther();
  raiseItself(m_other->window()); // without a window manager a click alone does not
  ASSERT_TRUE(iterateUntil([&] { return isActive(m_other->window()); }));
  EXPECT_FALSE(windows().restore(m_earlier->window(), mark));
  iterateWhatIsPending();
  EXPECT_TRUE(isActive(m_other->window()));
}

TEST_P(WindowActivationTest, AClickThatHasNotBeenHandledYetCountsAndRunsNoHandler) {
  int releases = 0;
  const auto observing = pointer().observeReleases([&](std::uint32_t, xcb_timestamp_t) { ++releases; });
  const std::uint64_t mark = windows().summonMark();
  clickOnOther();
  EXPECT_FALSE(windows().restore(m_earlier->window(), mark));
  EXPECT_EQ(releases, 0);
  EXPECT_TRUE(iterateUntil([&] { return releases == 1; }));
}

TEST_P(WindowActivationTest, AClickBeforeTheMarkDoesNotCount) {
  windows().summonMark();
  clickOnOther();
  iterateWhatIsPending();
  ASSERT_TRUE(
      iterateUntil([&] { return GetParam() == WindowManagerKind::none || isActive(m_other->window()); }));
  raiseItself(m_earlier->window());
  ASSERT_TRUE(iterateUntil([&] { return isActive(m_earlier->window()); }));
  const xcb_timestamp_t clicked = connection().serverTime();
  ASSERT_TRUE(iterateUntil([&] { return x11::Connection::isLaterTime(connection().serverTime(), clicked); }));
  const std::uint64_t mark = windows().summonMark();
  raiseItself(m_other->window());
  ASSERT_TRUE(iterateUntil([&] { return isActive(m_other->window()); }));
  EXPECT_TRUE(windows().restore(m_earlier->window(), mark));
  EXPECT_TRUE(iterateUntil([&] { return isInFront(m_earlier->window(), m_other->window()); })) << state();
}

TEST_P(WindowActivationTest, AClickOnAWindowOfOursDoesNotCount) {
  const xcb_window_t menu = xcb_generate_id(driver().xcb());
  const std::uint32_t overrideRedirect = 1;
  xcb_create_window(driver().xcb(), XCB_COPY_FROM_PARENT, menu, driver().root(), 600, 500, 100, 100, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                    &overrideRedirect);
  xcb_map_window(driver().xcb(), menu);
  driver().sync();
  const std::uint64_t mark = windows().summonMark();
  driver().clickAt(650, 550);
  raiseItself(m_other->window());
  ASSERT_TRUE(iterateUntil([&] { return isActive(m_other->window()); }));
  EXPECT_TRUE(windows().restore(m_earlier->window(), mark));
  EXPECT_TRUE(iterateUntil([&] { return isActive(m_earlier->window()); }));
}

TEST_P(WindowActivationTest, PressesAreWatchedFromAMarkToTheFirstClickElsewhereOnly) {
  int events = 0;
  const auto counting = pointerConnection().observeEvents([&](const xcb_generic_event_t&) { ++events; });
  const auto eventsOfAClick = [&] {
    pointer().drain(); // the server knows what is selected
    events = 0;
    clickOnOther();
    pointer().drain();
    return events;
  };
  EXPECT_EQ(eventsOfAClick(), 0);
  windows().summonMark();
  EXPECT_EQ(eventsOfAClick(), 1);
  EXPECT_EQ(eventsOfAClick(), 0);
  const std::uint64_t mark = windows().summonMark();
  EXPECT_EQ(eventsOfAClick(), 1);
  EXPECT_FALSE(windows().restore(m_earlier->window(), mark));
}

class DesktopsTest : public WindowActivationTest {};

INSTANTIATE_TEST_SUITE_P(WindowManagers, DesktopsTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4,
                                         WindowManagerKind::kwin),
                         nameOfInstance);

TEST_P(DesktopsTest, ActivatingOpensAMinimizedWindow) {
  constexpr std::uint32_t iconicState = 3;
  driver().askManager(m_other->window(), "WM_CHANGE_STATE", {iconicState});
  ASSERT_TRUE(iterateUntil([&] {
    const auto state = driver().numbers(m_other->window(), "WM_STATE");
    return !state.empty() && state[0] == iconicState;
  }));
  EXPECT_TRUE(isListed(m_other->window())) << "a minimized program still runs";
  EXPECT_TRUE(windows().activate(m_other->window()));
  EXPECT_TRUE(
      iterateUntil([&] { return driver().isViewable(m_other->window()) && isActive(m_other->window()); }));
}

TEST_P(DesktopsTest, ActivatingGoesToTheWindowsDesktopAndRestoringDoesNot) {
  const auto shown = [&] { return driver().numbers(driver().root(), "_NET_CURRENT_DESKTOP"); };
  const auto desktopOf = [&](xcb_window_t window) { return driver().numbers(window, "_NET_WM_DESKTOP"); };
  const std::vector<std::uint32_t> first = {0}, second = {1};
  session().markSpent();
  driver().askManager(driver().root(), "_NET_NUMBER_OF_DESKTOPS", {2});
  ASSERT_TRUE(
      iterateUntil([&] { return driver().numbers(driver().root(), "_NET_NUMBER_OF_DESKTOPS").at(0) == 2; }));
  driver().askManager(m_other->window(), "_NET_WM_DESKTOP", {1, 2});
  ASSERT_TRUE(iterateUntil([&] { return desktopOf(m_other->window()) == second && shown() == first; }));

  EXPECT_FALSE(windows().restore(m_other->window(), windows().summonMark()));
  EXPECT_TRUE(windows().activate(m_other->window()));
  EXPECT_TRUE(iterateUntil([&] { return shown() == second && isActive(m_other->window()); }));
}

TEST_P(DesktopsTest, WithAllWindowsGoneNoneIsActiveAfterAMoment) {
  m_earlier.reset();
  m_other.reset();
  EXPECT_TRUE(iterateUntil([&] { return ids().empty() && !windows().activeWindow(); }))
      << ids().size() << " windows, active " << windows().activeWindow().value_or(0);
}

} // namespace
} // namespace orbel::test
