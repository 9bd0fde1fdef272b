// From the kernel's events to the request for the menu: the settings and their recognisers under manual time,
// fed through libevdev.
#include "backends/evdev/TouchpadTap.h"
#include "foundation/NotificationCenter.h"
#include "settings/AppSettings.h"
#include "settings/Notifications.h"
#include "shortcut/MASShortcut.h"
#include "tests/doubles/FakePlatform.h"
#include "tests/support/touchpad/TouchpadTest.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <glib.h>
#include <linux/input.h>
#include <numbers>

namespace orbel::test {
namespace {

constexpr double kRest = 0.31; // a little more than a rest takes
constexpr Point kMiddle{0.5, 0.5};

class TouchpadGesturesTest : public TouchpadTest {
protected:
  TouchpadGesturesTest() {
    m_observation = NotificationCenter::defaultCenter().observe(
        kOrbelMenuShouldShowNotification, nullptr, [this](const Notification&) { ++m_requests; });
    m_pad.plugIn();
  }
  AppSettings& settings() { return AppSettings::sharedInstance(); }

  void start(Gesture gesture) {
    m_platform.preferences.setObject("gestureSettings", static_cast<std::int64_t>(gesture));
    settings().startHandlers();
    m_tap = std::make_unique<evdev::TouchpadTap>(TouchHandlers{[this](const std::vector<Touch>& touches) {
                                                                 ++m_frames;
                                                                 m_fingers = touches.size();
                                                                 m_platform.eventTaps.touchesChanged(touches);
                                                               },
                                                               [this] { m_platform.eventTaps.magnified(); }});
    m_tap->setEnabled(true);
    // A finger that moved the pointer a moment ago.
    putDown(1, 0);
    liftAll();
  }

  void tell() {
    const int before = m_frames;
    m_pad.frame();
    ASSERT_TRUE(iterateUntil([&] { return m_frames > before; }));
  }
  static Point onHand(int finger, int count, double spread) {
    const double angle = 2 * std::numbers::pi * (finger + 0.25) / count;
    return {kMiddle.x + spread * std::cos(angle), kMiddle.y + spread * std::sin(angle)};
  }
  // One after another, a hundredth of a second apart.
  void putDown(int count, double spread = 0.1) {
    for (int finger = 0; finger < count; ++finger) {
      const Point place = onHand(finger, count, spread);
      m_pad.put(finger, ++m_trackingId, place.x, place.y);
      tell();
      m_platform.runLoop.advance(0.01);
    }
  }
  void putDownAtOnce(int count) {
    for (int finger = 0; finger < count; ++finger)
      m_pad.put(finger, ++m_trackingId, 0.2 + 0.1 * finger, 0.5);
    tell();
  }
  void spread(int count, double spread) {
    for (int finger = 0; finger < count; ++finger) {
      const Point place = onHand(finger, count, spread);
      m_pad.move(finger, place.x, place.y);
    }
    tell();
  }
  void lift(int slot) {
    m_pad.lift(slot);
    tell();
  }
  void liftAll() {
    for (int slot = 0; slot < 5; ++slot)
      m_pad.lift(slot);
    tell();
    EXPECT_EQ(m_fingers, 0U);
  }
  void wait(double seconds) { m_platform.runLoop.advance(seconds); }

  using Places = std::function<Point(int finger, int frame)>;
  // Three fingers that never stand still, a thousand events in each of so many milliseconds. All of them are
  // reported, and another user of the loop has its turn as often as the touchpad has.
  void flood(int milliseconds, const Places& places) {
    constexpr int kFramesAMillisecond = 100; // of ten events each
    constexpr int kFramesATurn = 5;          // what the test's touchpad holds until it is read
    const int frames = milliseconds * kFramesAMillisecond;
    const int told = m_frames;
    int written = 0;
    int turns = 0;
    const guint other = g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer count) -> gboolean {
          ++*static_cast<int*>(count);
          return G_SOURCE_CONTINUE;
        },
        &turns, nullptr);
    const Registration otherEnds([other] { g_source_remove(other); });
    while (written < frames) {
      for (int frame = 0; frame < kFramesATurn; ++frame, ++written) {
        for (int finger = 0; finger < 3; ++finger) {
          const Point place = places(finger, written);
          m_pad.move(finger, place.x, place.y);
        }
        m_pad.frame();
      }
      const int before = turns;
      ASSERT_TRUE(iterateUntil([&] { return m_frames == told + written; })) << "of " << written;
      ASSERT_GT(turns, before) << "the loop serves nobody else";
      if (written % kFramesAMillisecond == 0) m_platform.runLoop.advance(0.001);
    }
  }
  // By a hundredth of the pad, all fingers alike, in another direction in every frame.
  static Point trembling(Point place, int frame) {
    const double direction = 2.1 * frame;
    return {place.x + 0.01 * std::cos(direction), place.y + 0.01 * std::sin(direction)};
  }

