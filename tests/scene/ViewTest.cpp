#include "scene/View.h"

#include "scene/Animation.h"
#include "scene/ViewTree.h"
#include "tests/doubles/ManualRunLoop.h"
#include "tests/doubles/RecordingCanvas.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class Window : public ViewTreeHost {
public:
  void needsDisplay(const Rect& rect) override { damage = damage.unitedWith(rect); }
  std::optional<Point> pointerLocationInWindow() const override { return pointer; }
  double backingScale() const override { return 1; }
  Rect screenFrame() const override { return {100, 50, 400, 400}; }
  Rect damage;
  std::optional<Point> pointer = Point{0, 0};
};

class Box : public View {
public:
  using View::View;
  void draw(Canvas& canvas) override { canvas.fillRect({{}, presentedFrame().size}, Color::white(1)); }
  void mouseDown(const MouseEvent&) override { events += "down "; }
  void mouseDragged(const MouseEvent&) override { events += "drag "; }
  void mouseUp(const MouseEvent&) override { events += "up "; }
  void mouseCancelled() override { events += "cancelled "; }
  void rightMouseDown(const MouseEvent&) override { events += "right "; }
  void mouseMoved(const MouseEvent&) override { events += "moved "; }
  void mouseEntered(const MouseEvent&) override { events += "entered "; }
  void mouseExited(const MouseEvent&) override { events += "exited "; }
  std::string events;
};

class ViewTest : public testing::Test {
protected:
  std::shared_ptr<Box> addBox(const Rect& frame, Animated animated = Animated::no) {
    auto box = std::make_shared<Box>(frame);
    tree.contentView().addSubview(box, animated);
    return box;
  }
  std::vector<RecordingCanvas::Call> painted() {
    RecordingCanvas canvas;
    tree.paint(canvas, {0, 0, 400, 400});
    return canvas.calls;
  }

  static MouseEvent held(Point place) { return {place, 0, true}; }

  Window window;
  ManualRunLoop runLoop;
  ViewTree tree{window, runLoop, false};
};

TEST_F(ViewTest, AnAnimatedFrameIsTheTargetAtOnceAndIsPresentedOver150Milliseconds) {
  const auto box = addBox({0, 0, 10, 10});
  box->setFrame({100, 0, 20, 10}, Animated::yes);
  EXPECT_EQ(box->frame(), Rect(100, 0, 20, 10));
  EXPECT_EQ(box->presentedFrame(), Rect(0, 0, 10, 10));
  runLoop.advance(0.075);
  EXPECT_GT(box->presentedFrame().minX(), 20);
  EXPECT_LT(box->presentedFrame().minX(), 80);
  runLoop.advance(0.1);
  EXPECT_EQ(box->presentedFrame(), Rect(100, 0, 20, 10));
}

TEST_F(ViewTest, ARetargetedMoveGoesOnFromWhereItIsPainted) {
  const auto box = addBox({0, 0, 10, 10});
  box->setFrame({100, 0, 10, 10}, Animated::yes);
  runLoop.advance(0.075);
  const double midway = box->presentedFrame().minX();
  box->setFrame({0, 100, 10, 10}, Animated::yes);
  EXPECT_DOUBLE_EQ(box->presentedFrame().minX(), midway);
  runLoop.advance(0.02);
  EXPECT_GT(box->presentedFrame().minX(), 0);
  EXPECT_LE(box->presentedFrame().minX(), midway);
  runLoop.advance(0.2);
  EXPECT_EQ(box->presentedFrame(), Rect(0, 100, 10, 10));
}

TEST_F(ViewTest, SettingTheSameTargetAgainDoesNotStartTheMoveAnew) {
  const auto box = addBox({0, 0, 10, 10});
  box->setFrame({100, 0, 10, 10}, Animated::yes);
  runLoop.advance(0.1);
  box->setFrame({100, 0, 10, 10}, Animated::yes);
  runLoop.advance(0.07);
  EXPECT_EQ(box->presentedFrame(), Rect(100, 0, 10, 10));
}

TEST_F(ViewTest, FramesAreWantedOnlyWhileSomethingMoves) {
  const auto box = addBox({0, 0, 10, 10});
  EXPECT_FALSE(runLoop.wantsFrames());
  box->setFrame({100, 0, 10, 10}, Animated::yes);
  EXPECT_TRUE(runLoop.wantsFrames());
  runLoop.advance(0.2);
  EXPECT_FALSE(runLoop.wantsFrames());
}

