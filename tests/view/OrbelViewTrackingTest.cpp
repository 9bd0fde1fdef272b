#include "tests/view/OrbelViewFixture.h"

namespace orbel {
namespace {

class OrbelViewTrackingTest : public OrbelViewFixture {
protected:
  OrbelViewTrackingTest() { view->setMagnifyItemsOnMouseOver(true); }
};

TEST_F(OrbelViewTrackingTest, EightItemsAreMagnifiedAsTheTableSays) {
  fill({8});
  movePointer(onCircle(degrees(20)));
  const double expectedSizes[] = {4.1416, 3.3562, 2.5708, 1.7854, 1.0, 1.7854, 2.5708, 3.3562};
  const double expectedSides[] = {100.0, 88.7, 68.0, 47.2, 26.4, 47.2, 68.0, 88.7};
  double sum = 0;
  for (std::int64_t position = 0; position < 8; ++position) {
    EXPECT_NEAR(view->relativeSize({0, position}), expectedSizes[position], 5e-5) << position;
    EXPECT_NEAR(item(0, position).frame().size.width, expectedSides[position], 0.05) << position;
    sum += view->relativeSize({0, position});
  }
  EXPECT_NEAR(sum, 20.5664, 5e-5);
  EXPECT_NEAR(view->startArc(), -0.2399, 1e-4);
}

class MagnificationTest : public OrbelViewTrackingTest, public testing::WithParamInterface<int> {};

TEST_P(MagnificationTest, SizesFallLinearlyWithTheAngleBetweenTheSlots) {
  const int count = GetParam();
  fill({count});
  for (int slot = 0; slot < count; ++slot) {
    movePointer(onCircle((slot + 0.5) * 2 * kPi / count));
    ASSERT_EQ(view->lastMouseOverItemIndex(), slot);
    for (int position = 0; position < count; ++position) {
      const int apart = std::min(std::abs(slot - position), count - std::abs(slot - position));
      EXPECT_NEAR(view->relativeSize({0, position}), kPi + 1 - apart * 2 * kPi / count, 1e-9);
    }
  }
}

TEST_P(MagnificationTest, TheHoveredItemsCentreLiesOnItsEvenSlotsCentre) {
  const int count = GetParam();
  fill({count});
  for (int slot = 0; slot < count; ++slot) {
    movePointer(onCircle((slot + 0.3) * 2 * kPi / count));
    const double slotCenter = (slot + 0.5) * 2 * kPi / count;
    EXPECT_NEAR(std::remainder(directionOf(item(0, slot)) - slotCenter, 2 * kPi), 0, 1e-9);
    EXPECT_NEAR(view->startArc() + view->centerArcForItem(item(0, slot)), slotCenter, 1e-9);
  }
}

INSTANTIATE_TEST_SUITE_P(Counts, MagnificationTest, testing::Range(1, 41));

TEST_F(OrbelViewTrackingTest, SlotsCountAcrossSections) {
  fill({3, 2});
  movePointer(onCircle(3.5 * 2 * kPi / 5));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 3);
  EXPECT_NEAR(view->relativeSize({1, 0}), kPi + 1, 1e-12);
  EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1 - 2 * 2 * kPi / 5, 1e-12);
  EXPECT_NEAR(directionOf(item(1, 0)), 3.5 * 2 * kPi / 5, 1e-9);
}

TEST_F(OrbelViewTrackingTest, GrowingItemsCannotShiftTheChoiceUnderAStillPointer) {
  fill({8});
  // Right at the edge of slot 1, in what the grown item 0 would cover.
  const double angle = 2 * kPi / 8 + 0.01;
  movePointer(onCircle(0.1));
  movePointer(onCircle(angle));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 1);
  movePointer(onCircle(angle));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 1);
}

TEST_F(OrbelViewTrackingTest, TheDirectionsChooseTheirSlots) {
  for (const int count : {1, 2, 3, 7, 8, 13, 40}) {
    fill({count});
    movePointer(at(0, 150));
    EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
    movePointer(at(kPi / 2, 150));
    EXPECT_EQ(view->lastMouseOverItemIndex(), count / 4);
    movePointer({200, 50});
    EXPECT_EQ(view->lastMouseOverItemIndex(), count / 2);
    movePointer({199.999, 350});
    EXPECT_EQ(view->lastMouseOverItemIndex(), count - 1);
  }
}

TEST_F(OrbelViewTrackingTest, ASingleItemIsLargestWhereverThePointerIsAndNothingTurns) {
  fill({1});
  for (const double angle : {0.1, 1.6, 3.2, 6.2}) {
    movePointer(onCircle(angle));
    EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1, 1e-12);
    EXPECT_NEAR(view->startArc(), 0, 1e-12);
  }
}

TEST_F(OrbelViewTrackingTest, WithinTheDeadZoneTheCircleRestsAndTitlesStayOpen) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  ASSERT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
  movePointer({200, 209.9});
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  EXPECT_EQ(view->startArc(), 0);
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 8, 1e-12);
  EXPECT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
}

TEST_F(OrbelViewTrackingTest, AtTenPointsTheDeadZoneIsLeft) {
  fill({8});
  movePointer({200, 210});
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  movePointer({210, 200});
  EXPECT_EQ(view->lastMouseOverItemIndex(), 2);
}

TEST_F(OrbelViewTrackingTest, AnUnknownPointerRestsTheCircle) {
  fill({8});
  movePointer(onCircle(1));
  host.pointer.reset();
  view->mouseMoved({});
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  EXPECT_EQ(view->startArc(), 0);
}

