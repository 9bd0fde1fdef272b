#include "tests/view/OrbelViewFixture.h"

namespace orbel {
namespace {

class OrbelViewReorderingTest : public OrbelViewFixture {
protected:
  void drag(double angle) { movePointer(onCircle(angle)); }
};

TEST_F(OrbelViewReorderingTest, TheDraggedItemSlidesAlongTheCircleAtOnceAndKeepsItsSize) {
  fill({6});
  press(centerOf(0, 0));
  const auto dragged = view->draggedItem();
  const Size size = dragged->frame().size;
  for (const double angle : {0.1, 1.0, 2.5, 4.0, 6.2}) {
    for (const double distance : {15.0, 122.0, 190.0}) {
      movePointer(at(angle, distance));
      EXPECT_NEAR(dragged->frame().midX(), 200 + 122 * std::sin(angle), 1e-9);
      EXPECT_NEAR(dragged->frame().midY(), 200 + 122 * std::cos(angle), 1e-9);
      EXPECT_EQ(dragged->frame().size, size);
      EXPECT_EQ(dragged->presentedFrame(), dragged->frame());
      EXPECT_NEAR(view->draggedItemLastPoint().x, at(angle, distance).x, 1e-9);
      EXPECT_NEAR(view->draggedItemLastPoint().y, at(angle, distance).y, 1e-9);
    }
  }
}

// Five items, (0, 1) dragged: four arcs of 90 degrees, which the first change of slot turns by 36 -
// 45 degrees.
struct Step {
  double degrees;
  ItemPath gap;
  const char* question; // to the delegate, which refuses
};
const ItemPath kNoGap;

TEST_F(OrbelViewReorderingTest, AWholeTurnAroundTheCircleOpensGapsAndAsksAsTheTableSays) {
  fill({5});
  press(centerOf(0, 1));
  const Step walk[] = {
      {5, {0, 0}, ""},      // first quarter of the first item
      {30, {0, 0}, "0-0"},  // its middle: refused, the gap stays
      {58, {0, 0}, "0-0"},  //
      {59, {0, 1}, ""},     // its last quarter
      {80, {0, 1}, ""},     //
      {82, {0, 1}, ""},     // first quarter of the next
      {120, {0, 1}, "0-2"}, // the item that is (0, 2) with the dragged one in
      {149, {0, 2}, ""},    //
      {180, {0, 2}, ""},    //
      {220, {0, 2}, "0-3"}, //
      {250, {0, 3}, ""},    //
      {270, {0, 3}, ""},    //
      {300, {0, 3}, "0-4"}, //
      {340, {0, 4}, ""},    // behind the last
      {350, {0, 4}, ""},    //
      {355, {0, 4}, ""},    // past the last arc: nothing changes
      {3, {0, 0}, ""},      // and round again
  };
  for (const auto& [angle, expectedGap, question] : walk) {
    drag(degrees(angle));
    EXPECT_EQ(gap(), expectedGap) << angle;
    const Reports asked = *question ? Reports{std::string("can drop 0-1 on ") + question} : Reports{};
    EXPECT_EQ(controller.takeReports(), asked) << angle;
    EXPECT_NEAR(view->startArc(), degrees(36 - 45), 1e-12) << angle;
  }
}

TEST_F(OrbelViewReorderingTest, AWholeTurnOverAcceptingItemsSelectsThemAndClosesTheGap) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  const struct {
    double degrees;
    ItemPath gap;
    std::vector<std::string> selected;
  } walk[] = {
      {5, {0, 0}, {}},   {30, kNoGap, {"0-0"}},  {70, {0, 1}, {}},  {120, kNoGap, {"0-2"}},
      {160, {0, 2}, {}}, {220, kNoGap, {"0-3"}}, {250, {0, 3}, {}}, {300, kNoGap, {"0-4"}},
      {340, {0, 4}, {}}, {355, {0, 4}, {}},
  };
  for (const auto& [angle, expectedGap, selected] : walk) {
    drag(degrees(angle));
    EXPECT_EQ(gap(), expectedGap) << angle;
    EXPECT_EQ(selectedTitles(), selected) << angle;
  }
}

TEST_F(OrbelViewReorderingTest, TheCircleTurnsALittleAsSoonAsTheSlotChanges) {
  for (const int count : {2, 5, 8, 12}) {
    fill({count});
    movePointer(centerOf(0, 1));
    press(centerOf(0, 1));
    drag(directionOf(*view->draggedItem()) + 0.01);
    EXPECT_EQ(view->startArc(), 0) << "still in the slot of the press";
    drag(directionOf(*view->draggedItem()) + 2 * kPi / count);
    EXPECT_NEAR(view->startArc(), kPi / count - kPi / (count - 1), 1e-12) << count;
    release();
  }
}

TEST_F(OrbelViewReorderingTest, TheGapLeavesOneNormalSlotFreeInFrontOfItsItem) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(90));
  ASSERT_EQ(gap(), (ItemPath{0, 1}));
  const double turned = view->startArc();
  const double slots[] = {0.5, 2.5, 3.5, 4.5};
  for (std::int64_t position = 0; position < 4; ++position) {
    const double expected = slots[position] * 2 * kPi / 5 + turned;
    EXPECT_NEAR(std::remainder(directionOf(item(0, position)) - expected, 2 * kPi), 0, 1e-9) << position;
    EXPECT_NEAR(item(0, position).frame().size.width, 100, 1e-9) << "108 before the cap";
  }
}

