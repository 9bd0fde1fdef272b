#include "tests/view/OrbelViewFixture.h"

#include "tests/doubles/FakeDrag.h"

namespace orbel {
namespace {

class OrbelViewDropsTest : public OrbelViewFixture {
protected:
  DragOperation hover(double angle, double distance = 122) {
    drag.location = inWindow(at(angle, distance));
    return tree.dragMoved(drag);
  }
  bool drop(double angle, double distance = 122) {
    hover(angle, distance);
    controller.takeReports();
    return tree.dragPerformed(drag);
  }
  // An angle that far (0 to 1) into the arc of that global index, of so many equal items.
  static double into(int index, int count, double share) { return (index + share) * 2 * kPi / count; }

  FakeDrag drag{{0, 0}, {"/home/user/notes.txt"}};
};

TEST_F(OrbelViewDropsTest, EnteringShowsTheCopyBadgeAndChangesNothing) {
  fill({4});
  drag.location = inWindow(onCircle(0.1));
  EXPECT_EQ(view->draggingEntered(drag), DragOperation::copy);
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewDropsTest, AWholeTurnOpensGapsInFrontOfAndBehindTheItems) {
  for (const int count : {1, 2, 5, 12}) {
    fill({count});
    for (int index = 0; index < count; ++index) {
      EXPECT_EQ(hover(into(index, count, 0.01)), DragOperation::copy);
      EXPECT_EQ(gap(), (ItemPath{0, index})) << index << " of " << count;
      hover(into(index, count, 0.24));
      EXPECT_EQ(gap(), (ItemPath{0, index}));
      EXPECT_EQ(hover(into(index, count, 0.76)), DragOperation::copy);
      EXPECT_EQ(gap(), (ItemPath{0, index + 1})) << index << " of " << count;
      hover(into(index, count, 0.99));
      EXPECT_EQ(gap(), (ItemPath{0, index + 1}));
    }
    tree.dragExited();
  }
}

TEST_F(OrbelViewDropsTest, TheGapMovesItsItemOneSlotAndShrinksAllArcs) {
  fill({8});
  platform.runLoop.advance(1);
  hover(into(1, 8, 0.1));
  ASSERT_EQ(gap(), (ItemPath{0, 1}));
  const double side = 122 * (2 * kPi / 9) / 1.41;
  for (std::int64_t position = 0; position < 8; ++position) {
    const double slot = static_cast<double>(position) + (position >= 1 ? 1.5 : 0.5);
    EXPECT_NEAR(directionOf(item(0, position)), slot * 2 * kPi / 9, 1e-9) << position;
    EXPECT_NEAR(item(0, position).frame().size.width, side, 1e-9);
  }
  EXPECT_TRUE(tree.isAnimating());
}

TEST_F(OrbelViewDropsTest, AGapBehindASectionsLastItemIsFreeSpaceAtTheEndOfTheCircle) {
  fill({2, 2});
  hover(into(1, 4, 0.9));
  ASSERT_EQ(gap(), (ItemPath{0, 2}));
  for (std::int64_t index = 0; index < 4; ++index) {
    EXPECT_NEAR(directionOf(item(index / 2, index % 2)), (static_cast<double>(index) + 0.5) * 2 * kPi / 5,
                1e-9);
  }
}

TEST_F(OrbelViewDropsTest, OverAnAcceptingItemTheBadgeLinksTheItemIsMarkedAndTheGapCloses) {
  fill({4});
  controller.acceptsDrag = [](ItemPath target) { return target.position == 2; };
  hover(into(2, 4, 0.1));
  ASSERT_EQ(gap(), (ItemPath{0, 2}));
  EXPECT_EQ(hover(into(2, 4, 0.5)), DragOperation::link);
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_EQ(selectedTitles(), std::vector<std::string>{"0-2"});
  EXPECT_NEAR(directionOf(item(0, 2)), into(2, 4, 0.5), 1e-9);
  EXPECT_EQ(controller.lastDrag, &drag);
  EXPECT_EQ(hover(into(2, 4, 0.9)), DragOperation::copy);
  EXPECT_TRUE(selectedTitles().empty());
}

TEST_F(OrbelViewDropsTest, OverARefusingItemTheBadgeCopiesAndTheGapStays) {
  fill({4});
  hover(into(2, 4, 0.1));
  controller.takeReports();
  const Rect frame = item(0, 2).frame();
  EXPECT_EQ(hover(into(2, 4, 0.5)), DragOperation::copy);
  EXPECT_EQ(controller.reports, Reports{"can take 0-2"});
  EXPECT_EQ(gap(), (ItemPath{0, 2}));
  EXPECT_TRUE(selectedTitles().empty());
  EXPECT_EQ(item(0, 2).frame(), frame);
}

TEST_F(OrbelViewDropsTest, HoveringDoesNotAskWhetherTheSectionTakesDrops) {
  fill({4});
  controller.supportsDrop = [](std::int64_t) { return false; };
  hover(into(2, 4, 0.1));
  EXPECT_EQ(gap(), (ItemPath{0, 2}));
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewDropsTest, AtTheCentreNothingIsMarkedAndTheGapStays) {
  fill({4});
  controller.acceptsDrag = [](ItemPath) { return true; };
  hover(into(0, 4, 0.5));
  ASSERT_EQ(selectedTitles(), std::vector<std::string>{"0-0"});
  EXPECT_EQ(hover(into(0, 4, 0.5), 9.9), DragOperation::copy);
  EXPECT_TRUE(selectedTitles().empty());
  hover(into(2, 4, 0.1));
  hover(into(0, 4, 0.1), 9.9);
  EXPECT_EQ(gap(), (ItemPath{0, 2}));
}

TEST_F(OrbelViewDropsTest, OverAnEmptyCircleTheBadgeCopies) {
  fill({0});
  EXPECT_EQ(hover(1), DragOperation::copy);
  EXPECT_EQ(gap(), ItemPath());
}

TEST_F(OrbelViewDropsTest, WithoutADelegateTheMiddleOfAnItemTakesNothing) {
  fill({4});
  view->setDelegate(nullptr);
  EXPECT_EQ(hover(into(2, 4, 0.5)), DragOperation::copy);
  EXPECT_EQ(hover(into(2, 4, 0.1)), DragOperation::copy);
  EXPECT_EQ(gap(), (ItemPath{0, 2}));
}

TEST_F(OrbelViewDropsTest, TheArcsOfAMagnifiedCircleAreThoseThatAreSeen) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  const double center = directionOf(item(0, 2));
  hover(center);
  EXPECT_EQ(controller.takeReports(), Reports{"can take 0-2"});
}

TEST_F(OrbelViewDropsTest, ADropIsDecidedByTheArcsOfTheMagnifiedCircle) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  controller.acceptsDrag = [](ItemPath) { return true; };
  EXPECT_TRUE(drop(directionOf(item(0, 2))));
  EXPECT_EQ(controller.takeReports(), (Reports{"can take 0-2", "take 0-2"}));
}

