#include "tests/view/OrbelViewFixture.h"

#include "tests/doubles/FakeDrag.h"

namespace orbel {
namespace {

class OrbelViewClickTest : public OrbelViewFixture {};

TEST_F(OrbelViewClickTest, PressAndReleaseOnAnItemIsAClickOnIt) {
  fill({3, 2});
  press(centerOf(1, 0));
  release();
  EXPECT_EQ(controller.reports, Reports{"click 1-0"});
}

TEST_F(OrbelViewClickTest, APressTakesTheItemOutOfItsSectionAndToTheTop) {
  fill({4});
  OrbelItem* const pressed = &item(0, 1);
  press(centerOf(0, 1));
  EXPECT_EQ(view->draggedItem().get(), pressed);
  EXPECT_EQ(view->draggedItemOriginalSection(), 0);
  EXPECT_EQ(view->draggedItemOriginalPosition(), 1);
  EXPECT_EQ(view->draggedItemLastPoint(), pressed->frame().center());
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-2", "0-3"}));
  EXPECT_EQ(view->subviews().size(), 4u);
  EXPECT_EQ(view->subviews().back().get(), pressed);
  EXPECT_EQ(view->totalNumberOfItems(), 4);
  EXPECT_FALSE(view->didDrag());
  EXPECT_FALSE(view->zoomingEnabled());
}

TEST_F(OrbelViewClickTest, APressLaysNothingOut) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  const Rect neighbour = item(0, 1).frame();
  const OrbelItem* const next = &item(0, 1);
  press(onCircle(kPi / 8));
  EXPECT_EQ(next->frame(), neighbour);
  EXPECT_EQ(view->startArc(), 0);
  EXPECT_EQ(sizes(), std::vector<double>(7, 1));
}

TEST_F(OrbelViewClickTest, TheItemIsBackInItsPlaceWhenTheClickIsReported) {
  fill({4});
  std::vector<std::string> whileTold;
  controller.whenTold = [&] { whileTold = titlesInSection(0); };
  press(centerOf(0, 1));
  release();
  EXPECT_EQ(whileTold, (std::vector<std::string>{"0-0", "0-1", "0-2", "0-3"}));
}

TEST_F(OrbelViewClickTest, AReleaseSomewhereElseWithoutADragIsStillAClick) {
  fill({4});
  press(centerOf(0, 1));
  placePointer(centerOf(0, 2));
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-1"});
}

TEST_F(OrbelViewClickTest, APressAfterADragIsAClickAgain) {
  fill({4});
  press(centerOf(0, 1));
  movePointer(onCircle(degrees(5)));
  release();
  controller.takeReports();
  view->reloadData();
  press(centerOf(0, 1));
  EXPECT_FALSE(view->didDrag());
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-1"});
}

TEST_F(OrbelViewClickTest, AfterAClickTheCircleIsMagnifiedAgain) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  press(onCircle(kPi / 8));
  release();
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1, 1e-12);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 8, 1e-9);
}

TEST_F(OrbelViewClickTest, WhereFramesOverlapTheLastItemIsClicked) {
  fill({3});
  item(0, 0).setFrame({300, 300, 50, 50});
  item(0, 2).setFrame({310, 310, 50, 50});
  press({320, 320});
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-2"});
}

TEST_F(OrbelViewClickTest, APressBesideTheItemsReportsNothing) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  press(at(1, 30));
  EXPECT_EQ(view->draggedItem(), nullptr);
  EXPECT_EQ(view->numberOfItemsInSection(0), 8);
  release();
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_EQ(view->lastMouseOverItemIndex(), 1);
  EXPECT_NEAR(view->relativeSize({0, 1}), kPi + 1, 1e-12) << "the release magnifies at once";
}

TEST_F(OrbelViewClickTest, APressBesideTheItemsKeepsTheItemOfThePressBefore) {
  fill({4});
  press(centerOf(0, 1));
  release();
  controller.takeReports();
  press(at(1, 30));
  EXPECT_EQ(view->numberOfItemsInSection(0), 3);
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-1"});
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-1", "0-2", "0-3"}));
}

TEST_F(OrbelViewClickTest, AfterAReloadAPressBesideTheItemsHasNoItem) {
  fill({4});
  press(centerOf(0, 1));
  release();
  controller.takeReports();
  view->reloadData();
  press(at(1, 30));
  release();
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewClickTest, WithAnUnknownPointerAPressHitsNothing) {
  fill({4});
  host.pointer.reset();
  view->mouseDown({});
  EXPECT_EQ(view->draggedItem(), nullptr);
  view->rightMouseDown({});
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewClickTest, WithoutADelegateAClickOnlyPutsTheItemBack) {
  fill({4});
  view->setDelegate(nullptr);
  press(centerOf(0, 1));
  release();
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(view->numberOfItemsInSection(0), 4);
  rightClick(centerOf(0, 1));
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewClickTest, ARightClickOnAnItemIsReportedOnIt) {
  fill({3, 2});
  rightClick(centerOf(1, 1));
  EXPECT_EQ(controller.reports, Reports{"right-click 1-1"});
  EXPECT_EQ(view->draggedItem(), nullptr);
}