TEST_F(OrbelViewReorderingTest, AGapBehindTheLastItemIsFreeSpaceAtTheEndOfTheCircle) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(340));
  ASSERT_EQ(gap(), (ItemPath{0, 4}));
  for (std::int64_t position = 0; position < 4; ++position) {
    const double expected = (static_cast<double>(position) + 0.5) * 2 * kPi / 5 + view->startArc();
    EXPECT_NEAR(std::remainder(directionOf(item(0, position)) - expected, 2 * kPi), 0, 1e-9);
  }
}

TEST_F(OrbelViewReorderingTest, TheOthersMakeRoomWithAnimation) {
  fill({5});
  platform.runLoop.advance(1);
  press(centerOf(0, 1));
  drag(degrees(5));
  EXPECT_NE(item(0, 2).presentedFrame(), item(0, 2).frame());
  EXPECT_TRUE(tree.isAnimating());
  platform.runLoop.advance(1);
  EXPECT_EQ(item(0, 2).presentedFrame(), item(0, 2).frame());
}

TEST_F(OrbelViewReorderingTest, AMoveIsReportedWithTheIndexAfterTheMove) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(250));
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"move 0-1 to 0-3"});
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-2", "0-3", "0-1", "0-4"}));
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_TRUE(view->zoomingEnabled());
  for (std::int64_t position = 0; position < 5; ++position) {
    EXPECT_NEAR(directionOf(item(0, position)), (static_cast<double>(position) + 0.5) * 2 * kPi / 5, 1e-9);
  }
}

TEST_F(OrbelViewReorderingTest, AMoveToItsOwnPlaceIsReportedToo) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(90));
  release();
  EXPECT_EQ(controller.reports, Reports{"move 0-1 to 0-1"});
}

TEST_F(OrbelViewReorderingTest, TheItemIsInItsNewPlaceAndTheGapStillOpenWhenTheMoveIsReported) {
  fill({5});
  std::vector<std::string> whileTold;
  ItemPath gapWhileTold;
  controller.whenTold = [&] {
    whileTold = titlesInSection(0);
    gapWhileTold = gap();
  };
  press(centerOf(0, 1));
  drag(degrees(5));
  release();
  EXPECT_EQ(whileTold, (std::vector<std::string>{"0-1", "0-0", "0-2", "0-3", "0-4"}));
  EXPECT_EQ(gapWhileTold, (ItemPath{0, 0}));
}