TEST_F(ViewTest, InAnImmediateGroupAnAnimatedChangeIsAppliedAtOnce) {
  const auto box = addBox({0, 0, 10, 10});
  const ImmediateAnimationGroup group;
  box->setFrame({100, 0, 10, 10}, Animated::yes);
  EXPECT_EQ(box->presentedFrame(), Rect(100, 0, 10, 10));
  EXPECT_FALSE(runLoop.wantsFrames());
}

TEST_F(ViewTest, UnderReducedMotionNothingMovesGradually) {
  ViewTree still(window, runLoop, true);
  auto box = std::make_shared<Box>(Rect(0, 0, 10, 10));
  still.contentView().addSubview(box, Animated::yes);
  EXPECT_EQ(box->presentedOpacity(), 1);
  box->setFrame({50, 0, 10, 10}, Animated::yes);
  EXPECT_EQ(box->presentedFrame(), Rect(50, 0, 10, 10));
  EXPECT_FALSE(runLoop.wantsFrames());
}

TEST_F(ViewTest, AMoveDamagesWhereTheViewWasAndWhereItIs) {
  const auto box = addBox({10, 10, 10, 10});
  window.damage = {};
  box->setFrame({100, 10, 10, 10});
  EXPECT_EQ(window.damage, Rect(10, 10, 100, 10));
}

TEST_F(ViewTest, AnAddedViewFadesInAndARemovedOneFadesOut) {
  const auto box = addBox({0, 0, 10, 10}, Animated::yes);
  EXPECT_EQ(box->presentedOpacity(), 0);
  EXPECT_TRUE(painted().empty());
  runLoop.advance(0.2);
  ASSERT_EQ(painted().size(), 1u);
  EXPECT_EQ(painted()[0].opacity, 1);

  box->removeFromSuperview(Animated::yes);
  EXPECT_TRUE(tree.contentView().subviews().empty());
  runLoop.advance(0.075);
  ASSERT_EQ(painted().size(), 1u);
  EXPECT_GT(painted()[0].opacity, 0.2);
  EXPECT_LT(painted()[0].opacity, 0.8);
  runLoop.advance(0.2);
  EXPECT_TRUE(painted().empty());
  EXPECT_EQ(box->tree(), nullptr);
}

TEST_F(ViewTest, AViewThatWasNeverPaintedLeavesWithoutATrace) {
  const auto box = addBox({0, 0, 10, 10}, Animated::yes);
  box->removeFromSuperview(Animated::yes);
  EXPECT_EQ(box->tree(), nullptr);
  runLoop.advance(0.2);
  EXPECT_FALSE(runLoop.wantsFrames());
}

TEST_F(ViewTest, AViewThatTakesOverAPresentationDoesNotBlink) {
  const auto old = addBox({0, 0, 10, 10});
  painted();
  const auto successor = std::make_shared<Box>(Rect(0, 0, 10, 10));
  old->removeFromSuperview();
  tree.contentView().addSubview(successor, Animated::yes);
  successor->takeOverPresentation(*old);
  EXPECT_EQ(successor->presentedOpacity(), 1);
}

TEST_F(ViewTest, AddingAPresentSubviewAgainMovesItToTheTopAndKeepsItsMove) {
  const auto first = addBox({0, 0, 10, 10});
  const auto second = addBox({0, 0, 10, 10});
  first->setFrame({100, 0, 10, 10}, Animated::yes);
  runLoop.advance(0.05);
  const Rect presented = first->presentedFrame();
  tree.contentView().addSubview(first);
  EXPECT_EQ(tree.contentView().subviews().back(), first);
  EXPECT_EQ(first->presentedFrame(), presented);
}

TEST_F(ViewTest, OnlyWhatTheDamageTouchesIsDrawn) {
  addBox({0, 0, 10, 10});
  addBox({200, 200, 10, 10});
  RecordingCanvas canvas;
  tree.paint(canvas, {190, 190, 30, 30});
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].rect, Rect(200, 200, 10, 10));
}

TEST_F(ViewTest, SubviewsFollowASuperviewThatIsResized) {
  const auto filling = addBox({0, 0, 400, 400});
  filling->setAutoresizing(Autoresizing::fillsSuperview);
  const auto centered = addBox({185, 185, 30, 30});
  centered->setAutoresizing(Autoresizing::staysCentered);
  tree.resize({600, 600});
  EXPECT_EQ(filling->frame(), Rect(0, 0, 600, 600));
  EXPECT_EQ(centered->frame(), Rect(285, 285, 30, 30));
}

