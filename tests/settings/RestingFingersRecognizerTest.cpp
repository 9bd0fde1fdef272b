#include "settings/RestingFingersRecognizer.h"

#include <gtest/gtest.h>

#include <limits>

namespace orbel {
namespace {

using Touches = RestingFingersRecognizer::Touches;

Touches fingers(std::int64_t count) {
  Touches touches;
  for (std::int64_t finger = 0; finger < count; ++finger) {
    touches.push_back({100 + finger, {0.25 * static_cast<double>(finger), 0.5}});
  }
  return touches;
}

Touches shifted(Touches touches, double dx, double dy) {
  for (Touch& touch : touches) {
    touch.normalizedPosition.x += dx;
    touch.normalizedPosition.y += dy;
  }
  return touches;
}

class RestingFingersRecognizerTest : public testing::Test {
protected:
  // Lifts everything, then puts the fingers down one after another.
  std::optional<Touches> putDown(std::int64_t count, std::int64_t wanted) {
    m_recognizer.touchesChanged({}, wanted);
    std::optional<Touches> start;
    for (std::int64_t down = 1; down <= count; ++down)
      start = m_recognizer.touchesChanged(fingers(down), wanted);
    return start;
  }

  RestingFingersRecognizer m_recognizer;
};

TEST_F(RestingFingersRecognizerTest, FingersPutDownOneAfterAnotherMayBeginARest) {
  const auto start = putDown(3, 3);
  ASSERT_TRUE(start);
  EXPECT_EQ(start->size(), 3u);
  EXPECT_EQ(m_recognizer.touchCount(), 3);
  EXPECT_EQ(m_recognizer.currentTouches().size(), 3u);
  EXPECT_TRUE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, NothingCountsBeforeTheFingersHaveBeenLiftedOnce) {
  EXPECT_FALSE(m_recognizer.nFingerRestPossible());
  EXPECT_FALSE(m_recognizer.touchesChanged(fingers(3), 3));
  m_recognizer.touchesChanged({}, 3);
  EXPECT_TRUE(m_recognizer.nFingerRestPossible());
  EXPECT_TRUE(m_recognizer.touchesChanged(fingers(3), 3));
}

TEST_F(RestingFingersRecognizerTest, EachRestNeedsAllFingersLiftedFirst) {
  ASSERT_TRUE(putDown(3, 3));
  EXPECT_FALSE(m_recognizer.nFingerRestPossible());
  EXPECT_FALSE(m_recognizer.touchesChanged(fingers(3), 3)) << "a further report of the same touch";
  m_recognizer.touchesChanged(fingers(2), 3);
  EXPECT_FALSE(m_recognizer.nFingerRestPossible());
  EXPECT_FALSE(m_recognizer.touchesChanged(fingers(3), 3));
  EXPECT_TRUE(putDown(3, 3));
}

TEST_F(RestingFingersRecognizerTest, FewerFingersThanWantedKeepTheRestPossible) {
  m_recognizer.touchesChanged({}, 3);
  m_recognizer.touchesChanged(fingers(2), 3);
  m_recognizer.touchesChanged(fingers(1), 3);
  EXPECT_TRUE(m_recognizer.nFingerRestPossible());
  EXPECT_TRUE(m_recognizer.touchesChanged(fingers(3), 3));
}

TEST_F(RestingFingersRecognizerTest, FourFingersOfWhichOneIsLiftedAreNoRestOfThree) {
  m_recognizer.touchesChanged({}, 3);
  m_recognizer.touchesChanged(fingers(4), 3);
  EXPECT_FALSE(m_recognizer.nFingerRestPossible());
  EXPECT_FALSE(m_recognizer.touchesChanged(fingers(3), 3));
}

TEST_F(RestingFingersRecognizerTest, AFourthFingerDuringTheWaitSpoilsTheRestOfThree) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(fingers(4), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, AFourthFingerThatIsLiftedDuringTheWaitSpoilsTheRestAllTheSame) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(fingers(4), 3);
  m_recognizer.touchesChanged(fingers(3), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start)) << "four fingers that become three are no rest of three";
  const auto next = putDown(3, 3);
  ASSERT_TRUE(next);
  EXPECT_TRUE(m_recognizer.isRest(*next));
}