  FakePlatform m_platform;
  TestTouchpad m_pad{testbed()};
  std::unique_ptr<evdev::TouchpadTap> m_tap;
  Registration m_observation;
  int m_requests = 0;
  int m_frames = 0;
  std::size_t m_fingers = 0;
  int m_trackingId = 100;
};

TEST_F(TouchpadGesturesTest, ThreeFingersRestingSummonOnceAndAgainAfterTheyWereLifted) {
  start(Gesture::threeFingersResting);
  putDown(3);
  wait(0.28);
  EXPECT_EQ(m_requests, 0) << "not before three tenths of a second";
  wait(kRest);
  EXPECT_EQ(m_requests, 1);
  spread(3, 0.11);
  wait(2);
  EXPECT_EQ(m_requests, 1) << "once";
  liftAll();
  putDown(3);
  wait(kRest);
  EXPECT_EQ(m_requests, 2);
}

TEST_F(TouchpadGesturesTest, FourFingersOfWhichOneIsLiftedSummonNothing) {
  start(Gesture::threeFingersResting);
  putDown(4);
  wait(0.05);
  lift(3);
  wait(kRest);
  EXPECT_EQ(m_fingers, 3U);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, FourFingersRestingSummonWithTheirGestureOnly) {
  start(Gesture::fourFingersResting);
  putDown(3);
  wait(kRest);
  EXPECT_EQ(m_requests, 0);
  liftAll();
  putDown(4);
  wait(kRest);
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, APinchDuringTheWaitSummonsNothing) {
  start(Gesture::threeFingersResting);
  putDown(3, 0.1);
  wait(0.1);
  spread(3, 0.15);
  wait(kRest);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, APinchThatGoesBackDuringTheWaitSummonsNothingEither) {
  start(Gesture::threeFingersResting);
  putDown(3, 0.1);
  wait(0.1);
  spread(3, 0.15);
  wait(0.1);
  spread(3, 0.1);
  wait(kRest);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, AHandThatTremblesByTwoHundredthsOfThePadSummonsAllTheSame) {
  start(Gesture::threeFingersResting);
  for (const double handSpread : {0.06, 0.1, 0.25}) {
    m_requests = 0;
    putDown(3, handSpread);
    for (int frame = 0; frame < 24; ++frame) {
      for (int finger = 0; finger < 3; ++finger) {
        const Point place = onHand(finger, 3, handSpread);
        const double direction = 2.1 * frame + 1.3 * finger;
        m_pad.move(finger, place.x + 0.02 * std::cos(direction), place.y + 0.02 * std::sin(direction));
      }
      tell();
      wait(0.0125);
    }
    wait(0.05);
    EXPECT_EQ(m_requests, 1) << handSpread;
    liftAll();
  }
}

