#include "backends/evdev/PinchDetector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace orbel::test {
namespace {

// Around the middle of the pad, all as far from it.
std::vector<Touch> fingers(int count, double spread, Point middle = {0.5, 0.5}) {
  std::vector<Touch> touches;
  for (int finger = 0; finger < count; ++finger) {
    const double angle = 2 * std::numbers::pi * finger / count;
    touches.push_back({finger, {middle.x + spread * std::cos(angle), middle.y + spread * std::sin(angle)}});
  }
  return touches;
}

TEST(PinchDetectorTest, FingersThatMoveApartOrTogetherPinch) {
  for (const double factor : {1.16, 0.84}) {
    evdev::PinchDetector detector;
    EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.2)));
    EXPECT_TRUE(detector.touchesChanged(fingers(3, 0.2 * factor)));
  }
}

TEST(PinchDetectorTest, FifteenHundredthsOfTheSpreadAreNotEnough) {
  for (const double factor : {1.14, 0.86}) {
    evdev::PinchDetector detector;
    EXPECT_FALSE(detector.touchesChanged(fingers(4, 0.3)));
    EXPECT_FALSE(detector.touchesChanged(fingers(4, 0.3 * factor)));
  }
}

TEST(PinchDetectorTest, FingersCloseTogetherMustMoveByTwoAndAHalfHundredthsOfThePadAllTheSame) {
  evdev::PinchDetector detector;
  EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.05)));
  EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.0749)));
  EXPECT_TRUE(detector.touchesChanged(fingers(3, 0.0751)));
}

TEST(PinchDetectorTest, APinchLastsUntilTheNumberOfFingersChanges) {
  evdev::PinchDetector detector;
  detector.touchesChanged(fingers(3, 0.2));
  ASSERT_TRUE(detector.touchesChanged(fingers(3, 0.3)));
  EXPECT_TRUE(detector.touchesChanged(fingers(3, 0.2))) << "back where it began";
  EXPECT_FALSE(detector.touchesChanged(fingers(2, 0.2)));
  EXPECT_FALSE(detector.touchesChanged(fingers(2, 0.21)));
  EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.3))) << "the measure is new";
  EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.31)));
}

TEST(PinchDetectorTest, AHandThatMovesAsAWholeDoesNotPinch) {
  evdev::PinchDetector detector;
  for (int step = 0; step < 40; ++step)
    EXPECT_FALSE(detector.touchesChanged(fingers(3, 0.1, {0.2 + 0.015 * step, 0.5})));
}

TEST(PinchDetectorTest, OneFingerAndNoneDoNotPinch) {
  evdev::PinchDetector detector;
  EXPECT_FALSE(detector.touchesChanged(fingers(1, 0.1)));
  EXPECT_FALSE(detector.touchesChanged(fingers(1, 0.5)));
  EXPECT_FALSE(detector.touchesChanged({}));
}

TEST(PinchDetectorTest, NoTremblingWithinTwoHundredthsOfThePadIsAPinch) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> angle(0, 2 * std::numbers::pi);
  for (int hand = 0; hand < 2000; ++hand) {
    evdev::PinchDetector detector;
    const auto resting = fingers(3 + hand % 2, 0.04 + 0.0001 * hand);
    detector.touchesChanged(resting);
    for (int frame = 0; frame < 30; ++frame) {
      auto trembling = resting;
      for (Touch& touch : trembling) {
        const double direction = angle(random);
        touch.normalizedPosition.x += 0.02 * std::cos(direction);
        touch.normalizedPosition.y += 0.02 * std::sin(direction);
      }
      ASSERT_FALSE(detector.touchesChanged(trembling)) << hand;
    }
  }
}

} // namespace
} // namespace orbel::test
