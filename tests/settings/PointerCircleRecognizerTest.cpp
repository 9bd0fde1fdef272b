#include "settings/PointerCircleRecognizer.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace orbel {
namespace {

constexpr double kInterval = 0.0625; // exact in binary, and above the least interval of 0.05
constexpr double kDegree = std::numbers::pi / 180;
constexpr Point kCenter{700, 400};

// Clockwise from straight up.
Point onCircle(double radius, double degrees) {
  return {kCenter.x + radius * std::sin(degrees * kDegree), kCenter.y + radius * std::cos(degrees * kDegree)};
}

// Twelve points whose distance from the origin is exactly 20, clockwise from straight up.
constexpr std::array<Point, 12> kExactCircle = {{{0, 20},
                                                 {12, 16},
                                                 {16, 12},
                                                 {20, 0},
                                                 {16, -12},
                                                 {12, -16},
                                                 {0, -20},
                                                 {-12, -16},
                                                 {-16, -12},
                                                 {-20, 0},
                                                 {-16, 12},
                                                 {-12, 16}}};

class PointerCircleRecognizerTest : public testing::Test {
protected:
  bool add(Point position, double interval = kInterval) {
    m_now += interval;
    return m_recognizer.addSample(position, m_now);
  }
  // The number of samples after which the circle was recognised; 0 for never.
  int samplesUntilRecognized(const std::vector<double>& degrees, double radius = 60) {
    int count = 0;
    for (const double angle : degrees) {
      ++count;
      if (add(onCircle(radius, angle))) return count;
    }
    return 0;
  }
  static std::vector<double> turn(double firstDegrees, double stepDegrees, int samples) {
    std::vector<double> degrees;
    for (int index = 0; index < samples; ++index)
      degrees.push_back(firstDegrees + stepDegrees * index);
    return degrees;
  }
  bool addExactCircle(double scale) {
    bool recognized = false;
    for (const Point& point : kExactCircle) {
      recognized = add({kCenter.x + point.x * scale, kCenter.y + point.y * scale}) || recognized;
    }
    return recognized;
  }

  PointerCircleRecognizer m_recognizer;
  double m_now = 0;
};

TEST_F(PointerCircleRecognizerTest, AClockwiseCircleIsRecognizedOnceAndItsSamplesAreForgotten) {
  const int count = samplesUntilRecognized(turn(10, 28, 13));
  EXPECT_GT(count, 6);
  EXPECT_TRUE(m_recognizer.lastMousePositions().empty());
  EXPECT_TRUE(m_recognizer.lastMousePositionTimestamps().empty());
}

TEST_F(PointerCircleRecognizerTest, EveryPlaceOnTheCircleMayBeItsStart) {
  for (double start = 0.5; start < 360; start += 15) {
    EXPECT_NE(samplesUntilRecognized(turn(start, 28, 14)), 0) << start;
    m_now += 5;
  }
}

TEST_F(PointerCircleRecognizerTest, ACounterClockwiseCircleIsNotRecognized) {
  for (double start = 0.5; start < 360; start += 15) {
    EXPECT_EQ(samplesUntilRecognized(turn(start, -28, 40)), 0) << start;
    m_now += 5;
  }
}

TEST_F(PointerCircleRecognizerTest, AMeanRadiusOfTwentyPointsIsTooSmall) {
  EXPECT_FALSE(addExactCircle(1));
  m_now += 5;
  EXPECT_FALSE(addExactCircle(0.75));
  m_now += 5;
  EXPECT_TRUE(addExactCircle(1.001));
}

TEST_F(PointerCircleRecognizerTest, CirclesTooSmallAreNotRecognizedHoweverLongTheyGoOn) {
  EXPECT_EQ(samplesUntilRecognized(turn(10, 28, 200), 19.9), 0);
}

TEST_F(PointerCircleRecognizerTest, FiveSamplesNeverSufficeAndSixMay) {
  // Each step is as large as five samples can use; a sixth completes five sixths of the circle.
  EXPECT_EQ(samplesUntilRecognized(turn(10, 72, 5)), 0);
  EXPECT_EQ(m_recognizer.lastMousePositions().size(), 5u);
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turn(10, 60, 6)), 6);
}