TEST_F(TouchpadGesturesTest, AHandThatMovesAcrossThePadSummonsNothing) {
  start(Gesture::threeFingersResting);
  putDown(3);
  for (int finger = 0; finger < 3; ++finger) {
    const Point place = onHand(finger, 3, 0.1);
    m_pad.move(finger, place.x + 0.05, place.y);
  }
  tell();
  wait(kRest);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, APalmIsNoThirdFinger) {
  start(Gesture::threeFingersResting);
  m_pad.setTool(2, MT_TOOL_PALM);
  putDown(2);
  m_pad.put(2, ++m_trackingId, 0.1, 0.1);
  m_pad.put(3, ++m_trackingId, 0.9, 0.1); // three fingers beside the palm
  tell();
  EXPECT_EQ(m_fingers, 3U);
  wait(kRest);
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, SpreadingThreeOrFourFingersSummonsOnceWithTheirGesture) {
  for (const int count : {3, 4}) {
    m_requests = 0;
    start(count == 3 ? Gesture::threeFingersSpreading : Gesture::fourFingersSpreading);
    putDown(count, 0.1);
    spread(count, 0.14);
    EXPECT_EQ(m_requests, 0);
    spread(count, 0.16);
    EXPECT_EQ(m_requests, 1);
    spread(count, 0.3);
    EXPECT_EQ(m_requests, 1);
    liftAll();
    putDown(count, 0.3);
    spread(count, 0.1);
    EXPECT_EQ(m_requests, 1) << "drawing together is no spreading";
    liftAll();
  }
}

TEST_F(TouchpadGesturesTest, AFourthFingerMidwayStartsTheMeasureOfThreeAgain) {
  start(Gesture::threeFingersSpreading);
  putDown(3, 0.1);
  spread(3, 0.14);
  m_pad.put(3, ++m_trackingId, 0.5, 0.5);
  tell();
  lift(3);
  spread(3, 0.2);
  EXPECT_EQ(m_requests, 0) << "twice the first spread, but the measure is new";
  spread(3, 0.22);
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, UnpluggedDuringTheWaitNothingIsSummonedAndBackItSummonsAgain) {
  start(Gesture::threeFingersResting);
  putDown(3);
  m_pad.unplug();
  ASSERT_TRUE(iterateUntil([&] { return m_fingers == 0; }));
  wait(kRest);
  EXPECT_EQ(m_requests, 0);

  m_pad.plugIn();
  const auto isHeard = [&] {
    m_pad.put(0, ++m_trackingId, 0.5, 0.5);
    m_pad.frame();
    return m_fingers == 1;
  };
  ASSERT_TRUE(iterateUntil(isHeard));
  liftAll();
  putDown(3);
  wait(kRest);
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, UnpluggedInTheMiddleOfASpreadTheMeasureBeginsAnew) {
  start(Gesture::threeFingersSpreading);
  putDown(3, 0.1);
  m_pad.unplug();
  ASSERT_TRUE(iterateUntil([&] { return m_fingers == 0; }));
  EXPECT_EQ(settings().magnifyStartDistance(), 0);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, AFloodOfMovementsDuringARestSummonsOnce) {
  start(Gesture::threeFingersResting);
  putDownAtOnce(3);
  const auto places = [](int finger, int frame) { return trembling({0.2 + 0.1 * finger, 0.5}, frame); };
  flood(295, places);
  EXPECT_EQ(m_requests, 0);
  flood(15, places);
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, AFloodOfMovementsDuringASpreadSummonsOnce) {
  start(Gesture::threeFingersSpreading);
  putDown(3, 0.1);
  const auto towards = [](double from, double to) {
    return [=](int finger, int frame) {
      return trembling(onHand(finger, 3, from + (to - from) * frame / 5000), frame);
    };
  };
  flood(50, towards(0.1, 0.145));
  EXPECT_EQ(m_requests, 0);
  flood(50, towards(0.145, 0.3));
  EXPECT_EQ(m_requests, 1);
}

TEST_F(TouchpadGesturesTest, APinchOfAMillisecondWithinAFloodSummonsNothing) {
  start(Gesture::threeFingersResting);
  putDown(3, 0.1);
  const auto still = [](int finger, int frame) { return trembling(onHand(finger, 3, 0.1), frame); };
  flood(20, still);
  flood(1, [](int finger, int frame) {
    return trembling(onHand(finger, 3, 0.1 + 0.001 * std::min(frame, 99 - frame)), frame);
  });
  flood(20, still);
  wait(kRest);
  EXPECT_EQ(m_requests, 0);
}

TEST_F(TouchpadGesturesTest, AClockThatStandsStillSummonsNothing) {
  start(Gesture::threeFingersResting);
  for (int rest = 0; rest < 20; ++rest) {
    putDownAtOnce(3);
    liftAll();
  }
  EXPECT_EQ(m_requests, 0);
}

} // namespace
} // namespace orbel::test
