#include "tests/view/OrbelViewFixture.h"

#include "scene/Animation.h"

namespace orbel {
namespace {

class OrbelViewLayoutTest : public OrbelViewFixture {};

TEST_F(OrbelViewLayoutTest, StartsEmptyAtRestAndEnabled) {
  const OrbelView fresh(Rect(0, 0, 400, 400));
  EXPECT_EQ(fresh.dataSource(), nullptr);
  EXPECT_EQ(fresh.delegate(), nullptr);
  EXPECT_FALSE(fresh.magnifyItemsOnMouseOver());
  EXPECT_TRUE(fresh.enabled());
  EXPECT_EQ(fresh.trackingArea(), Rect(0, 0, 400, 400));
  EXPECT_EQ(fresh.totalNumberOfItems(), 0);
  EXPECT_EQ(fresh.numberOfSections(), 0);
  EXPECT_EQ(fresh.startArc(), 0);
  EXPECT_TRUE(fresh.zoomingEnabled());
  EXPECT_EQ(fresh.lastMouseOverItemIndex(), -1);
  EXPECT_FALSE(fresh.didDrag());
  EXPECT_EQ(fresh.draggedItem(), nullptr);
  EXPECT_EQ(fresh.draggedItemSection(), kNotFound);
  EXPECT_EQ(fresh.draggedItemPosition(), kNotFound);
  EXPECT_EQ(fresh.draggedItemLastPoint(), (Point{0, 0}));
}

TEST_F(OrbelViewLayoutTest, ItemsStandInTheMiddleOfEqualArcsClockwiseFromTwelve) {
  for (int count = 1; count <= 40; ++count) {
    fill({count});
    const double radius = 400 * (count <= 10 ? 0.305 : 0.34);
    EXPECT_DOUBLE_EQ(view->radius(), radius);
    for (int index = 0; index < count; ++index) {
      const double angle = (index + 0.5) * 2 * kPi / count;
      const Rect frame = item(0, index).frame();
      EXPECT_NEAR(frame.midX(), 200 + radius * std::sin(angle), 1e-9) << index << " of " << count;
      EXPECT_NEAR(frame.midY(), 200 + radius * std::cos(angle), 1e-9) << index << " of " << count;
      const double side = std::min(100.0, radius * (2 * kPi / count) / 1.41);
      EXPECT_NEAR(frame.size.width, side, 1e-9);
      EXPECT_NEAR(frame.size.height, side, 1e-9);
    }
  }
}

TEST_F(OrbelViewLayoutTest, TwelveItemsOfNormalSizeAreHalfAHundredPointsWideAndTwoAreCapped) {
  fill({12});
  EXPECT_NEAR(item(0, 0).frame().size.width, 50.5, 0.01);
  fill({2});
  EXPECT_DOUBLE_EQ(item(0, 0).frame().size.width, 100);
}

TEST_F(OrbelViewLayoutTest, ASecondSectionFollowsTheFirstWithoutSpace) {
  fill({3, 2});
  EXPECT_EQ(view->totalNumberOfItems(), 5);
  EXPECT_NEAR(directionOf(item(1, 0)), 3.5 * 2 * kPi / 5, 1e-12);
  EXPECT_NEAR(directionOf(item(1, 1)), 4.5 * 2 * kPi / 5, 1e-12);
}

TEST_F(OrbelViewLayoutTest, TheCentreIsTheMiddleOfTheFrameAndTheRestFollowsTheWidth) {
  view->setFrame({0, 0, 400, 460});
  fill({1});
  EXPECT_NEAR(centerOf(0, 0).x, 200, 1e-9);
  EXPECT_NEAR(centerOf(0, 0).y, 230 - 122, 1e-9) << "a single item stands opposite to twelve o'clock";
}

TEST_F(OrbelViewLayoutTest, AnItemWithoutRelativeSizeGetsNoArc) {
  fill({4});
  view->setRelativeSize(0, {0, 1});
  view->layoutSubviewsAnimated(false);
  EXPECT_EQ(item(0, 1).frame().size.width, 0);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 3, 1e-12);
  EXPECT_NEAR(directionOf(item(0, 2)), kPi, 1e-12);
}

TEST_F(OrbelViewLayoutTest, ARelativeSizeIsStoredUnderItsPathAndReadsZeroWhereNoneWasSet) {
  fill({2});
  EXPECT_EQ(view->relativeSize({0, 1}), 1);
  EXPECT_EQ(view->relativeSize({0, 2}), 0);
  EXPECT_EQ(view->relativeSize({4, 0}), 0);
  view->setRelativeSize(1.5, {4, 0});
  EXPECT_EQ(view->relativeSize({4, 0}), 1.5);
}

TEST_F(OrbelViewLayoutTest, TheArcOfAnItemIsTheShareOfItsRelativeSize) {
  fill({3});
  view->setRelativeSize(2, {0, 1});
  view->layoutSubviewsAnimated(false);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 4, 1e-12);
  EXPECT_NEAR(directionOf(item(0, 1)), kPi, 1e-12);
  EXPECT_NEAR(directionOf(item(0, 2)), 7 * kPi / 4, 1e-12);
}