TEST_F(PointerCircleRecognizerTest, LessThanFourFifthsOfACircleAreNotEnough) {
  // Seen from the middle of the samples, which an open arc draws towards itself, 240 degrees appear as about
  // 273 and 300 degrees as about 312.
  EXPECT_EQ(samplesUntilRecognized(turn(60, 20, 13)), 0);
  m_now += 5;
  EXPECT_NE(samplesUntilRecognized(turn(30, 25, 13)), 0);
}

TEST_F(PointerCircleRecognizerTest, TheSweepMustCoverMoreThanTwoHundredAndEightyEightDegrees) {
  // Six samples on both sides of straight down; the radius of the outermost keeps the mean of all at
  // the centre.
  const auto sweep = [this](double degreesCovered) {
    const double half = degreesCovered / 2;
    const double outerRadius = 60 * std::cos(40 * kDegree) / -std::cos(half * kDegree);
    bool recognized = false;
    for (const double offset : {-half, -90.0, -40.0, 40.0, 90.0, half}) {
      recognized = add(onCircle(std::abs(offset) == half ? outerRadius : 60, 180 + offset)) || recognized;
    }
    return recognized;
  };
  EXPECT_FALSE(sweep(287));
  m_now += 5;
  EXPECT_TRUE(sweep(289));
}

TEST_F(PointerCircleRecognizerTest, ASlowCircleIsNotRecognizedBecauseOnlyTheLastSecondCounts) {
  // One turn in 1.5 s is 240 degrees a second, and one in 2 s is 180.
  EXPECT_EQ(samplesUntilRecognized(turn(10, 240 * kInterval, 100)), 0);
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turn(10, 180 * kInterval, 100)), 0);
}

TEST_F(PointerCircleRecognizerTest, ACircleSlowerThanASecondIsRecognizedWhenTheLastSecondCoversEnough) {
  EXPECT_NE(samplesUntilRecognized(turn(10, 300 * kInterval, 40)), 0); // one turn in 1.2 s
}

TEST_F(PointerCircleRecognizerTest, AStraightLineIsNotRecognized) {
  for (int index = 0; index < 60; ++index)
    EXPECT_FALSE(add({20.0 * index, 11.0 * index}));
}

TEST_F(PointerCircleRecognizerTest, APointerThatRestsIsNotRecognized) {
  for (int index = 0; index < 60; ++index)
    EXPECT_FALSE(add(kCenter));
}

TEST_F(PointerCircleRecognizerTest, ASampleWithinFivePointsOfTheCentreMakesItNoCircle) {
  // Three points and their opposites, so that the middle of the six is the centre to the last bit. Five
  // samples never suffice: only the whole is looked at.
  const auto circleWithVisit = [this](double distance) {
    bool recognized = false;
    for (const Point& offset :
         std::array<Point, 6>{{{28, 96}, {distance, 0}, {28, -96}, {-28, -96}, {-distance, 0}, {-28, 96}}}) {
      recognized = add({kCenter.x + offset.x, kCenter.y + offset.y}) || recognized;
    }
    return recognized;
  };
  EXPECT_FALSE(circleWithVisit(4.99));
  m_now += 5;
  EXPECT_TRUE(circleWithVisit(5));
  m_now += 5;
  EXPECT_TRUE(circleWithVisit(5.01));
}

TEST_F(PointerCircleRecognizerTest, StepsOfFifteenHundredthsOfARadianAreTooSmall) {
  // As above: the second sample follows the first by so much, the fifth the fourth.
  const auto turnWithStep = [](double radians) {
    const double second = 10 + radians / kDegree;
    return std::vector<double>{10, second, 130, 190, second + 180, 310};
  };
  EXPECT_EQ(samplesUntilRecognized(turnWithStep(0.149)), 0);
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turnWithStep(0.151)), 6);
}

