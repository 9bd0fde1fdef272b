#include "scene/Animation.h"

#include <gtest/gtest.h>

#include <limits>

namespace orbel {
namespace {

TEST(AnimationTest, TheCurveIsAtRestAtBothEndsAndSteepestInTheMiddle) {
  EXPECT_EQ(easeInEaseOut(0), 0);
  EXPECT_EQ(easeInEaseOut(1), 1);
  EXPECT_DOUBLE_EQ(easeInEaseOut(0.5), 0.5);
  EXPECT_LT(easeInEaseOut(0.1), 0.05);
  EXPECT_GT(easeInEaseOut(0.9), 0.95);
}

TEST(AnimationTest, ProgressOutsideItsRangeIsCut) {
  EXPECT_EQ(easeInEaseOut(-1), 0);
  EXPECT_EQ(easeInEaseOut(2), 1);
  EXPECT_EQ(easeInEaseOut(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(AnimationTest, ImmediateGroupsNest) {
  EXPECT_FALSE(ImmediateAnimationGroup::isOpen());
  {
    const ImmediateAnimationGroup outer;
    { const ImmediateAnimationGroup inner; }
    EXPECT_TRUE(ImmediateAnimationGroup::isOpen());
  }
  EXPECT_FALSE(ImmediateAnimationGroup::isOpen());
}

} // namespace
} // namespace orbel
