#include "chrome/BezelView.h"
#include "chrome/CloseButton.h"

#include "tests/doubles/FakeViewTreeHost.h"
#include "tests/doubles/ManualRunLoop.h"
#include "tests/doubles/RecordingCanvas.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class Superview : public View {
public:
  using View::View;
  void mouseEntered(const MouseEvent&) override { ++entered; }
  void mouseExited(const MouseEvent&) override { ++exited; }
  void mouseMoved(const MouseEvent&) override { ++moved; }
  int entered = 0;
  int exited = 0;
  int moved = 0;
};

class SmallControlsTest : public testing::Test {
protected:
  SmallControlsTest() { superview->addSubview(button); }
  RecordingCanvas drawn() {
    RecordingCanvas canvas;
    button->draw(canvas);
    return canvas;
  }
  Color drawnColor() { return drawn().named("strokeRoundedRect").at(0).color; }

  std::shared_ptr<Superview> superview = std::make_shared<Superview>(Rect(0, 0, 100, 100));
  std::shared_ptr<CloseButton> button = std::make_shared<CloseButton>(Rect(40, 40, 20, 20));
};

TEST_F(SmallControlsTest, AReleaseInsideIsAClick) {
  int clicks = 0;
  button->setMouseClickBlock([&](const MouseEvent&) { ++clicks; });
  button->mouseDown({{50, 50}});
  EXPECT_TRUE(button->isHighlighted());
  EXPECT_EQ(drawnColor(), Color::lightGray());
  button->mouseUp({{50, 50}});
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(clicks, 1);
}

TEST_F(SmallControlsTest, AReleaseOutsideIsNoClickAndRedrawsInTheDefaultColour) {
  int clicks = 0;
  button->setMouseClickBlock([&](const MouseEvent&) { ++clicks; });
  button->mouseDown({{50, 50}});
  button->mouseUp({{61, 50}});
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(drawnColor(), Color::darkGray());
}

TEST_F(SmallControlsTest, WithoutABlockEntryAndExitGoToTheSuperview) {
  button->mouseEntered({});
  button->mouseExited({});
  EXPECT_EQ(superview->entered, 1);
  EXPECT_EQ(superview->exited, 1);
}

TEST_F(SmallControlsTest, WithABlockTheSuperviewSeesNoEntry) {
  int entered = 0;
  button->setMouseEnterBlock([&](const MouseEvent&) { ++entered; });
  button->setMouseLeaveBlock([&](const MouseEvent&) { ++entered; });
  button->mouseEntered({});
  button->mouseExited({});
  EXPECT_EQ(entered, 2);
  EXPECT_EQ(superview->entered + superview->exited, 0);
}

TEST_F(SmallControlsTest, MovesAlwaysGoToTheSuperview) {
  button->mouseMoved({});
  EXPECT_EQ(superview->moved, 1);
}

TEST_F(SmallControlsTest, TheTrackingAreaIsTheWholeButtonAlsoAfterAResize) {
  EXPECT_EQ(button->trackingArea(), Rect(0, 0, 20, 20));
  button->setFrame({0, 0, 30, 30});
  EXPECT_EQ(button->trackingArea(), Rect(0, 0, 30, 30));
}

TEST_F(SmallControlsTest, AColourChangedWhilePressedShowsAtOnce) {
  button->mouseDown({{50, 50}});
  button->setHighlightColor({1, 0, 0, 1});
  EXPECT_EQ(drawnColor(), (Color{1, 0, 0, 1}));
  button->setDefaultColor({0, 1, 0, 1});
  EXPECT_EQ(drawnColor(), (Color{1, 0, 0, 1}));
  button->mouseUp({{50, 50}});
  EXPECT_EQ(drawnColor(), (Color{0, 1, 0, 1}));
}

TEST_F(SmallControlsTest, NoStrokeColourLeavesTheDrawingAsItIs) {
  button->setStrokeColor(std::nullopt);
  EXPECT_EQ(drawnColor(), Color::darkGray());
}

TEST_F(SmallControlsTest, AButtonOf20PointsIsACircleOf18WithACrossInItsMiddleHalf) {
  const RecordingCanvas canvas = drawn();
  const auto outline = canvas.named("strokeRoundedRect").at(0);
  EXPECT_EQ(outline.rect, Rect(1, 1, 18, 18));
  EXPECT_EQ(outline.radius, 10);
  EXPECT_EQ(outline.lineWidth, 1);
  const auto lines = canvas.named("strokeLine");
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].rect, Rect(5, 5, 10, 10));
  EXPECT_EQ(lines[1].rect, Rect(5, 15, 10, -10));
}

class SmallControlsInAWindowTest : public SmallControlsTest {
protected:
  SmallControlsInAWindowTest() { tree.contentView().addSubview(superview); }
  // What `change` makes the window draw anew.
  Rect damageOf(const std::function<void()>& change) {
    host.damage = {};
    change();
    return host.damage;
  }

  FakeViewTreeHost host{Rect(0, 0, 200, 200)};
  ManualRunLoop runLoop;
  ViewTree tree{host, runLoop, false};
};

TEST_F(SmallControlsInAWindowTest, APlainViewIsDrawnAnewWhenItsPressBeginsAndEnds) {
  const auto plain = std::make_shared<MouseSensitiveView>(Rect(10, 10, 30, 20));
  superview->addSubview(plain);
  EXPECT_EQ(damageOf([&] { plain->mouseDown({{15, 15}}); }), plain->frame());
  EXPECT_EQ(damageOf([&] { plain->mouseUp({{15, 15}}); }), plain->frame());
  plain->mouseDown({{15, 15}});
  EXPECT_EQ(damageOf([&] { plain->mouseCancelled(); }), plain->frame());
}

TEST_F(SmallControlsInAWindowTest, TheButtonIsDrawnAnewInEveryOtherColour) {
  EXPECT_EQ(damageOf([&] { button->setStrokeColor(Color{1, 0, 0, 1}); }), button->frame());
  EXPECT_TRUE(damageOf([&] { button->setStrokeColor(Color{1, 0, 0, 1}); }).isEmpty());
  EXPECT_TRUE(damageOf([&] { button->setStrokeColor(std::nullopt); }).isEmpty());
}

TEST_F(SmallControlsInAWindowTest, APressWhoseReleaseIsLostIsNoClickAndTakesTheHighlightAway) {
  int clicks = 0;
  button->setMouseClickBlock([&](const MouseEvent&) { ++clicks; });
  tree.pointerPressed(PointerButton::primary, {{50, 50}});
  ASSERT_TRUE(button->isHighlighted());
  tree.pointerMoved({{50, 50}});
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(drawnColor(), Color::darkGray());
  EXPECT_EQ(clicks, 0);
}

TEST_F(SmallControlsTest, AClickOnDecorationReachesTheViewBeneath) {
  const auto decoration = std::make_shared<BezelView>(Rect(0, 0, 100, 100));
  superview->addSubview(decoration);
  EXPECT_EQ(superview->hitTest({50, 50}), button.get());
}

} // namespace
} // namespace orbel
