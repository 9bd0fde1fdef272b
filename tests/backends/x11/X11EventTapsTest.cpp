#include "backends/x11/X11EventTaps.h"

#include "backends/x11/RawPointer.h"
#include "tests/backends/x11/support/X11Test.h"

#include <algorithm>
#include <chrono>

namespace orbel::test {
namespace {

constexpr std::uint8_t kPrimary = 1, kMiddle = 2, kSecondary = 3, kWheelUp = 4, kBack = 8;

class X11EventTapsTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    m_connection = connect();
    ASSERT_TRUE(m_connection);
    m_pointer = std::make_unique<x11::RawPointer>(*m_connection);
    m_taps = std::make_unique<x11::X11EventTaps>(*m_pointer);
    m_counting = m_connection->observeEvents([this](const xcb_generic_event_t&) { ++m_events; });
    m_up = m_taps->makeMouseUpTap([this] { ++m_releases; });
    m_moved = m_taps->makeMouseMovedTap([this] {
      ++m_movements;
      return EventTaps::MovementUse::taken;
    });
  }
  void TearDown() override {
    m_up.reset();
    m_moved.reset();
    m_taps.reset();
    m_pointer.reset();
    m_connection.reset();
    X11Test::TearDown();
  }

  // Moves the pointer until a movement is reported; some are left out after another.
  bool moveUntilTold() {
    const int before = m_movements;
    return iterateUntil([&] {
      driver().moveTo(400 + ++m_steps % 100, 300);
      return m_movements > before;
    });
  }
  // What is done from here on happens after the server has taken it over.
  void setEnabled(EventTap& tap, bool enabled) {
    tap.setEnabled(enabled);
    m_taps->drain();
  }

  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::RawPointer> m_pointer;
  std::unique_ptr<x11::X11EventTaps> m_taps;
  std::unique_ptr<EventTap> m_up, m_moved;
  Registration m_counting;
  int m_events = 0, m_releases = 0, m_movements = 0, m_steps = 0;
};

TEST_F(X11EventTapsTest, NothingComesFromTheServerWhileNoTapIsEnabled) {
  EXPECT_FALSE(m_up->isEnabled());
  EXPECT_FALSE(m_moved->isEnabled());
  driver().clickAt(100, 100);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);

  setEnabled(*m_up, true);
  setEnabled(*m_moved, true);
  driver().clickAt(120, 100);
  m_taps->drain();
  EXPECT_GT(m_events, 0);
  setEnabled(*m_up, false);
  setEnabled(*m_moved, false);
  m_events = m_releases = 0;
  driver().clickAt(100, 100);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);
  EXPECT_EQ(m_releases, 0);
}

TEST_F(X11EventTapsTest, TheMouseUpTapAloneGetsReleasesOnly) {
  setEnabled(*m_up, true);
  driver().moveTo(100, 100);
  driver().moveTo(200, 200);
  driver().pressButton(kPrimary);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);
  driver().releaseButton(kPrimary);
  m_taps->drain();
  EXPECT_EQ(m_events, 1);
  EXPECT_EQ(m_releases, 1);
}

TEST_F(X11EventTapsTest, AReleaseAnywhereIsToldFromTheMainLoop) {
  const auto other = otherClient({"--at", "100", "100", "--window"});
  ASSERT_TRUE(iterateUntil([&] { return driver().isViewable(other->window()); }));
  setEnabled(*m_up, true);
  driver().clickAt(150, 150);
  EXPECT_TRUE(iterateUntil([&] { return m_releases == 1; }));
  EXPECT_TRUE(iterateUntil([&] { return other->hasWritten("release 1"); })) << "it only listens";
  driver().clickAt(900, 700); // the bare screen
  EXPECT_TRUE(iterateUntil([&] { return m_releases == 2; }));
}

TEST_F(X11EventTapsTest, OtherButtonsAndTheWheelAreNoRelease) {
  setEnabled(*m_up, true);
  for (const std::uint8_t button : {kMiddle, kSecondary, kWheelUp, std::uint8_t{5}, kBack})
    driver().click(button);
  m_taps->drain();
  EXPECT_EQ(m_releases, 0);
}

