#include "backends/qt/canvas/BubbleLayout.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

const Rect kScreen(0, 0, 1000, 800);
const Size kBody{120, 26};

TEST(BubbleLayoutTest, TheBubbleHangsBelowItsAnchorWithTheArrowAtItsMiddle) {
  const auto layout = BubbleLayout::beside({400, 300, 60, 60}, kBody, kScreen);
  EXPECT_TRUE(layout.pointsUp);
  EXPECT_EQ(layout.body.maxY() + BubbleLayout::kArrowHeight, 300);
  EXPECT_EQ(layout.body.midX(), 430);
  EXPECT_EQ(layout.arrow, 60);
}

TEST(BubbleLayoutTest, NearTheScreensLowerEdgeItStandsAbove) {
  const auto layout = BubbleLayout::beside({400, 20, 60, 60}, kBody, kScreen);
  EXPECT_FALSE(layout.pointsUp);
  EXPECT_EQ(layout.body.minY() - BubbleLayout::kArrowHeight, 80);
}

TEST(BubbleLayoutTest, WhereThereIsNoRoomAboveEitherItStaysBelow) {
  const auto layout = BubbleLayout::beside({400, 10, 60, 780}, kBody, kScreen);
  EXPECT_TRUE(layout.pointsUp);
}

TEST(BubbleLayoutTest, AtTheSidesTheBodyStaysOnTheScreenAndTheArrowAtTheAnchor) {
  const auto left = BubbleLayout::beside({10, 300, 60, 60}, kBody, kScreen);
  EXPECT_GE(left.body.minX(), 0);
  EXPECT_EQ(left.body.minX() + left.arrow, 40);
  const auto right = BubbleLayout::beside({930, 300, 60, 60}, kBody, kScreen);
  EXPECT_LE(right.body.maxX(), 1000);
  EXPECT_EQ(right.body.minX() + right.arrow, 960);
}

TEST(BubbleLayoutTest, TheArrowNeverLeavesTheStraightPartOfTheBody) {
  const auto layout = BubbleLayout::beside({-60, 300, 60, 60}, kBody, kScreen);
  EXPECT_GE(layout.arrow, BubbleLayout::kCornerRadius + BubbleLayout::kArrowWidth / 2);
  const auto other = BubbleLayout::beside({1000, 300, 60, 60}, kBody, kScreen);
  EXPECT_LE(other.arrow, kBody.width - BubbleLayout::kCornerRadius - BubbleLayout::kArrowWidth / 2);
}

TEST(BubbleLayoutTest, ABodyWiderThanTheScreenStartsAtItsLeftEdge) {
  const auto layout = BubbleLayout::beside({400, 300, 60, 60}, {1200, 26}, kScreen);
  EXPECT_GE(layout.body.minX(), 0);
  EXPECT_LT(layout.body.minX(), 10);
}

TEST(BubbleLayoutTest, ItKeepsToTheScreenThatItIsGiven) {
  const auto layout = BubbleLayout::beside({1010, 300, 60, 60}, kBody, {1000, 0, 1000, 800});
  EXPECT_GE(layout.body.minX(), 1000);
}

} // namespace
} // namespace orbel::qt
