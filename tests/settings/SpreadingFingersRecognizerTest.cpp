#include "settings/SpreadingFingersRecognizer.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace orbel {
namespace {

// Four fingers in a cross whose distance from the middle is exact; three are two of its arms and the middle,
// so that their mean distance is two thirds of the arm.
std::vector<Touch> fingers(std::size_t count, double arm, Point middle = {0.5, 0.5}) {
  std::vector<Touch> touches = {{1, {middle.x, middle.y + arm}}, {2, {middle.x, middle.y - arm}}};
  if (count == 3) touches.push_back({3, middle});
  if (count == 4) {
    touches.push_back({3, {middle.x + arm, middle.y}});
    touches.push_back({4, {middle.x - arm, middle.y}});
  }
  return touches;
}

class SpreadingFingersRecognizerTest : public testing::Test {
protected:
  bool spread(std::size_t count, double arm, std::size_t wanted) {
    return m_recognizer.touchesChanged(fingers(count, arm), wanted);
  }

  SpreadingFingersRecognizer m_recognizer;
};

TEST_F(SpreadingFingersRecognizerTest, TheFirstTouchOfTheWantedFingersIsTheMeasure) {
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.0f);
  EXPECT_FALSE(spread(4, 0.125, 4));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.125f);
  EXPECT_FALSE(spread(4, 0.15, 4));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.125f) << "the measure stays the first";
}

TEST_F(SpreadingFingersRecognizerTest, TheMeasureIsTheMeanDistanceFromTheCentroid) {
  EXPECT_FALSE(m_recognizer.touchesChanged({{1, {0.1, 0.1}}, {2, {0.4, 0.1}}, {3, {0.1, 0.5}}}, 3));
  // The centroid is (0.2, 0.7/3).
  EXPECT_NEAR(m_recognizer.magnifyStartDistance(), (0.166667 + 0.240370 + 0.284800) / 3, 1e-5);
}

TEST_F(SpreadingFingersRecognizerTest, SpreadingByMoreThanHalfFires) {
  spread(4, 0.125, 4);
  EXPECT_FALSE(spread(4, 0.1875, 4)) << "exactly one and a half times is not more";
  EXPECT_TRUE(spread(4, 0.1876, 4));
}

TEST_F(SpreadingFingersRecognizerTest, ThreeFingersSpreadWhereThreeAreWanted) {
  EXPECT_FALSE(spread(3, 0.1, 3));
  EXPECT_FALSE(spread(3, 0.1499, 3));
  EXPECT_TRUE(spread(3, 0.1501, 3));
}

TEST_F(SpreadingFingersRecognizerTest, AGestureFiresOnceHoweverFarItGoes) {
  spread(4, 0.0625, 4);
  ASSERT_TRUE(spread(4, 0.2, 4));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), std::numeric_limits<float>::max());
  EXPECT_FALSE(spread(4, 0.5, 4));
  EXPECT_FALSE(spread(4, 0.0625, 4));
  EXPECT_FALSE(spread(4, 0.5, 4));
}

TEST_F(SpreadingFingersRecognizerTest, ChangingTheNumberOfFingersBeginsANewGesture) {
  spread(4, 0.0625, 4);
  ASSERT_TRUE(spread(4, 0.2, 4));
  EXPECT_FALSE(spread(3, 0.2, 4));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.0f);
  EXPECT_FALSE(spread(4, 0.0625, 4));
  EXPECT_TRUE(spread(4, 0.2, 4));
}

TEST_F(SpreadingFingersRecognizerTest, AFourthFingerMidwayStartsTheMeasureOfThreeAgain) {
  spread(3, 0.1, 3);
  EXPECT_FALSE(spread(3, 0.14, 3));
  EXPECT_FALSE(spread(4, 0.14, 3));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.0f);
  EXPECT_FALSE(spread(3, 0.16, 3)) << "more than half of the first spread, but the measure is new";
  EXPECT_FALSE(spread(3, 0.23, 3));
  EXPECT_TRUE(spread(3, 0.25, 3));
}

TEST_F(SpreadingFingersRecognizerTest, OtherNumbersOfFingersNeverFire) {
  for (const std::size_t count : {2u, 4u}) {
    EXPECT_FALSE(spread(count, 0.05, 3));
    EXPECT_FALSE(spread(count, 0.4, 3));
  }
  EXPECT_FALSE(m_recognizer.touchesChanged({}, 3));
  EXPECT_FALSE(m_recognizer.touchesChanged({}, 0));
  EXPECT_EQ(m_recognizer.magnifyStartDistance(), 0.0f);
}

TEST_F(SpreadingFingersRecognizerTest, PinchingAndMovingTheWholeHandDoNotFire) {
  spread(4, 0.25, 4);
  EXPECT_FALSE(spread(4, 0.0625, 4));
  EXPECT_FALSE(m_recognizer.touchesChanged(fingers(4, 0.25, {0.9, 0.1}), 4));
}

TEST_F(SpreadingFingersRecognizerTest, FingersOnOnePointHaveNotBegunYet) {
  EXPECT_FALSE(spread(3, 0, 3));
  EXPECT_FALSE(spread(3, 0.1, 3));
  EXPECT_TRUE(spread(3, 0.2, 3));
}

} // namespace
} // namespace orbel