TEST_F(ViewTest, ThePressedViewGetsDragsAndTheReleaseWhereverThePointerIs) {
  const auto box = addBox({0, 0, 10, 10});
  tree.pointerPressed(PointerButton::primary, {{5, 5}});
  tree.pointerMoved(held({300, 300}));
  tree.pointerReleased(PointerButton::primary, {{300, 300}});
  EXPECT_EQ(box->events, "down drag up ");
}

// As where one of Qt's menus grabs the pointer.
TEST_F(ViewTest, AMoveWithoutTheButtonEndsAPressWhoseReleaseWasLost) {
  const auto box = addBox({0, 0, 10, 10});
  box->setTrackingArea(box->bounds());
  tree.pointerPressed(PointerButton::primary, {{5, 5}});
  tree.pointerMoved(held({6, 5}));
  tree.pointerMoved({{7, 5}});
  tree.pointerMoved({{8, 5}});
  EXPECT_EQ(box->events, "down drag cancelled entered moved moved ");
}

TEST_F(ViewTest, AnExitEndsAPressWhoseReleaseWasLostAndOneWithTheButtonDoesNot) {
  const auto box = addBox({0, 0, 10, 10});
  box->setTrackingArea(box->bounds());
  tree.pointerMoved({{5, 5}});
  tree.pointerPressed(PointerButton::primary, {{5, 5}});
  tree.pointerExited(held({-5, 5}));
  EXPECT_EQ(box->events, "entered moved down ");
  tree.pointerExited({{-5, 5}});
  EXPECT_EQ(box->events, "entered moved down cancelled exited ");
}

TEST_F(ViewTest, ASecondPressEndsAPressWhoseReleaseWasLost) {
  const auto first = addBox({0, 0, 10, 10});
  const auto second = addBox({20, 0, 10, 10});
  tree.pointerPressed(PointerButton::primary, {{5, 5}});
  tree.pointerPressed(PointerButton::primary, {{25, 5}});
  tree.pointerReleased(PointerButton::primary, {{25, 5}});
  EXPECT_EQ(first->events, "down cancelled ");
  EXPECT_EQ(second->events, "down up ");
}

TEST_F(ViewTest, ACancelledPressThatTheViewDoesNotWantGoesToItsSuperview) {
  const auto outer = addBox({0, 0, 100, 100});
  const auto inner = std::make_shared<View>(Rect(10, 10, 20, 20));
  outer->addSubview(inner);
  tree.pointerPressed(PointerButton::primary, {{15, 15}});
  tree.pointerMoved({{15, 15}});
  EXPECT_EQ(outer->events, "down cancelled ");
}

TEST_F(ViewTest, ATrackedViewHearsOfEntryMovesAndExit) {
  const auto box = addBox({100, 100, 100, 100});
  box->setTrackingArea(box->bounds());
  tree.pointerMoved({{50, 50}});
  tree.pointerMoved({{150, 150}});
  tree.pointerMoved({{160, 150}});
  tree.pointerMoved({{50, 50}});
  tree.pointerMoved({{150, 150}});
  tree.pointerExited({{-5, 150}});
  EXPECT_EQ(box->events, "entered moved moved exited entered moved exited ");
}

TEST_F(ViewTest, AViewWithoutATrackingAreaHearsNothingOfMoves) {
  const auto box = addBox({100, 100, 100, 100});
  box->setTrackingArea(box->bounds());
  box->setTrackingArea(std::nullopt);
  tree.pointerMoved({{150, 150}});
  EXPECT_EQ(box->events, "");
}

TEST_F(ViewTest, ARemovedViewIsToldOfNothingMore) {
  const auto box = addBox({0, 0, 100, 100});
  box->setTrackingArea(box->bounds());
  painted();
  tree.pointerPressed(PointerButton::primary, {{5, 5}});
  box->removeFromSuperview(Animated::yes);
  tree.pointerMoved(held({6, 5}));
  tree.pointerReleased(PointerButton::primary, {{6, 5}});
  tree.pointerMoved({{7, 5}});
  EXPECT_EQ(box->events, "down ");
}

TEST_F(ViewTest, TheSecondaryButtonIsARightClickAndNoPress) {
  const auto box = addBox({0, 0, 10, 10});
  tree.pointerPressed(PointerButton::secondary, {{5, 5}});
  tree.pointerReleased(PointerButton::secondary, {{5, 5}});
  EXPECT_EQ(box->events, "right ");
}

