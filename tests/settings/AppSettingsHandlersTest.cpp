// How the settings start, stop and feed the triggers: the global shortcut, the event taps and
// the recognisers.
#include "settings/AppSettings.h"

#include "foundation/NotificationCenter.h"
#include "foundation/SharedObjects.h"
#include "settings/Notifications.h"
#include "shortcut/MASShortcut.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>
#include <vector>

namespace orbel {
namespace {

const MASShortcut kShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag);

std::vector<Touch> fingers(int count, double spread = 0.1) {
  std::vector<Touch> touches;
  for (int finger = 0; finger < count; ++finger)
    touches.push_back({finger, {0.5 + spread * finger, 0.5}});
  return touches;
}

class AppSettingsHandlersTest : public testing::Test {
protected:
  AppSettingsHandlersTest() {
    auto& center = NotificationCenter::defaultCenter();
    m_showObservation = center.observe(kOrbelMenuShouldShowNotification, nullptr,
                                       [this](const Notification& n) { m_shows.push_back(n); });
    m_hideObservation = center.observe(kOrbelMenuShouldHideNotification, nullptr,
                                       [this](const Notification& n) { m_hides.push_back(n); });
  }

  AppSettings& settings() { return AppSettings::sharedInstance(); }
  void startWithGesture(Gesture gesture) {
    m_platform.preferences.setObject("gestureSettings", static_cast<std::int64_t>(gesture));
    settings().startHandlers();
  }
  bool isEnabled(const char* tap) const { return m_platform.eventTaps.isEnabled(tap); }
  void touch(const std::vector<Touch>& touches) { m_platform.eventTaps.touchesChanged(touches); }
  void putDown(int count) {
    touch({});
    for (int down = 1; down <= count; ++down)
      touch(fingers(down));
  }
  void pressShortcut() { m_platform.hotKeys.press(kShortcut.carbonKeyCode(), kShortcut.carbonFlags()); }
  // Moves the pointer clockwise (or back) around a circle, one turn in that many seconds.
  void circle(double seconds, double radius, double direction = 1) {
    constexpr double kInterval = 1.0 / 128; // several movements a sample
    for (double time = 0; time < seconds; time += kInterval) {
      const double angle = 0.1 + direction * 2 * std::numbers::pi * time / seconds;
      m_platform.runLoop.advance(kInterval);
      m_platform.windows.pointer = Point{500 + radius * std::sin(angle), 300 + radius * std::cos(angle)};
      m_platform.eventTaps.mouseMoved();
    }
  }
  void expectShow(const char* eventType) {
    ASSERT_EQ(m_shows.size(), 1u);
    EXPECT_EQ(m_shows[0].object, &settings());
    EXPECT_EQ(m_shows[0].userInfo, (PropertyList::Dictionary{{"ShowEventType", eventType}}));
  }

