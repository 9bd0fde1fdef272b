// A controller that reloads, disables or leaves the view from within what the view asks or reports.
#include "tests/view/OrbelViewFixture.h"

#include "tests/doubles/FakeDrag.h"

namespace orbel {
namespace {

class OrbelViewReentrancyTest : public OrbelViewFixture {
protected:
  OrbelViewReentrancyTest() { view->setMagnifyItemsOnMouseOver(true); }
  void expectWhole(std::int64_t count) {
    EXPECT_EQ(view->totalNumberOfItems(), count);
    EXPECT_EQ(view->numberOfItemsInSection(0), count);
    EXPECT_EQ(view->subviews().size(), static_cast<std::size_t>(count));
    EXPECT_EQ(view->draggedItem(), nullptr);
    EXPECT_EQ(gap(), ItemPath());
    EXPECT_TRUE(view->zoomingEnabled());
  }
};

TEST_F(OrbelViewReentrancyTest, AClickMayReload) {
  fill({5});
  controller.whenTold = [&] { fill({3}); };
  press(centerOf(0, 4));
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-4"});
  expectWhole(3);
  EXPECT_EQ(view->lastMouseOverItemIndex(), 2);
  EXPECT_NEAR(view->relativeSize({0, 2}), kPi + 1, 1e-12);
}

TEST_F(OrbelViewReentrancyTest, AClickMayEmptyTheView) {
  fill({5});
  controller.whenTold = [&] { fill({}); };
  press(centerOf(0, 4));
  release();
  EXPECT_EQ(view->numberOfSections(), 0);
  EXPECT_EQ(view->startArc(), 0);
}

TEST_F(OrbelViewReentrancyTest, AClickMayDisableTheView) {
  fill({5});
  controller.whenTold = [&] { view->setEnabled(false); };
  press(centerOf(0, 1));
  release();
  EXPECT_EQ(view->trackingArea(), std::nullopt);
  EXPECT_EQ(view->numberOfItemsInSection(0), 5);
  movePointer(centerOf(0, 3));
  press(centerOf(0, 3));
  release();
  EXPECT_EQ(controller.reports, Reports{"click 0-1"});
}

TEST_F(OrbelViewReentrancyTest, AClickMayEndTheControllersPart) {
  fill({5});
  controller.whenTold = [&] {
    view->setDelegate(nullptr);
    view->setDataSource(nullptr);
  };
  press(centerOf(0, 1));
  release();
  EXPECT_EQ(view->numberOfItemsInSection(0), 5);
  EXPECT_TRUE(controller.titleQuestions.empty());
}

TEST_F(OrbelViewReentrancyTest, AMoveMayReload) {
  fill({5});
  controller.whenTold = [&] { view->reloadData(); };
  press(centerOf(0, 1));
  movePointer(onCircle(degrees(5)));
  release();
  EXPECT_EQ(controller.reports, Reports{"move 0-1 to 0-0"});
  expectWhole(5);
}

TEST_F(OrbelViewReentrancyTest, ADropOntoAnItemMayReload) {
  fill({5});
  controller.acceptsItem = [](ItemPath) { return true; };
  controller.whenTold = [&] { fill({4}); };
  press(centerOf(0, 1));
  movePointer(onCircle(degrees(120)));
  release();
  EXPECT_EQ(controller.reports.back(), "drop 0-1 on 0-2");
  expectWhole(4);
}

TEST_F(OrbelViewReentrancyTest, AQuestionAboutADropMayReload) {
  fill({5});
  controller.acceptsItem = [&](ItemPath) {
    fill({2});
    return true;
  };
  press(centerOf(0, 1));
  movePointer(onCircle(degrees(120)));
  EXPECT_EQ(view->draggedItem(), nullptr);
  EXPECT_EQ(view->numberOfItemsInSection(0), 2);
  EXPECT_TRUE(selectedTitles().empty());
  movePointer(onCircle(degrees(200)));
  release();
  expectWhole(2);
}

TEST_F(OrbelViewReentrancyTest, ARightClickMayReload) {
  fill({5});
  controller.whenTold = [&] { fill({1}); };
  rightClick(centerOf(0, 3));
  EXPECT_EQ(controller.takeReports(), Reports{"right-click 0-3"});
  fill({5});
  rightClick(at(3, 20));
  EXPECT_EQ(controller.takeReports(), Reports{"right-click outside 0-2"});
  expectWhole(1);
}

TEST_F(OrbelViewReentrancyTest, ATitleQuestionMayReload) {
  fill({8});
  controller.displaysTitle = [&](ItemPath) {
    fill({3});
    return true;
  };
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(controller.titleQuestions.size(), 1u);
  expectWhole(3);
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1, 1e-12);
  EXPECT_TRUE(titlesShown().empty()) << "the item that was asked about is gone";
}

TEST_F(OrbelViewReentrancyTest, TheItemsOfAReloadAreNotAskedAboutByTheStepThatReloaded) {
  fill({8});
  controller.displaysTitle = [&](ItemPath) {
    fill({9});
    return true;
  };
  const Point pointer = onCircle(9 * kPi / 8);
  movePointer(pointer);
  EXPECT_EQ(controller.titleQuestions, (std::vector<ItemPath>{{0, 4}}));
  EXPECT_EQ(view->lastMouseOverItemIndex(), 5);
  EXPECT_TRUE(item(0, 5).frame().contains(pointer)) << "the next move asks about this one";
}

TEST_F(OrbelViewReentrancyTest, ATitleQuestionMayEmptyTheView) {
  fill({8});
  controller.displaysTitle = [&](ItemPath) {
    fill({});
    return false;
  };
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(view->numberOfSections(), 0);
  EXPECT_EQ(view->startArc(), 0);
}

// Pointing at an item opens it there and then.
TEST_F(OrbelViewReentrancyTest, OpeningByPointingMayReloadAndOpensOnlyOnce) {
  fill({8});
  controller.displaysTitle = [&](ItemPath path) {
    controller.didClickItem(path);
    return false;
  };
  controller.whenTold = [&] { view->reloadData(); };
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(controller.reports, Reports{"click 0-0"});
  expectWhole(8);
}

TEST_F(OrbelViewReentrancyTest, OpeningByPointingMayDisableTheView) {
  fill({8});
  controller.displaysTitle = [&](ItemPath path) {
    controller.didClickItem(path);
    return false;
  };
  controller.whenTold = [&] { view->setEnabled(false); };
  movePointer(onCircle(kPi / 8));
  movePointer(onCircle(3 * kPi / 8));
  EXPECT_EQ(controller.reports, Reports{"click 0-0"});
  EXPECT_EQ(view->trackingArea(), std::nullopt);
  EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1, 1e-12) << "the step is finished";
}