TEST_F(OrbelViewTrackingTest, ThePointersPlaceIsReadFromTheWindowAndNotFromTheEvent) {
  fill({8});
  placePointer(onCircle(3 * kPi / 8));
  view->mouseMoved({inWindow(onCircle(kPi))});
  EXPECT_EQ(view->lastMouseOverItemIndex(), 1);
}

TEST_F(OrbelViewTrackingTest, WithinOneSlotNothingIsLaidOutAgain) {
  fill({8});
  movePointer(onCircle(0.2));
  view->setRelativeSize(7, {0, 3});
  const Rect frame = item(0, 3).frame();
  movePointer(onCircle(0.3));
  EXPECT_EQ(view->relativeSize({0, 3}), 7);
  EXPECT_EQ(item(0, 3).frame(), frame);
}

TEST_F(OrbelViewTrackingTest, WithinOneSlotTitlesFollowTheItemsFrames) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
  movePointer(at(kPi / 8, 30));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewTrackingTest, TheSourceIsAskedAtEveryMoveInsideAFrameAndNeverOutside) {
  view->setMagnifyItemsOnMouseOver(false);
  fill({8});
  movePointer(onCircle(kPi / 8));
  movePointer(onCircle(kPi / 8 + 0.01));
  movePointer(at(kPi / 8, 20));
  EXPECT_EQ(controller.titleQuestions, (std::vector<ItemPath>{{0, 0}, {0, 0}}));
}

TEST_F(OrbelViewTrackingTest, ARefusedTitleIsClosed) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  ASSERT_FALSE(titlesShown().empty());
  controller.displaysTitle = [](ItemPath) { return false; };
  movePointer(onCircle(kPi / 8 + 0.01));
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewTrackingTest, WithoutASourceNoTitleShows) {
  fill({8});
  view->setDataSource(nullptr);
  movePointer(onCircle(kPi / 8));
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewTrackingTest, WhereFramesOverlapEveryItemIsAsked) {
  fill({2});
  item(0, 0).setFrame({300, 300, 50, 50});
  item(0, 1).setFrame({310, 310, 50, 50});
  movePointer({320, 320});
  EXPECT_EQ(controller.titleQuestions, (std::vector<ItemPath>{{0, 0}, {0, 1}}));
  EXPECT_EQ(titlesShown(), (std::vector<std::string>{"0-0", "0-1"}));
}

TEST_F(OrbelViewTrackingTest, TheTitleShowsBelowTheItemOnTheScreen) {
  view->setMagnifyItemsOnMouseOver(false);
  fill({8});
  movePointer(onCircle(kPi / 8));
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->anchor, item(0, 0).frame().offsetBy(1020, 730));
}

TEST_F(OrbelViewTrackingTest, WithoutTheUsersWishNothingIsMagnifiedAndTheSlotIsStillTracked) {
  view->setMagnifyItemsOnMouseOver(false);
  fill({8});
  for (const double angle : {0.1, 1.0, 3.0, 6.0}) {
    movePointer(onCircle(angle));
    EXPECT_EQ(view->lastMouseOverItemIndex(), static_cast<std::int64_t>(angle / (2 * kPi) * 8));
    EXPECT_EQ(sizes(), std::vector<double>(8, 1));
    EXPECT_NEAR(view->startArc(), 0, 1e-12);
  }
}

TEST_F(OrbelViewTrackingTest, WhileTheButtonIsDownNothingIsMagnified) {
  fill({8});
  movePointer(onCircle(1));
  press(at(1, 30)); // beside the items
  EXPECT_FALSE(view->zoomingEnabled());
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  movePointer(onCircle(3));
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  EXPECT_NEAR(view->startArc(), 0, 1e-12);
  release();
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_NEAR(view->relativeSize({0, 3}), kPi + 1, 1e-12);
}

TEST_F(OrbelViewTrackingTest, LeavingTheViewRestsTheCircleAndClosesTheTitles) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  ASSERT_FALSE(titlesShown().empty());
  movePointer({401, 200});
  EXPECT_TRUE(titlesShown().empty());
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  EXPECT_EQ(view->startArc(), 0);
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 8, 1e-12);
  EXPECT_TRUE(tree.isAnimating());
}

TEST_F(OrbelViewTrackingTest, LeavingTheWindowRestsTheCircleAlsoWhereThePointerIsUnknown) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  host.pointer.reset();
  tree.pointerExited({});
  EXPECT_TRUE(titlesShown().empty());
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
}

TEST_F(OrbelViewTrackingTest, AnExitReportedWhileThePointerIsInsideChangesNothing) {
  fill({8});
  movePointer(onCircle(kPi / 8));
  const auto magnified = sizes();
  const double startArc = view->startArc();
  tree.pointerExited({{-1000, -1000}});
  EXPECT_EQ(sizes(), magnified);
  EXPECT_EQ(view->startArc(), startArc);
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  EXPECT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
}

TEST_F(OrbelViewTrackingTest, SelectingMarksExactlyThatItem) {
  fill({2, 2});
  view->selectItem(&item(1, 0));
  EXPECT_EQ(selectedTitles(), std::vector<std::string>{"1-0"});
  view->selectItem(&item(0, 1));
  EXPECT_EQ(selectedTitles(), std::vector<std::string>{"0-1"});
  view->selectItem(nullptr);
  EXPECT_TRUE(selectedTitles().empty());
}

TEST_F(OrbelViewTrackingTest, AllTitlesCanBeClosedAtOnce) {
  fill({2, 2});
  view->sections().forEach([](OrbelItem& shown, ItemPath) { shown.showTitle(); });
  ASSERT_EQ(titlesShown().size(), 4u);
  view->closeAllTitles();
  EXPECT_TRUE(titlesShown().empty());
}

} // namespace
} // namespace orbel