TEST_F(OrbelViewLayoutTest, TheCentreArcIsMeasuredFromTheStartOfTheCircle) {
  fill({3, 2});
  view->setMagnifyItemsOnMouseOver(true);
  movePointer(onCircle(degrees(100)));
  ASSERT_NE(view->startArc(), 0);
  double sum = 0;
  view->sections().forEach([&](const OrbelItem&, ItemPath path) { sum += view->relativeSize(path); });
  double before = 0;
  view->sections().forEach([&](const OrbelItem& shown, ItemPath path) {
    const double arc = view->relativeSize(path) * 2 * kPi / sum;
    EXPECT_NEAR(view->centerArcForItem(shown), before + arc / 2, 1e-12);
    before += arc;
  });
}

TEST_F(OrbelViewLayoutTest, TheFirstOfEqualItemsHasHalfASlotAsCentreArc) {
  for (int count = 1; count <= 40; ++count) {
    fill({count});
    EXPECT_NEAR(view->centerArcForItem(item(0, 0)), kPi / count, 1e-12);
  }
}

TEST_F(OrbelViewLayoutTest, AnItemInNoSectionHasTheCentreArcZero) {
  fill({3});
  EXPECT_EQ(view->centerArcForItem(OrbelItem(Rect())), 0);
}

TEST_F(OrbelViewLayoutTest, AnAnimatedLayoutMovesThePaintedItemsOverTheAnimationsDuration) {
  fill({4});
  const Rect before = item(0, 0).frame();
  view->setRelativeSize(3, {0, 0});
  view->layoutSubviews();
  const Rect after = item(0, 0).frame();
  EXPECT_NE(before, after);
  EXPECT_EQ(item(0, 0).presentedFrame(), before);
  platform.runLoop.advance(kAnimationDuration / 2);
  EXPECT_NE(item(0, 0).presentedFrame(), before);
  EXPECT_NE(item(0, 0).presentedFrame(), after);
  platform.runLoop.advance(kAnimationDuration);
  EXPECT_EQ(item(0, 0).presentedFrame(), after);
  EXPECT_FALSE(tree.isAnimating());
}

TEST_F(OrbelViewLayoutTest, ALayoutThatIsNotAnimatedHoldsAtOnce) {
  fill({4});
  view->setRelativeSize(3, {0, 0});
  view->layoutSubviewsAnimated(false);
  EXPECT_EQ(item(0, 0).presentedFrame(), item(0, 0).frame());
}

TEST_F(OrbelViewLayoutTest, ResettingTurnsTheCircleBackAtOnceAndKeepsTheSizes) {
  fill({8});
  platform.runLoop.advance(1);
  view->setMagnifyItemsOnMouseOver(true);
  movePointer(onCircle(0.1));
  const auto magnified = sizes();
  ASSERT_NE(view->startArc(), 0);
  view->resetLayout();
  EXPECT_EQ(view->startArc(), 0);
  EXPECT_EQ(sizes(), magnified);
  EXPECT_NEAR(directionOf(item(0, 0)), view->centerArcForItem(item(0, 0)), 1e-12);
  EXPECT_EQ(item(0, 0).presentedFrame(), item(0, 0).frame());
}

TEST_F(OrbelViewLayoutTest, EveryChangeOfTheFrameLaysOutWithAnimation) {
  fill({4});
  const Rect before = item(0, 0).frame();
  view->setFrame({20, 30, 300, 300});
  EXPECT_NEAR(item(0, 0).frame().midX(), 150 + 300 * 0.305 * std::sin(kPi / 4), 1e-9);
  EXPECT_DOUBLE_EQ(item(0, 0).frame().size.width, 75);
  EXPECT_EQ(item(0, 0).presentedFrame(), before);
  EXPECT_TRUE(tree.isAnimating());
  EXPECT_EQ(view->trackingArea(), Rect(0, 0, 300, 300));
}

TEST_F(OrbelViewLayoutTest, TakesEveryPointItselfWhileEnabledAndNoneWhileNot) {
  fill({4});
  const Point points[] = {inWindow(centerOf(0, 0)), {0, 0}, {-50, 9000}, {220, 230}};
  for (const Point point : points)
    EXPECT_EQ(view->hitTest(point), view.get());
  view->setEnabled(false);
  for (const Point point : points)
    EXPECT_EQ(view->hitTest(point), nullptr);
}

TEST_F(OrbelViewLayoutTest, TracksThePointerOverItsBoundsOnlyWhileEnabled) {
  view->setEnabled(false);
  EXPECT_FALSE(view->enabled());
  EXPECT_EQ(view->trackingArea(), std::nullopt);
  view->setFrame({20, 30, 300, 300});
  EXPECT_EQ(view->trackingArea(), std::nullopt);
  view->setEnabled(true);
  EXPECT_EQ(view->trackingArea(), Rect(0, 0, 300, 300));
}

TEST_F(OrbelViewLayoutTest, WhileDisabledHearsOfNoPointer) {
  fill({4});
  view->setEnabled(false);
  movePointer(onCircle(1));
  press(onCircle(1));
  release();
  rightClick(onCircle(1));
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
  EXPECT_TRUE(controller.titleQuestions.empty());
  EXPECT_TRUE(controller.reports.empty());
  view->setEnabled(true);
  movePointer(onCircle(1.1));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
}

TEST_F(OrbelViewLayoutTest, AllRelativeSizesAtZeroDoNoHarm) {
  fill({3});
  for (std::int64_t position = 0; position < 3; ++position)
    view->setRelativeSize(0, {0, position});
  view->layoutSubviewsAnimated(false);
  EXPECT_TRUE(std::isnan(item(0, 0).frame().size.width));
  view->reloadData();
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 3, 1e-12);
}

} // namespace
} // namespace orbel