TEST_F(RestingFingersRecognizerTest, FourFingersRestWhereFourAreWanted) {
  const auto start = putDown(4, 4);
  ASSERT_TRUE(start);
  EXPECT_EQ(start->size(), 4u);
  EXPECT_TRUE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, AFingerLiftedDuringTheWaitSpoilsTheRest) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(fingers(2), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
  m_recognizer.touchesChanged({}, 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, AFingerExchangedForAnotherSpoilsTheRest) {
  const auto start = putDown(3, 3);
  Touches exchanged = fingers(3);
  exchanged[1].identity = 999;
  m_recognizer.touchesChanged(exchanged, 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, TouchesAreMatchedByIdentityAndNotByOrder) {
  const auto start = putDown(3, 3);
  Touches reordered = fingers(3);
  std::swap(reordered[0], reordered[2]);
  m_recognizer.touchesChanged(reordered, 3);
  EXPECT_TRUE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, OfTouchesWithOneIdentityTheFirstIsThePartner) {
  const auto start = putDown(3, 3);
  Touches doubled = fingers(3);
  doubled[2] = {doubled[0].identity, {0.9, 0.9}};
  m_recognizer.touchesChanged(doubled, 3);
  EXPECT_FALSE(m_recognizer.isRest(*start)) << "the third finger has no partner";
  Touches all = doubled;
  all[2].identity = start->at(2).identity;
  all[2].normalizedPosition = start->at(2).normalizedPosition;
  m_recognizer.touchesChanged(all, 3);
  EXPECT_TRUE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, AMeanMovementBelowTwoAndAHalfPercentIsARest) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(shifted(fingers(3), 0.0249, 0), 3);
  EXPECT_TRUE(m_recognizer.isRest(*start));
  m_recognizer.touchesChanged(shifted(fingers(3), 0, -0.0249), 3);
  EXPECT_TRUE(m_recognizer.isRest(*start));
  m_recognizer.touchesChanged(shifted(fingers(3), 0.025, 0), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
  m_recognizer.touchesChanged(shifted(fingers(3), 0, 0.3), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, TheMovementIsTheStraightLine) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(shifted(fingers(3), 0.015, 0.0195), 3); // 0.0246
  EXPECT_TRUE(m_recognizer.isRest(*start));
  m_recognizer.touchesChanged(shifted(fingers(3), 0.015, 0.0205), 3); // 0.0254
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, TheMovementIsTheMeanOfAllFingers) {
  const auto start = putDown(3, 3);
  Touches one = fingers(3);
  one[0].normalizedPosition.y += 0.0747; // a third of it is 0.0249
  m_recognizer.touchesChanged(one, 3);
  EXPECT_TRUE(m_recognizer.isRest(*start));
  one[0].normalizedPosition.y += 0.0006;
  m_recognizer.touchesChanged(one, 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, PositionsThatAreNoNumbersAreNoRest) {
  const auto start = putDown(3, 3);
  m_recognizer.touchesChanged(shifted(fingers(3), std::numeric_limits<double>::quiet_NaN(), 0), 3);
  EXPECT_FALSE(m_recognizer.isRest(*start));
}

TEST_F(RestingFingersRecognizerTest, APinchForgetsTheTouchesAndSpoilsTheRest) {
  const auto start = putDown(3, 3);
  m_recognizer.magnified();
  EXPECT_EQ(m_recognizer.touchCount(), 0);
  EXPECT_TRUE(m_recognizer.currentTouches().empty());
  EXPECT_FALSE(m_recognizer.isRest(*start));
  EXPECT_FALSE(m_recognizer.nFingerRestPossible());
}

TEST_F(RestingFingersRecognizerTest, NoTouchesAtAllAreNoRest) {
  EXPECT_FALSE(m_recognizer.isRest({}));
}

} // namespace
} // namespace orbel