TEST_F(X11EventTapsTest, ALeftHandersPrimaryButtonIsTheOtherOne) {
  setEnabled(*m_up, true);
  const std::uint8_t leftHanded[] = {3, 2, 1, 4, 5, 6, 7, 8, 9, 10};
  const auto set = [&](const std::uint8_t* mapping) {
    return x11::ownReply(xcb_set_pointer_mapping_reply(
                             driver().xcb(), xcb_set_pointer_mapping(driver().xcb(), 10, mapping), nullptr))
        ->status;
  };
  ASSERT_EQ(set(leftHanded), XCB_MAPPING_STATUS_SUCCESS);
  driver().click(kPrimary);
  m_taps->drain();
  EXPECT_EQ(m_releases, 0);
  driver().click(kSecondary);
  m_taps->drain();
  EXPECT_EQ(m_releases, 1);

  const std::uint8_t rightHanded[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  ASSERT_EQ(set(rightHanded), XCB_MAPPING_STATUS_SUCCESS);
  driver().click(kPrimary);
  m_taps->drain();
  EXPECT_EQ(m_releases, 2);
}

TEST_F(X11EventTapsTest, EventsComeDuringAnotherProgramsGrabOfThePointer) {
  const auto other = otherClient({"--window", "--grab-pointer"});
  ASSERT_TRUE(other->hasWritten("pointer grabbed"));
  setEnabled(*m_up, true);
  setEnabled(*m_moved, true);
  driver().clickAt(300, 300);
  EXPECT_TRUE(iterateUntil([&] { return m_releases == 1; }));
  EXPECT_GE(m_movements, 1);
}

TEST_F(X11EventTapsTest, MovementsAreToldAsLongAsTheyGoOn) {
  setEnabled(*m_moved, true);
  for (int round = 0; round < 5; ++round)
    ASSERT_TRUE(moveUntilTold()) << round;
}

TEST_F(X11EventTapsTest, MovementsThatFollowAnotherAtOnceWakeNobody) {
  setEnabled(*m_moved, true);
  driver().moveTo(100, 100);
  m_taps->drain(); // the first is reported, and no more are asked for
  m_taps->drain(); // and the server knows
  EXPECT_EQ(m_movements, 1);
  m_events = 0;
  for (int step = 1; step <= 500; ++step)
    driver().moveTo(100 + step, 100);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);
  EXPECT_EQ(m_movements, 1);
  EXPECT_TRUE(moveUntilTold()) << "after a moment they are told again";
}

// Whoever takes one movement an interval must not have to wait for two, also where the mouse's reports fall
// on its ends.
TEST_F(X11EventTapsTest, AMovementIsToldSoonAfterEveryInterval) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::duration<double> kInterval{EventTaps::kMovementInterval};
  constexpr std::chrono::milliseconds kReport{10};
  Clock::time_point last;
  std::vector<Clock::duration> gaps;
  const auto tap = m_taps->makeMouseMovedTap([&] {
    const auto now = Clock::now();
    if (now - last < kInterval) return EventTaps::MovementUse::ignored;
    if (last != Clock::time_point()) gaps.push_back(now - last);
    last = now;
    return EventTaps::MovementUse::taken;
  });
  setEnabled(*tap, true);
  auto report = Clock::now();
  EXPECT_TRUE(iterateUntil([&] {
    if (Clock::now() >= report) {
      driver().moveTo(400 + ++m_steps % 100, 300);
      report += kReport;
    }
    return gaps.size() == 21;
  }));
  std::ranges::nth_element(gaps, gaps.begin() + 10);
  EXPECT_LT(gaps[10], kInterval + 1.5 * kReport);
}

TEST_F(X11EventTapsTest, MovementsWithAButtonHeldAreADragAndLeftOut) {
  for (const std::uint8_t button : {kPrimary, kMiddle, kSecondary, kBack}) {
    setEnabled(*m_moved, true);
    driver().pressButton(button);
    m_events = 0;
    driver().moveTo(100 + button, 100);
    m_taps->drain();
    EXPECT_EQ(m_events, 2) << "the press and the movement were seen";
    EXPECT_EQ(m_movements, 0) << int{button};
    m_taps->drain(); // and the server knows that no more are wanted
    driver().moveTo(200 + button, 100);
    m_taps->drain();
    EXPECT_EQ(m_events, 2) << "a drag costs nothing";
    driver().releaseButton(button);
    m_taps->drain();
    setEnabled(*m_moved, false);
  }
  setEnabled(*m_moved, true);
  driver().moveTo(300, 300);
  m_taps->drain();
  EXPECT_EQ(m_movements, 1);
}

TEST_F(X11EventTapsTest, OneOfTwoHeldButtonsIsStillADrag) {
  setEnabled(*m_moved, true);
  driver().pressButton(kPrimary);
  driver().pressButton(kSecondary);
  driver().releaseButton(kPrimary);
  driver().moveTo(300, 300);
  m_taps->drain();
  EXPECT_EQ(m_movements, 0);
  driver().releaseButton(kSecondary);
  EXPECT_TRUE(moveUntilTold());
}