TEST_F(PointerCircleRecognizerTest, AStepBackStartsTheCountOfStepsAgain) {
  // After the step back (70 to 50) the sweep still counts from the first sample, at 10 degrees.
  const std::vector<double> degrees = {10, 40, 70, 50, 80, 110, 140, 170, 200, 230, 260, 290, 320};
  EXPECT_NE(samplesUntilRecognized(degrees), 0);
  m_now += 5;
  // Four steps after the step back are too few, although the sweep covers enough.
  EXPECT_EQ(samplesUntilRecognized({10, 60, 110, 160, 210, 200, 230, 260, 290, 330}), 0);
}

TEST_F(PointerCircleRecognizerTest, StraightUpIsCrossedOnlyFromTheLastEighthIntoTheFirst) {
  EXPECT_EQ(samplesUntilRecognized(turn(76, 60, 6)), 6) << "from 316 to 16 degrees";
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turn(74, 60, 6)), 0) << "314 is before the last eighth: a step back";
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turn(104, 60, 6)), 6) << "from 344 to 44 degrees";
  m_now += 5;
  EXPECT_EQ(samplesUntilRecognized(turn(106, 60, 6)), 0) << "46 is behind the first eighth: a step back";
}

TEST_F(PointerCircleRecognizerTest, SamplesAreTakenAtMostEveryTwentiethOfASecond) {
  EXPECT_TRUE(m_recognizer.isSampleDue(0));
  m_recognizer.addSample(kCenter, 0);
  EXPECT_FALSE(m_recognizer.isSampleDue(0.0499));
  EXPECT_FALSE(m_recognizer.addSample({1, 1}, 0.0499));
  EXPECT_EQ(m_recognizer.lastMousePositions().size(), 1u);
  EXPECT_TRUE(m_recognizer.isSampleDue(0.05));
  m_recognizer.addSample({1, 1}, 0.05);
  EXPECT_EQ(m_recognizer.lastMousePositions(), (std::vector<Point>{kCenter, {1, 1}}));
  EXPECT_EQ(m_recognizer.lastMousePositionTimestamps(), (std::vector<double>{0, 0.05}));
}

TEST_F(PointerCircleRecognizerTest, SamplesOlderThanOneSecondAreDropped) {
  m_recognizer.addSample({1, 0}, 0);
  m_recognizer.addSample({2, 0}, 0.5);
  m_recognizer.addSample({3, 0}, 1.0);
  EXPECT_EQ(m_recognizer.lastMousePositionTimestamps(), (std::vector<double>{0, 0.5, 1.0}));
  m_recognizer.addSample({4, 0}, 1.0625);
  EXPECT_EQ(m_recognizer.lastMousePositions(), (std::vector<Point>{{2, 0}, {3, 0}, {4, 0}}));
  m_recognizer.addSample({5, 0}, 9);
  EXPECT_EQ(m_recognizer.lastMousePositions(), (std::vector<Point>{{5, 0}}));
  EXPECT_EQ(m_recognizer.lastMousePositionTimestamps(), (std::vector<double>{9}));
}

TEST_F(PointerCircleRecognizerTest, AFloodOfMovementsAndAClockThatStandsStillKeepFewSamples) {
  for (int index = 0; index < 10'000; ++index) {
    m_recognizer.addSample(onCircle(60, index), 5);
  }
  EXPECT_EQ(m_recognizer.lastMousePositions().size(), 1u);
  for (int index = 0; index < 100'000; ++index) {
    m_recognizer.addSample({static_cast<double>(index), 0}, 6 + 0.0001 * index);
    ASSERT_LE(m_recognizer.lastMousePositions().size(), 21u);
  }
}

TEST_F(PointerCircleRecognizerTest, PositionsThatAreNoNumbersAreNoCircle) {
  const double nothing = std::numeric_limits<double>::quiet_NaN();
  for (int index = 0; index < 40; ++index)
    EXPECT_FALSE(add({nothing, nothing}));
  m_now += 5;
  EXPECT_NE(samplesUntilRecognized(turn(10, 28, 14)), 0);
}

} // namespace
} // namespace orbel
