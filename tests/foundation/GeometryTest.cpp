#include "foundation/Geometry.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

TEST(Rect, KnowsItsEdgesAndMiddle) {
  const Rect rect(10, 20, 30, 40);
  EXPECT_EQ(rect.minX(), 10);
  EXPECT_EQ(rect.minY(), 20);
  EXPECT_EQ(rect.maxX(), 40);
  EXPECT_EQ(rect.maxY(), 60);
  EXPECT_EQ(rect.center(), (Point{25, 40}));
}

TEST(Rect, HoldsItsLeftAndBottomEdgesButNotTheOthers) {
  const Rect rect(0, 0, 10, 10);
  EXPECT_TRUE(rect.contains({0, 0}));
  EXPECT_TRUE(rect.contains({9.999, 9.999}));
  EXPECT_FALSE(rect.contains({10, 5}));
  EXPECT_FALSE(rect.contains({5, 10}));
  EXPECT_FALSE(rect.contains({-0.001, 5}));
}

TEST(Rect, IsEmptyWithoutWidthOrHeight) {
  EXPECT_TRUE(Rect().isEmpty());
  EXPECT_TRUE(Rect(0, 0, 5, 0).isEmpty());
  EXPECT_TRUE(Rect(0, 0, -5, 5).isEmpty());
  EXPECT_FALSE(Rect(0, 0, 0.1, 0.1).isEmpty());
  EXPECT_FALSE(Rect(3, 3, 0, 0).contains({3, 3}));
}

TEST(Rect, ShrinksOnEverySideByAnInset) {
  EXPECT_EQ(Rect(0, 0, 320, 320).insetBy(1, 2), Rect(1, 2, 318, 316));
  EXPECT_EQ(Rect(0, 0, 10, 10).insetBy(-1, -1), Rect(-1, -1, 12, 12));
}

TEST(Rect, MovesByAnOffset) {
  EXPECT_EQ(Rect(1, 2, 3, 4).offsetBy(10, -10), Rect(11, -8, 3, 4));
}

TEST(Rect, UnitesIntoTheSmallestRectangleAround) {
  EXPECT_EQ(Rect(0, 0, 1, 1).unitedWith({5, 6, 2, 2}), Rect(0, 0, 7, 8));
  EXPECT_EQ(Rect(0, 0, 9, 9).unitedWith({1, 1, 2, 2}), Rect(0, 0, 9, 9));
}

TEST(Rect, AnEmptyRectangleAddsNothingToAUnion) {
  EXPECT_EQ(Rect(3, 3, 1, 1).unitedWith({}), Rect(3, 3, 1, 1));
  EXPECT_EQ(Rect().unitedWith({3, 3, 1, 1}), Rect(3, 3, 1, 1));
}

TEST(Rect, IntersectsOnlyWithAnArea) {
  EXPECT_TRUE(Rect(0, 0, 10, 10).intersects({9, 9, 10, 10}));
  EXPECT_FALSE(Rect(0, 0, 10, 10).intersects({10, 0, 10, 10})); // edges that touch
  EXPECT_FALSE(Rect(0, 0, 10, 10).intersects({0, 11, 10, 10}));
  EXPECT_FALSE(Rect(0, 0, 10, 10).intersects({5, 5, 0, 0}));
}

TEST(Rect, IsCentredAtAPoint) {
  EXPECT_EQ(Rect::centeredAt({5, 6}, 4), Rect(3, 4, 4, 4));
}

} // namespace
} // namespace orbel