  FakePlatform m_platform;
  std::vector<Notification> m_shows;
  std::vector<Notification> m_hides;
  Registration m_showObservation;
  Registration m_hideObservation;
};

TEST_F(AppSettingsHandlersTest, TheTapsAreMadeInTheOrderTouchMouseUpMouseMovedAndStayDisabled) {
  settings();
  const auto& taps = m_platform.eventTaps.taps;
  ASSERT_EQ(taps.size(), 3u);
  EXPECT_EQ(taps[0]->kind, "touch");
  EXPECT_EQ(taps[1]->kind, "mouseUp");
  EXPECT_EQ(taps[2]->kind, "mouseMoved");
  for (const auto& tap : taps)
    EXPECT_FALSE(tap->enabled);
}

TEST_F(AppSettingsHandlersTest, TheTouchGesturesEnableTheTouchTapAndTheCircleTheMouseMovedTap) {
  for (const auto gesture : {Gesture::threeFingersResting, Gesture::threeFingersSpreading,
                             Gesture::fourFingersSpreading, Gesture::fourFingersResting}) {
    startWithGesture(gesture);
    EXPECT_TRUE(isEnabled("touch"));
    EXPECT_FALSE(isEnabled("mouseMoved"));
    EXPECT_TRUE(isEnabled("mouseUp"));
  }
  startWithGesture(Gesture::pointerCircle);
  EXPECT_FALSE(isEnabled("touch"));
  EXPECT_TRUE(isEnabled("mouseMoved"));
  EXPECT_TRUE(isEnabled("mouseUp"));
}

TEST_F(AppSettingsHandlersTest, WhereNoMovementsAreToldTheCircleEnablesNoTap) {
  m_platform.eventTaps.movementsAreTold = false;
  startWithGesture(Gesture::pointerCircle);
  EXPECT_FALSE(isEnabled("touch"));
  EXPECT_FALSE(isEnabled("mouseMoved"));
  EXPECT_TRUE(isEnabled("mouseUp"));
  circle(0.5, 100);
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, AnUnknownGestureEnablesTheTouchTap) {
  m_platform.preferences.setObject("gestureSettings", 6);
  settings().startHandlers();
  EXPECT_TRUE(isEnabled("touch"));
  EXPECT_FALSE(isEnabled("mouseMoved"));
}

TEST_F(AppSettingsHandlersTest, ChangingTheGestureFromOneToFiveExchangesTheTaps) {
  settings().startHandlers();
  settings().setGestureSettings(5);
  EXPECT_FALSE(isEnabled("touch"));
  EXPECT_TRUE(isEnabled("mouseMoved"));
  EXPECT_TRUE(isEnabled("mouseUp"));
  settings().setGestureSettings(1);
  EXPECT_TRUE(isEnabled("touch"));
  EXPECT_FALSE(isEnabled("mouseMoved"));
  EXPECT_TRUE(isEnabled("mouseUp"));
}

TEST_F(AppSettingsHandlersTest, StoppingDisablesAllTapsAndReleasesTheShortcut) {
  MASShortcut::setGlobalShortcut(kShortcut, "GlobalShortcut");
  startWithGesture(Gesture::pointerCircle);
  settings().stopHandlers();
  for (const auto& tap : m_platform.eventTaps.taps)
    EXPECT_FALSE(tap->enabled) << tap->kind;
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  EXPECT_TRUE(MASShortcut::registeredUserDefaultsHotKeys().empty());
  settings().stopHandlers();
}

TEST_F(AppSettingsHandlersTest, TheGlobalShortcutSummonsTheMenu) {
  MASShortcut::setGlobalShortcut(kShortcut, "GlobalShortcut");
  settings().startHandlers();
  pressShortcut();
  expectShow("ShowEventShortcut");
}

TEST_F(AppSettingsHandlersTest, TheShortcutStaysRegisteredWhenTheHandlersAreStartedAgain) {
  MASShortcut::setGlobalShortcut(kShortcut, "GlobalShortcut");
  settings().startHandlers();
  settings().startHandlers();
  settings().setGestureSettings(5);
  pressShortcut();
  EXPECT_EQ(m_shows.size(), 1u);
}

TEST_F(AppSettingsHandlersTest, AShortcutStoredWhileTheHandlersRunSummonsAtOnce) {
  settings().startHandlers();
  pressShortcut();
  EXPECT_TRUE(m_shows.empty());
  MASShortcut::setGlobalShortcut(kShortcut, "GlobalShortcut");
  pressShortcut();
  EXPECT_EQ(m_shows.size(), 1u);
}

TEST_F(AppSettingsHandlersTest, GarbageStoredAsTheShortcutLeavesTheGesturesRunning) {
  m_platform.preferences.setObject("GlobalShortcut", PropertyList::Data(30, std::byte{0x11}));
  settings().startHandlers();
  EXPECT_TRUE(isEnabled("mouseUp"));
  EXPECT_TRUE(isEnabled("touch"));
  EXPECT_EQ(m_platform.logged.size(), 1u);
}

TEST_F(AppSettingsHandlersTest, EveryMouseUpAsksToHideTheMenu) {
  settings().startHandlers();
  m_platform.eventTaps.mouseUp();
  m_platform.eventTaps.mouseUp();
  ASSERT_EQ(m_hides.size(), 2u);
  EXPECT_EQ(m_hides[0].object, &settings());
  EXPECT_TRUE(m_hides[0].userInfo.empty());
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, ThreeFingersHeldForThreeTenthsOfASecondSummonOnce) {
  startWithGesture(Gesture::threeFingersResting);
  putDown(3);
  m_platform.runLoop.advance(0.29);
  EXPECT_TRUE(m_shows.empty());
  m_platform.runLoop.advance(0.02);
  expectShow("ShowEventTrackpad");
  touch(fingers(3));
  m_platform.runLoop.advance(5);
  EXPECT_EQ(m_shows.size(), 1u);
  putDown(3);
  m_platform.runLoop.advance(0.31);
  EXPECT_EQ(m_shows.size(), 2u) << "lifting and putting them down again summons again";
}

TEST_F(AppSettingsHandlersTest, FourFingersOfWhichOneIsLiftedSummonNothingWithTheRestOfThree) {
  startWithGesture(Gesture::threeFingersResting);
  putDown(4);
  m_platform.runLoop.advance(0.31);
  touch(fingers(3));
  m_platform.runLoop.advance(1);
  EXPECT_TRUE(m_shows.empty());
  touch({});
  touch(fingers(4)); // all at once
  touch(fingers(3));
  m_platform.runLoop.advance(1);
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, FourFingersRestingSummonWithGestureFourAndThreeDoNot) {
  startWithGesture(Gesture::fourFingersResting);
  putDown(3);
  m_platform.runLoop.advance(1);
  EXPECT_TRUE(m_shows.empty());
  putDown(4);
  m_platform.runLoop.advance(0.31);
  expectShow("ShowEventTrackpad");
}

TEST_F(AppSettingsHandlersTest, APinchDuringTheWaitSpoilsTheRest) {
  for (const auto gesture : {Gesture::threeFingersResting, Gesture::fourFingersResting}) {
    startWithGesture(gesture);
    putDown(gesture == Gesture::threeFingersResting ? 3 : 4);
    m_platform.runLoop.advance(0.1);
    m_platform.eventTaps.magnified();
    EXPECT_EQ(settings().touchCount(), 0);
    EXPECT_TRUE(settings().currentTouches().empty());
    m_platform.runLoop.advance(1);
    EXPECT_TRUE(m_shows.empty());
  }
}

TEST_F(AppSettingsHandlersTest, APinchIsNoConcernOfTheSpreads) {
  startWithGesture(Gesture::threeFingersSpreading);
  settings().setTouchCount(7);
  settings().setCurrentTouches(fingers(2));
  m_platform.eventTaps.magnified();
  EXPECT_EQ(settings().touchCount(), 7);
  EXPECT_EQ(settings().currentTouches().size(), 2u);
}

TEST_F(AppSettingsHandlersTest, SpreadingThreeOrFourFingersSummonsWithTheirGesture) {
  for (const int count : {3, 4}) {
    m_shows.clear();
    startWithGesture(count == 3 ? Gesture::threeFingersSpreading : Gesture::fourFingersSpreading);
    touch(fingers(count, 0.05));
    EXPECT_GT(settings().magnifyStartDistance(), 0);
    touch(fingers(count, 0.07));
    EXPECT_TRUE(m_shows.empty());
    touch(fingers(count, 0.08));
    expectShow("ShowEventTrackpad");
    touch(fingers(count, 0.15));
    EXPECT_EQ(m_shows.size(), 1u);
    touch({});
    EXPECT_EQ(settings().magnifyStartDistance(), 0);
  }
}

TEST_F(AppSettingsHandlersTest, SpreadingFourFingersSummonsNothingWithTheSpreadOfThree) {
  startWithGesture(Gesture::threeFingersSpreading);
  touch(fingers(4, 0.05));
  touch(fingers(4, 0.15));
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, TouchesSummonNothingWhileTheCircleIsChosen) {
  startWithGesture(Gesture::pointerCircle);
  putDown(3);
  m_platform.runLoop.advance(1);
  touch(fingers(4, 0.05));
  touch(fingers(4, 0.2));
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, AnExceptionOfAnObserverIsLoggedAndTheTouchesGoOn) {
  startWithGesture(Gesture::threeFingersSpreading);
  const auto thrower = NotificationCenter::defaultCenter().observe(
      kOrbelMenuShouldShowNotification, nullptr,
      [](const Notification&) { throw std::runtime_error("no menu today"); });
  touch(fingers(3, 0.05));
  EXPECT_NO_THROW(touch(fingers(3, 0.15)));
  EXPECT_EQ(m_platform.logged, std::vector<std::string>{"no menu today"});
}

TEST_F(AppSettingsHandlersTest, AClockwiseCircleOfThePointerSummonsTheMenu) {
  startWithGesture(Gesture::pointerCircle);
  circle(0.8, 60);
  expectShow("ShowEventTrackpad");
  EXPECT_LT(settings().lastMousePositions().size(), 6u) << "the samples of the circle are forgotten";
}

TEST_F(AppSettingsHandlersTest, OtherMovementsOfThePointerSummonNothing) {
  startWithGesture(Gesture::pointerCircle);
  circle(0.8, 60, -1);
  m_platform.runLoop.advance(2);
  circle(0.8, 19);
  m_platform.runLoop.advance(2);
  circle(2.5, 60);
  EXPECT_TRUE(m_shows.empty());
}

TEST_F(AppSettingsHandlersTest, ThePointerIsSampledWithItsTime) {
  startWithGesture(Gesture::pointerCircle);
  m_platform.windows.pointer = Point{3, 4};
  m_platform.eventTaps.mouseMoved();
  m_platform.eventTaps.mouseMoved();
  EXPECT_EQ(settings().lastMousePositions(), (std::vector<Point>{{3, 4}}));
  EXPECT_EQ(settings().lastMousePositionTimestamps(), std::vector<double>{m_platform.runLoop.now()});
}

// So that the tap leaves out none that is due.
TEST_F(AppSettingsHandlersTest, ExactlyTheMovementsThatAreDueAreTaken) {
  startWithGesture(Gesture::pointerCircle);
  m_platform.windows.pointer = Point{3, 4};
  EXPECT_EQ(m_platform.eventTaps.mouseMoved(), EventTaps::MovementUse::taken);
  m_platform.runLoop.advance(0.049);
  EXPECT_EQ(m_platform.eventTaps.mouseMoved(), EventTaps::MovementUse::ignored);
  m_platform.runLoop.advance(0.0015);
  EXPECT_EQ(m_platform.eventTaps.mouseMoved(), EventTaps::MovementUse::taken);
  EXPECT_EQ(settings().lastMousePositions().size(), 2u);
}

TEST_F(AppSettingsHandlersTest, AnUnknownPointerPositionIsNoSample) {
  startWithGesture(Gesture::pointerCircle);
  m_platform.windows.pointer = std::nullopt;
  m_platform.eventTaps.mouseMoved();
  EXPECT_TRUE(settings().lastMousePositions().empty());
}

TEST_F(AppSettingsHandlersTest, TheRecognisersKeepWhatTheyKnowWhenTheGestureChanges) {
  settings().startHandlers();
  EXPECT_FALSE(settings().nFingerRestPossible());
  touch({});
  EXPECT_TRUE(settings().nFingerRestPossible());
  settings().setMagnifyStartDistance(0.25f);
  settings().setGestureSettings(2);
  EXPECT_TRUE(settings().nFingerRestPossible());
  EXPECT_EQ(settings().magnifyStartDistance(), 0.25f);
}

TEST_F(AppSettingsHandlersTest, DestroyingTheSettingsReleasesTheShortcutAndDropsAPendingRest) {
  MASShortcut::setGlobalShortcut(kShortcut, "GlobalShortcut");
  settings().startHandlers();
  putDown(3);
  SharedObjects::current().destroy<AppSettings>();
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  m_platform.runLoop.advance(1);
  EXPECT_TRUE(m_shows.empty());
}

} // namespace
} // namespace orbel