TEST_F(OrbelViewReorderingTest, AMoveIntoAnotherSectionNamesBothSections) {
  fill({2, 3});
  press(centerOf(0, 0));
  // Left over: (0, 1) and three of section 1, 90 degrees each, turned by 9 degrees: section 1 starts at 81.
  drag(degrees(90));
  ASSERT_EQ(gap(), (ItemPath{1, 0}));
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"move 0-0 to 1-0"});
  EXPECT_EQ(titlesInSection(0), std::vector<std::string>{"0-1"});
  EXPECT_EQ(titlesInSection(1), (std::vector<std::string>{"0-0", "1-0", "1-1", "1-2"}));
  EXPECT_EQ(view->relativeSize({1, 3}), 1) << "the place at the end got its size";
  EXPECT_NEAR(directionOf(item(1, 3)), 4.5 * 2 * kPi / 5, 1e-9);
}

TEST_F(OrbelViewReorderingTest, WithoutADelegateAMoveStillHappensInTheView) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(250));
  view->setDelegate(nullptr);
  release();
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-2", "0-3", "0-1", "0-4"}));
}

TEST_F(OrbelViewReorderingTest, TheTargetsPositionIsTheModels) {
  fill({5});
  press(centerOf(0, 2));
  drag(degrees(220)); // the third of four arcs, which was (0, 3)
  EXPECT_EQ(controller.takeReports(), Reports{"can drop 0-2 on 0-3"});
  drag(degrees(30));
  EXPECT_EQ(controller.takeReports(), Reports{"can drop 0-2 on 0-0"});
}

TEST_F(OrbelViewReorderingTest, TheTargetsPositionIsAdjustedAlsoInAnotherSection) {
  fill({2, 3});
  press(centerOf(0, 1));
  drag(degrees(120)); // (1, 0): 1 > 0
  EXPECT_EQ(controller.takeReports(), Reports{"can drop 0-1 on 1-0"});
  drag(degrees(220)); // (1, 1): 1 <= 1
  EXPECT_EQ(controller.takeReports(), Reports{"can drop 0-1 on 1-2"});
}

TEST_F(OrbelViewReorderingTest, ADropOntoAnAcceptingItemIsReportedAndLeavesTheRestToTheDelegate) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  drag(degrees(120));
  ASSERT_EQ(selectedTitles(), std::vector<std::string>{"0-2"});
  controller.takeReports();
  const Rect frame = item(0, 2).frame();
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"drop 0-1 on 0-2"});
  EXPECT_TRUE(selectedTitles().empty());
  EXPECT_EQ(view->numberOfItemsInSection(0), 4) << "not put back";
  EXPECT_EQ(item(0, 2).frame(), frame) << "not laid out";
  EXPECT_TRUE(view->zoomingEnabled());
}

TEST_F(OrbelViewReorderingTest, ADropIsDecidedByTheProbedSlotAndNotByTheExactAngle) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  // 140 degrees lie in slot 1, whose centre is 108 degrees: the arc of the second of four (81 to 171).
  drag(degrees(140));
  ASSERT_EQ(gap(), ItemPath());
  controller.takeReports();
  placePointer(onCircle(degrees(74))); // still slot 1, though the angle is in the arc before
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"drop 0-1 on 0-2"});
}

TEST_F(OrbelViewReorderingTest, ADropIsDecidedByTheArcsOfTheTurnedCircle) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  // The third arc reaches from 171 to 261 degrees, and the slot's centre is 180: its start were the circle
  // not turned.
  drag(degrees(200));
  ASSERT_EQ(selectedTitles(), std::vector<std::string>{"0-3"});
  controller.takeReports();
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"drop 0-1 on 0-3"});
}

TEST_F(OrbelViewReorderingTest, ADragWhoseReleaseIsLostPutsTheItemBackAndReportsNothing) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(5));
  ASSERT_EQ(gap(), (ItemPath{0, 0}));
  loseRelease();
  drag(degrees(300));
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-1", "0-2", "0-3", "0-4"}));
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_TRUE(view->zoomingEnabled());
  for (std::int64_t position = 0; position < 5; ++position) {
    EXPECT_NEAR(directionOf(item(0, position)), (static_cast<double>(position) + 0.5) * 2 * kPi / 5, 1e-9);
  }
}