TEST_F(OrbelViewReentrancyTest, WhileOneTitleQuestionIsOutNoOtherIsAsked) {
  fill({8});
  controller.displaysTitle = [&](ItemPath) {
    movePointer(onCircle(kPi / 8 + 0.01)); // under a dialog that the question brought up
    return true;
  };
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(controller.titleQuestions.size(), 1u);
  movePointer(onCircle(kPi / 8));
  EXPECT_EQ(controller.titleQuestions.size(), 2u) << "the next move asks again";
}

TEST_F(OrbelViewReentrancyTest, ATitleQuestionDuringADragMayReload) {
  fill({5});
  press(centerOf(0, 1));
  controller.displaysTitle = [&](ItemPath) {
    fill({5});
    return true;
  };
  movePointer(centerOf(0, 1));
  EXPECT_EQ(view->draggedItem(), nullptr);
  controller.displaysTitle = [](ItemPath) { return true; };
  movePointer(onCircle(degrees(5)));
  EXPECT_EQ(gap(), ItemPath());
  release();
  expectWhole(5);
  EXPECT_TRUE(controller.reports.empty());
}

TEST_F(OrbelViewReentrancyTest, QuestionsOfADragFromOutsideMayReload) {
  fill({5});
  controller.acceptsDrag = [&](ItemPath) {
    fill({1});
    return true;
  };
  FakeDrag drag(inWindow(at(degrees(180), 122)));
  EXPECT_EQ(tree.dragMoved(drag), DragOperation::link);
  EXPECT_TRUE(selectedTitles().empty()) << "there is no third item any more";
  fill({5});
  EXPECT_TRUE(tree.dragPerformed(drag));
  expectWhole(1);
}

TEST_F(OrbelViewReentrancyTest, AskingWhetherASectionTakesDropsMayReload) {
  fill({5});
  controller.supportsDrop = [&](std::int64_t) {
    fill({1});
    return false;
  };
  FakeDrag drag(inWindow(at(degrees(150), 122)));
  tree.dragMoved(drag);
  EXPECT_FALSE(tree.dragPerformed(drag));
  expectWhole(1);
}

TEST_F(OrbelViewReentrancyTest, ADropFromOutsideMayReload) {
  fill({5});
  controller.whenTold = [&] { fill({6}); };
  FakeDrag drag(inWindow(at(degrees(150), 122)));
  tree.dragMoved(drag);
  EXPECT_TRUE(tree.dragPerformed(drag));
  expectWhole(6);
}

} // namespace
} // namespace orbel