TEST_F(X11EventTapsTest, AButtonThatWasHeldBeforeTheTapWasEnabledIsADragToo) {
  driver().pressButton(kSecondary);
  setEnabled(*m_moved, true);
  driver().moveTo(300, 300);
  m_taps->drain();
  EXPECT_EQ(m_movements, 0);
  driver().releaseButton(kSecondary);
  EXPECT_TRUE(moveUntilTold());
}

TEST_F(X11EventTapsTest, TurningTheWheelIsNoDrag) {
  setEnabled(*m_moved, true);
  driver().pressButton(kWheelUp);
  driver().moveTo(300, 300);
  driver().releaseButton(kWheelUp);
  m_taps->drain();
  EXPECT_EQ(m_movements, 1);
}

TEST_F(X11EventTapsTest, TheTapMayBeDisabledByAMovementAndEnabledAgainDuringThePause) {
  std::unique_ptr<EventTap> tap;
  int movements = 0;
  tap = m_taps->makeMouseMovedTap([&] {
    ++movements;
    tap->setEnabled(false);
    return EventTaps::MovementUse::taken;
  });
  setEnabled(*tap, true);
  driver().moveTo(100, 100);
  m_taps->drain();
  EXPECT_EQ(movements, 1);
  EXPECT_FALSE(tap->isEnabled());
  setEnabled(*tap, true);
  driver().moveTo(200, 100);
  m_taps->drain();
  EXPECT_EQ(movements, 2);
}

TEST_F(X11EventTapsTest, AMovementMayEndTheTap) {
  std::unique_ptr<EventTap> tap;
  tap = m_taps->makeMouseMovedTap([&] {
    tap.reset();
    return EventTaps::MovementUse::taken;
  });
  setEnabled(*tap, true);
  driver().moveTo(100, 100);
  m_taps->drain();
  EXPECT_FALSE(tap);
  m_taps->drain();
  m_events = 0;
  driver().moveTo(200, 100);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);
}

TEST_F(X11EventTapsTest, DrainingLetsTheTapHandleAReleaseThatHasHappened) {
  setEnabled(*m_up, true);
  driver().click(kPrimary);
  EXPECT_EQ(m_releases, 0);
  m_taps->drain();
  EXPECT_EQ(m_releases, 1);
}

TEST_F(X11EventTapsTest, ATapThatIsGoneListensNoMore) {
  setEnabled(*m_up, true);
  m_up.reset();
  m_taps->drain();
  driver().click(kPrimary);
  m_taps->drain();
  EXPECT_EQ(m_events, 0);
}

TEST_F(X11EventTapsTest, ListeningIsAllowedAndAnUnreadableTouchpadIsNotTrusted) {
  EXPECT_TRUE(m_taps->isTrusted());
  EXPECT_TRUE(m_taps->checkTouchpadAccess());
  x11::X11EventTaps unreadable(
      *m_pointer, {.makeTap = {}, .checkAccess = [] { return Result<>(Failure{"Pad: locked"}); }});
  EXPECT_FALSE(unreadable.isTrusted());
  EXPECT_EQ(unreadable.checkTouchpadAccess().cause(), "Pad: locked");
  EXPECT_TRUE(hasLogged("Pad: locked"));
}

TEST_F(X11EventTapsTest, WithoutASourceOfTouchesTheTapSaysSoWhenItIsEnabled) {
  const auto tap = m_taps->makeTouchTap({});
  EXPECT_TRUE(log().empty());
  tap->setEnabled(true);
  EXPECT_TRUE(tap->isEnabled());
  EXPECT_TRUE(hasLogged("no source of touches"));
}

TEST_F(X11EventTapsTest, TouchesComeFromTheGivenSource) {
  TouchHandlers given;
  x11::X11EventTaps taps(*m_pointer,
                         {.makeTap =
                              [&](TouchHandlers handlers) {
                                given = std::move(handlers);
                                return m_pointer ? x11::X11EventTaps(*m_pointer).makeMouseUpTap({}) : nullptr;
                              },
                          .checkAccess = {}});
  int magnified = 0;
  const auto tap = taps.makeTouchTap({.touchesChanged = {}, .magnified = [&] { ++magnified; }});
  ASSERT_TRUE(tap);
  given.magnified();
  EXPECT_EQ(magnified, 1);
}

} // namespace
} // namespace orbel::test