TEST_F(OrbelViewReorderingTest, ADragWhoseReleaseIsLostOverATargetUnmarksIt) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  drag(degrees(120));
  ASSERT_EQ(selectedTitles(), std::vector<std::string>{"0-2"});
  controller.takeReports();
  loseRelease();
  drag(degrees(121));
  EXPECT_TRUE(selectedTitles().empty());
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewReorderingTest, OnePixelMakesADragAndItsReleaseIsNoClick) {
  fill({2});
  const Point center = centerOf(0, 0);
  press(center);
  movePointer({center.x + 1, center.y}); // in the middle half of the other item's arc, which refuses
  EXPECT_TRUE(view->didDrag());
  ASSERT_EQ(gap(), ItemPath());
  controller.takeReports();
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"drop 0-0 on 0-1"})
      << "with neither gap nor mark the probed item gets the drop";
}

TEST_F(OrbelViewReorderingTest, TheOnlyItemCanBeDraggedNowhereAndIsOutUntilTheNextReload) {
  fill({1});
  press(centerOf(0, 0));
  drag(degrees(90));
  EXPECT_EQ(gap(), ItemPath());
  release();
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(view->numberOfItemsInSection(0), 0);
  ASSERT_NE(view->draggedItem(), nullptr);
  EXPECT_NEAR(view->draggedItem()->frame().midX(), 200 + 122, 1e-9) << "it stays where it was dropped";
  EXPECT_EQ(view->subviews().size(), 1u);
  view->reloadData();
  EXPECT_EQ(view->numberOfItemsInSection(0), 1);
}

TEST_F(OrbelViewReorderingTest, ADropWhileThePointerIsUnknownReportsNothing) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  press(centerOf(0, 1));
  drag(degrees(120));
  ASSERT_EQ(gap(), ItemPath());
  controller.takeReports();
  host.pointer.reset();
  view->mouseUp({});
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(view->numberOfItemsInSection(0), 4) << "not put back";
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
}

TEST_F(OrbelViewReorderingTest, DraggingWithoutAnItemOnlyTracks) {
  fill({8});
  press(at(1, 30));
  drag(3);
  EXPECT_TRUE(view->didDrag());
  EXPECT_EQ(view->lastMouseOverItemIndex(), 3);
  EXPECT_EQ(gap(), ItemPath());
  release();
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewReorderingTest, DraggingAfterAControlPressMovesNothing) {
  fill({5});
  press(centerOf(0, 1));
  release();
  press(centerOf(0, 2), kControlFlag);
  controller.takeReports();
  const Rect frame = item(0, 1).frame();
  drag(degrees(5));
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_EQ(item(0, 1).frame(), frame);
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewReorderingTest, WithAnUnknownPointerTheDragStaysAsItIs) {
  fill({5});
  press(centerOf(0, 1));
  drag(degrees(5));
  const Rect frame = view->draggedItem()->frame();
  host.pointer.reset();
  view->mouseDragged({});
  EXPECT_EQ(view->draggedItem()->frame(), frame);
  EXPECT_EQ(gap(), (ItemPath{0, 0}));
}

TEST_F(OrbelViewReorderingTest, TitlesFollowThePointerDuringADrag) {
  fill({5});
  press(centerOf(0, 1));
  drag(directionOf(item(0, 2)));
  EXPECT_EQ(controller.titleQuestions.size(), 1u);
}

TEST_F(OrbelViewReorderingTest, TheDraggedItemsTitleIsClosedWithTheOthers) {
  fill({5});
  movePointer(centerOf(0, 1));
  ASSERT_EQ(titlesShown(), std::vector<std::string>{"0-1"});
  press(centerOf(0, 1));
  view->closeAllTitles();
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewReorderingTest, MagnifiedItemsShrinkForTheDragAndGrowAfterIt) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  press(onCircle(kPi / 8));
  drag(degrees(100));
  EXPECT_EQ(sizes(), std::vector<double>(7, 1));
  release();
  EXPECT_NEAR(view->relativeSize({0, 2}), kPi + 1, 1e-12);
}

} // namespace
} // namespace orbel