TEST_F(OrbelViewDropsTest, PastTheLastArcOfATurnedCircleTheBadgeCopiesTheMarkGoesAndTheGapStays) {
  view->setMagnifyItemsOnMouseOver(true);
  fill({8});
  movePointer(onCircle(kPi / 8));
  ASSERT_LT(view->startArc(), -0.2);
  const double pastTheLast = 2 * kPi - 0.1;
  hover(0.01 + view->startArc() + 2 * kPi * 3.3562 / 20.5664); // just before the end of the first item's arc
  const ItemPath open = gap();
  ASSERT_NE(open, ItemPath());
  EXPECT_EQ(hover(pastTheLast), DragOperation::copy);
  EXPECT_EQ(gap(), open);
  controller.acceptsDrag = [](ItemPath) { return true; };
  EXPECT_EQ(hover(directionOf(item(0, 2))), DragOperation::link);
  ASSERT_EQ(selectedTitles().size(), 1u);
  EXPECT_EQ(hover(pastTheLast), DragOperation::copy);
  EXPECT_TRUE(selectedTitles().empty());
}

TEST_F(OrbelViewDropsTest, LeavingClosesTheGapAndClearsTheMarkWithAnimation) {
  fill({4});
  hover(into(2, 4, 0.1));
  platform.runLoop.advance(1);
  tree.dragExited();
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_NEAR(directionOf(item(0, 2)), into(2, 4, 0.5), 1e-9);
  EXPECT_TRUE(tree.isAnimating());
  controller.acceptsDrag = [](ItemPath) { return true; };
  hover(into(1, 4, 0.5));
  ASSERT_FALSE(selectedTitles().empty());
  tree.dragExited();
  EXPECT_TRUE(selectedTitles().empty());
}

TEST_F(OrbelViewDropsTest, ADropBetweenItemsIsReceivedInFrontOfOrBehindTheItem) {
  fill({3, 2});
  EXPECT_TRUE(drop(into(2, 5, 0.1)));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 0", "receive 0-2"}));
  EXPECT_EQ(controller.lastDrag, &drag);
  EXPECT_TRUE(drop(into(2, 5, 0.9)));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 0", "receive 0-3"}));
  EXPECT_TRUE(drop(into(4, 5, 0.9)));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 1", "receive 1-2"}));
}