TEST_F(ViewTest, PointsAreConvertedThroughEverySuperview) {
  const auto outer = addBox({100, 100, 200, 200});
  const auto inner = std::make_shared<Box>(Rect(10, 20, 50, 50));
  outer->addSubview(inner);
  EXPECT_EQ(inner->convertFromWindow({120, 130}), (Point{10, 10}));
  EXPECT_EQ(inner->convertToWindow({0, 0, 5, 5}), Rect(110, 120, 5, 5));
  window.pointer = Point{111, 122};
  EXPECT_EQ(inner->pointerLocation(), (Point{1, 2}));
}

class DropBox : public Box {
public:
  using Box::Box;
  DragOperation draggingEntered(const DragInfo&) override {
    events += "entered ";
    return DragOperation::copy;
  }
  DragOperation draggingUpdated(const DragInfo&) override {
    events += "updated ";
    return DragOperation::link;
  }
  void draggingExited() override { events += "exited "; }
  bool prepareForDragOperation(const DragInfo&) override {
    events += "prepare ";
    return willing;
  }
  bool performDragOperation(const DragInfo&) override {
    events += "perform ";
    return true;
  }
  void concludeDragOperation() override { events += "conclude "; }
  bool willing = true;
};

class Drag : public DragInfo {
public:
  explicit Drag(Point place) : location(place) {}
  Point locationInWindow() const override { return location; }
  const std::optional<std::vector<std::string>>& filePaths() const override { return paths; }
  Point location;
  std::optional<std::vector<std::string>> paths{{"/a"}};
};

class DragTest : public ViewTest {
protected:
  DragTest() {
    box = std::make_shared<DropBox>(Rect(100, 100, 100, 100));
    box->registerForFileDrags();
    tree.contentView().addSubview(box);
  }
  std::shared_ptr<DropBox> box;
};

TEST_F(DragTest, ADropRunsThroughEnteredUpdatedPreparePerformAndConclude) {
  EXPECT_EQ(tree.dragMoved(Drag({150, 150})), DragOperation::link);
  EXPECT_EQ(tree.dragMoved(Drag({151, 150})), DragOperation::link);
  EXPECT_TRUE(tree.dragPerformed(Drag({151, 150})));
  EXPECT_EQ(box->events, "entered updated updated prepare perform conclude ");
}

TEST_F(DragTest, ADragThatLeavesTheDestinationIsToldOnce) {
  tree.dragMoved(Drag({150, 150}));
  EXPECT_EQ(tree.dragMoved(Drag({50, 50})), DragOperation::none);
  tree.dragExited();
  EXPECT_EQ(box->events, "entered updated exited ");
}

TEST_F(DragTest, ADropThatIsNotPreparedCleansUpAndIsNotTaken) {
  box->willing = false;
  tree.dragMoved(Drag({150, 150}));
  EXPECT_FALSE(tree.dragPerformed(Drag({150, 150})));
  EXPECT_EQ(box->events, "entered updated prepare exited ");
}

// As the button in the centre of the menu.
TEST_F(DragTest, AViewThatTakesNoFilesIsNoObstacleForADrag) {
  tree.contentView().addSubview(std::make_shared<Box>(Rect(140, 140, 20, 20)));
  box->addSubview(std::make_shared<Box>(Rect(10, 10, 20, 20)));
  EXPECT_EQ(tree.dragMoved(Drag({150, 150})), DragOperation::link);
  EXPECT_EQ(tree.dragMoved(Drag({115, 115})), DragOperation::link);
  EXPECT_EQ(tree.dragMoved(Drag({190, 150})), DragOperation::link);
  EXPECT_EQ(box->events, "entered updated updated updated ");
}

TEST_F(DragTest, ADragWithoutAListOfFilesIsOverNobody) {
  Drag text({150, 150});
  text.paths.reset();
  EXPECT_EQ(tree.dragMoved(text), DragOperation::none);
  EXPECT_FALSE(tree.dragPerformed(text));
  EXPECT_EQ(box->events, "");
}

TEST_F(DragTest, ADragThatTurnsOutToCarryNoFilesLeavesItsDestination) {
  Drag drag({150, 150});
  tree.dragMoved(drag);
  drag.paths.reset();
  EXPECT_EQ(tree.dragMoved(drag), DragOperation::none);
  EXPECT_EQ(box->events, "entered updated exited ");
}

} // namespace
} // namespace orbel