TEST_F(OrbelViewClickTest, ARightClickBesideTheItemsNamesTheItemInThatDirection) {
  fill({8});
  for (int slot = 0; slot < 8; ++slot) {
    rightClick(at((slot + 0.2) * kPi / 4, 40));
    EXPECT_EQ(controller.takeReports(), Reports{"right-click outside 0-" + std::to_string(slot)});
    rightClick(at((slot + 0.5) * kPi / 4, 195));
    EXPECT_EQ(controller.takeReports(), Reports{"right-click outside 0-" + std::to_string(slot)});
  }
}

TEST_F(OrbelViewClickTest, ARightClickAtTheVeryCentreNamesTheItemOfTheProbedSlot) {
  fill({8});
  rightClick({200, 203});
  EXPECT_EQ(controller.takeReports(), Reports{"right-click outside 0-0"});
  rightClick({200, 197});
  EXPECT_EQ(controller.takeReports(), Reports{"right-click outside 0-4"});
}

TEST_F(OrbelViewClickTest, AnEarlierItemsArcIsAskedBeforeALaterItemsFrame) {
  fill({8});
  item(0, 5).setFrame(Rect::centeredAt(at(kPi / 8, 40), 20));
  rightClick(at(kPi / 8, 40));
  EXPECT_EQ(controller.reports, Reports{"right-click outside 0-0"});
}

TEST_F(OrbelViewClickTest, AnEarlierItemsFrameIsAskedBeforeTheArc) {
  fill({8});
  item(0, 0).setFrame(Rect::centeredAt(at(5 * kPi / 8, 40), 20));
  rightClick(at(5 * kPi / 8, 40));
  EXPECT_EQ(controller.reports, Reports{"right-click 0-0"});
}

TEST_F(OrbelViewClickTest, ARightClickOnAnEmptyCircleReportsNothing) {
  for (const std::vector<int>& counts : {std::vector<int>{}, std::vector<int>{0, 0}}) {
    fill(counts);
    rightClick(at(1, 100));
    EXPECT_TRUE(controller.reports.empty());
  }
}

TEST_F(OrbelViewClickTest, AControlClickIsARightClickAndStartsNoPress) {
  fill({4});
  press(centerOf(0, 1), kControlFlag);
  EXPECT_EQ(controller.reports, Reports{"right-click 0-1"});
  EXPECT_EQ(view->draggedItem(), nullptr);
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_EQ(view->numberOfItemsInSection(0), 4);
}

TEST_F(OrbelViewClickTest, ReleasingAControlClickClicksNothingAlsoNotTheItemOfThePressBefore) {
  fill({4});
  press(centerOf(0, 1));
  release();
  press(centerOf(0, 2), kControlFlag);
  controller.takeReports();
  movePointer(centerOf(0, 3));
  release();
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(view->numberOfItemsInSection(0), 4);
}

TEST_F(OrbelViewClickTest, AControlPressWhoseReleaseIsLostHoldsNothingUp) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({4});
  movePointer(onCircle(kPi / 4));
  press(onCircle(kPi / 4), kControlFlag);
  loseRelease();
  movePointer(onCircle(3 * kPi / 4));
  EXPECT_FALSE(view->didDrag());
  EXPECT_EQ(view->lastMouseOverItemIndex(), 1);
  press(onCircle(3 * kPi / 4), kControlFlag);
  loseRelease();
  placePointer({500, 200});
  tree.pointerExited({*host.pointer});
  EXPECT_EQ(sizes(), std::vector<double>(4, 1));
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewClickTest, APressWhoseReleaseIsLostIsNoClick) {
  fill({4});
  const Point other = centerOf(0, 2);
  press(centerOf(0, 1));
  loseRelease();
  movePointer(other);
  EXPECT_TRUE(controller.reports.empty());
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-1", "0-2", "0-3"}));
  EXPECT_TRUE(view->zoomingEnabled());
  EXPECT_EQ(titlesShown(), std::vector<std::string>{"0-2"});
}

TEST_F(OrbelViewClickTest, ASecondPressWithoutAReleaseLosesNoItem) {
  fill({4});
  const Point other = centerOf(0, 2);
  press(centerOf(0, 1));
  press(other);
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-2"});
  EXPECT_EQ(titlesInSection(0), (std::vector<std::string>{"0-0", "0-1", "0-2", "0-3"}));
}

TEST_F(OrbelViewClickTest, ARightPressDuringAPressReportsNothing) {
  fill({4});
  const Point other = centerOf(0, 2);
  press(centerOf(0, 1));
  rightClick(other);
  EXPECT_TRUE(controller.reports.empty());
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"click 0-1"});
  rightClick(other);
  EXPECT_EQ(controller.takeReports(), Reports{"right-click 0-2"});
}

TEST_F(OrbelViewClickTest, AClickClosesAGapThatADragFromOutsideHasLeftOpen) {
  fill({4});
  tree.dragMoved(FakeDrag(inWindow(onCircle(degrees(185)))));
  ASSERT_EQ(gap(), (ItemPath{0, 2}));
  press(centerOf(0, 0));
  release();
  EXPECT_EQ(controller.takeReports(), Reports{"click 0-0"});
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_NEAR(directionOf(item(0, 2)), degrees(225), 1e-9);
}

TEST_F(OrbelViewClickTest, OtherModifiersChangeNothing) {
  fill({4});
  press(centerOf(0, 1), kShiftFlag | kOptionFlag | kCommandFlag);
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-1"});
}

} // namespace
} // namespace orbel