TEST_F(OrbelViewDropsTest, ADropOntoAnAcceptingItemGoesToTheItem) {
  fill({4});
  controller.acceptsDrag = [](ItemPath) { return true; };
  EXPECT_TRUE(drop(into(3, 4, 0.5)));
  EXPECT_EQ(controller.takeReports(), (Reports{"can take 0-3", "take 0-3"}));
  EXPECT_EQ(controller.lastDrag, &drag);
}

TEST_F(OrbelViewDropsTest, TheDelegatesAnswerIsTheDropsAnswer) {
  fill({4});
  controller.takesDrop = false;
  EXPECT_FALSE(drop(into(2, 4, 0.1)));
  EXPECT_FALSE(drop(into(2, 4, 0.9)));
  EXPECT_FALSE(drop(0, 1));
  controller.acceptsDrag = [](ItemPath) { return true; };
  EXPECT_FALSE(drop(into(2, 4, 0.5)));
}

TEST_F(OrbelViewDropsTest, ADropInASectionThatRefusesGoesToTheFrontOfTheFirst) {
  fill({2, 2});
  controller.supportsDrop = [](std::int64_t section) { return section == 0; };
  EXPECT_TRUE(drop(into(3, 4, 0.1)));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 1", "supports drop 0", "receive 0-0"}));
  EXPECT_TRUE(drop(into(3, 4, 0.9)));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 1", "supports drop 0", "receive 0-0"}));
}

TEST_F(OrbelViewDropsTest, ADropOntoARefusingItemGoesToTheFront) {
  fill({4});
  EXPECT_TRUE(drop(into(2, 4, 0.5)));
  EXPECT_EQ(controller.takeReports(), (Reports{"can take 0-2", "supports drop 0", "receive 0-0"}));
}

TEST_F(OrbelViewDropsTest, ADropAtTheCentreGoesToTheFront) {
  fill({4});
  controller.acceptsDrag = [](ItemPath) { return true; };
  EXPECT_TRUE(drop(into(2, 4, 0.5), 9.9));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 0", "receive 0-0"}));
  EXPECT_TRUE(drop(into(2, 4, 0.5), 10.1));
  EXPECT_EQ(controller.takeReports(), (Reports{"can take 0-2", "take 0-2"}));
}

TEST_F(OrbelViewDropsTest, ADropOnAnEmptyCircleGoesToTheFrontIfTheFirstSectionTakesDrops) {
  fill({});
  EXPECT_TRUE(drop(1));
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 0", "receive 0-0"}));
  controller.supportsDrop = [](std::int64_t) { return false; };
  EXPECT_FALSE(drop(1));
  EXPECT_EQ(controller.takeReports(), Reports{"supports drop 0"});
}

TEST_F(OrbelViewDropsTest, ADropOnABoundaryGoesToTheFront) {
  fill({1});
  EXPECT_TRUE(drop(0)); // straight up: where the only arc starts
  EXPECT_EQ(controller.takeReports(), (Reports{"supports drop 0", "receive 0-0"}));
}

TEST_F(OrbelViewDropsTest, AfterTheDropGapAndMarkAreGone) {
  fill({4});
  drop(into(2, 4, 0.1));
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_NEAR(directionOf(item(0, 2)), into(2, 4, 0.5), 1e-9);
  controller.acceptsDrag = [](ItemPath) { return true; };
  drop(into(2, 4, 0.5));
  EXPECT_TRUE(selectedTitles().empty());
}

TEST_F(OrbelViewDropsTest, GapAndMarkAreGoneWhenTheDelegateIsTold) {
  fill({4});
  ItemPath gapWhileTold{0, 0};
  controller.whenTold = [&] { gapWhileTold = gap(); };
  drop(into(2, 4, 0.1));
  EXPECT_EQ(gapWhileTold, ItemPath());
}

TEST_F(OrbelViewDropsTest, WithoutADelegateTheDropDoesNotHappen) {
  fill({4});
  EXPECT_TRUE(view->prepareForDragOperation(drag));
  view->setDelegate(nullptr);
  EXPECT_FALSE(view->prepareForDragOperation(drag));
  EXPECT_FALSE(view->performDragOperation(drag));
  EXPECT_FALSE(drop(into(2, 4, 0.1)));
  EXPECT_EQ(gap(), ItemPath());
}

TEST_F(OrbelViewDropsTest, WithoutASourceNoSectionTakesDrops) {
  fill({4});
  view->setDataSource(nullptr);
  EXPECT_FALSE(drop(into(2, 4, 0.1)));
  EXPECT_TRUE(controller.reports.empty());
}

} // namespace
} // namespace orbel
