#include "view/RadialGeometry.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orbel {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr Size kMenu{400, 400};

TEST(RadialGeometryTest, TheRadiusSwitchesToTheWiderCircleAtTheEleventhItem) {
  EXPECT_DOUBLE_EQ(RadialGeometry(kMenu, 0).radius(), 122);
  EXPECT_DOUBLE_EQ(RadialGeometry(kMenu, 10).radius(), 122);
  EXPECT_DOUBLE_EQ(RadialGeometry(kMenu, 11).radius(), 136);
}

TEST(RadialGeometryTest, OnlyTheCentreDependsOnTheHeight) {
  const RadialGeometry tall({400, 1000}, 4);
  EXPECT_EQ(tall.center(), (Point{200, 500}));
  EXPECT_DOUBLE_EQ(tall.radius(), 122);
  EXPECT_DOUBLE_EQ(tall.largestSide(), 100);
}

TEST(RadialGeometryTest, AnglesGrowClockwiseFromTwelveOClock) {
  const RadialGeometry circle(kMenu, 8);
  const struct {
    double angle;
    Point direction;
  } directions[] = {{0, {0, 1}}, {kPi / 2, {1, 0}}, {kPi, {0, -1}}, {3 * kPi / 2, {-1, 0}}};
  for (const auto& [angle, direction] : directions) {
    const Point point = circle.pointAt(angle);
    EXPECT_NEAR(point.x, 200 + 122 * direction.x, 1e-9) << angle;
    EXPECT_NEAR(point.y, 200 + 122 * direction.y, 1e-9) << angle;
    const Polar polar = circle.polar({200 + 50 * direction.x, 200 + 50 * direction.y});
    EXPECT_NEAR(polar.angle, angle, 1e-9);
    EXPECT_NEAR(polar.distance, 50, 1e-9);
  }
}

TEST(RadialGeometryTest, AnglesLeftOfTwelveOClockAreCountedFromZeroUp) {
  const double angle = RadialGeometry(kMenu, 8).polar({199, 300}).angle;
  EXPECT_GT(angle, 3 * kPi / 2);
  EXPECT_LT(angle, kFullTurn);
}

TEST(RadialGeometryTest, TheSideFollowsTheArcUpToAQuarterOfTheWidth) {
  EXPECT_NEAR(RadialGeometry(kMenu, 12).side(kPi / 6), 50.5, 0.01);
  EXPECT_DOUBLE_EQ(RadialGeometry(kMenu, 12).side(kPi / 6), 136 * (kPi / 6) / 1.41);
  EXPECT_NEAR(kPi * 122 / 1.41, 271.8, 0.05);
  EXPECT_DOUBLE_EQ(RadialGeometry(kMenu, 2).side(kPi), 100);
}

TEST(RadialGeometryTest, TheFrameIsTheSquareCentredAtTheAngleOnTheCircle) {
  const Rect frame = RadialGeometry(kMenu, 12).frame(kPi / 2, kPi / 6);
  const double side = 136 * (kPi / 6) / 1.41;
  EXPECT_NEAR(frame.midX(), 336, 1e-9);
  EXPECT_NEAR(frame.midY(), 200, 1e-9);
  EXPECT_DOUBLE_EQ(frame.size.width, side);
  EXPECT_DOUBLE_EQ(frame.size.height, side);
}

class SlotsTest : public testing::TestWithParam<int> {};

TEST_P(SlotsTest, TheFourDirectionsFallIntoTheirSlots) {
  const int count = GetParam();
  const RadialGeometry circle(kMenu, count);
  const auto slotTowards = [&](double dx, double dy) {
    return circle.slotAt(circle.polar({200 + dx, 200 + dy}).angle);
  };
  EXPECT_EQ(slotTowards(0, 50), 0);
  EXPECT_EQ(slotTowards(50, 0), count / 4);
  EXPECT_EQ(slotTowards(0, -50), count / 2);
  EXPECT_EQ(slotTowards(-1e-6, 50), count - 1);
}

TEST_P(SlotsTest, AHairLeftOfStraightUpIsTheLastSlotAndNotOneMore) {
  const RadialGeometry aroundOrigin({0, 0}, GetParam());
  const double angle = aroundOrigin.polar({-1e-15, 50}).angle;
  ASSERT_EQ(angle, kFullTurn) << "rounded up when it was brought above zero";
  EXPECT_EQ(aroundOrigin.slotAt(angle), GetParam() - 1);
}

TEST_P(SlotsTest, EverySlotSpansItsShareOfTheTurnAroundItsCentre) {
  const int count = GetParam();
  const RadialGeometry circle(kMenu, count);
  for (int slot = 0; slot < count; ++slot) {
    EXPECT_NEAR(circle.slotCenter(slot), (slot + 0.5) * kFullTurn / count, 1e-12);
    EXPECT_EQ(circle.slotAt(circle.slotCenter(slot)), slot);
    EXPECT_EQ(circle.slotAt(slot * kFullTurn / count + 1e-9), slot);
    EXPECT_EQ(circle.slotAt((slot + 1) * kFullTurn / count - 1e-9), slot);
  }
}

TEST_P(SlotsTest, TheAngleBetweenSlotsIsTheAngleBetweenTheirCentresTheShortWayRound) {
  const int count = GetParam();
  const RadialGeometry circle(kMenu, count);
  for (int first = 0; first < count; ++first) {
    for (int second = 0; second < count; ++second) {
      const double cosine = std::cos(circle.slotCenter(first) - circle.slotCenter(second));
      EXPECT_NEAR(std::cos(circle.angleBetweenSlots(first, second)), cosine, 1e-12);
      EXPECT_GE(circle.angleBetweenSlots(first, second), 0);
      EXPECT_LE(circle.angleBetweenSlots(first, second), kPi + 1e-12);
      EXPECT_EQ(circle.angleBetweenSlots(first, second), circle.angleBetweenSlots(second, first));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, SlotsTest, testing::Range(1, 41));

TEST(RadialGeometryTest, WithoutItemsEveryAngleIsSlotZero) {
  EXPECT_EQ(RadialGeometry(kMenu, 0).slotAt(3), 0);
}

} // namespace
} // namespace orbel
