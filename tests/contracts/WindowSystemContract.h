// What every WindowSystem, with its Surfaces and Bubbles, keeps to. Drags and pictures have their own tests.
//
// Subject: a window system on a screen of at least 1000 by 1000 points, with a pointer that rests in its
// lower right corner, and a keyboard.
//   WindowSystem& windows();
//   bool waitFor(const std::function<bool()>&);  lets the display work until that holds; false if it never
//                                                does
//   void settle();                               lets the display deal with all that has happened so far
//   void movePointer(Point screenPoint);         in screen points, y up; what comes of it and of the next
//   void press(PointerButton);                   ones may come later
//   void release(PointerButton);
//   void pressEscape();
#pragma once

#include "platform/WindowSystem.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel::contracts {

class HearingDelegate : public SurfaceDelegate {
public:
  void paint(Canvas&, const Rect& dirty) override { painted = painted.unitedWith(dirty); }
  void pointerMoved(const MouseEvent& event) override {
    ++moves;
    location = event.locationInWindow;
  }
  void pointerExited(const MouseEvent&) override { heard += "exited "; }
  void pointerPressed(PointerButton button, const MouseEvent& event) override {
    heard += button == PointerButton::primary ? "pressed " : "pressed secondary ";
    location = event.locationInWindow;
  }
  void pointerReleased(PointerButton button, const MouseEvent&) override {
    heard += button == PointerButton::primary ? "released " : "released secondary ";
    if (onRelease) onRelease();
  }
  void cancelRequested() override { heard += "cancelled "; }
  DragOperation dragMoved(const DragInfo&) override { return DragOperation::none; }
  void dragExited() override {}
  bool dragPerformed(const DragInfo&) override { return false; }

  std::string heard; // all but moves
  int moves = 0;
  Point location{-1000, -1000}; // of the newest move or press
  Rect painted;                 // all of it together
  std::function<void()> onRelease;
};

template <class Subject>
class WindowSystemContract : public testing::Test {
protected:
  static constexpr Point kCenter{500, 600};
  static constexpr double kSide = 400;
  static constexpr Rect kFrame{300, 400, kSide, kSide};

  std::unique_ptr<Surface> makeSurface(HearingDelegate& hearing, const Rect& frame = kFrame,
                                       SurfaceLevel level = SurfaceLevel::menu) {
    auto surface = subject.windows().makeSurface(level);
    surface->setDelegate(&hearing);
    surface->setRoundBackdrop(BackdropMaterial::darkFrost, 1);
    surface->setFrame(frame);
    return surface;
  }
  // Moves the pointer there, over the surface, and waits until the surface was notified of it.
  testing::AssertionResult hears(HearingDelegate& hearing, Point screenPoint, Point inSurface) {
    subject.movePointer(screenPoint);
    if (subject.waitFor([&] { return hearing.location == inSurface; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "no movement at " << inSurface.x << ", " << inSurface.y;
  }
  void click(PointerButton button = PointerButton::primary) {
    subject.press(button);
    subject.release(button);
  }
  testing::AssertionResult comesTo(const HearingDelegate& hearing, const std::string& heard) {
    if (subject.waitFor([&] { return hearing.heard == heard; })) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "heard: " << hearing.heard;
  }

  Subject subject;
  HearingDelegate delegate;
  HearingDelegate other;
};

TYPED_TEST_SUITE_P(WindowSystemContract);

TYPED_TEST_P(WindowSystemContract, ASurfaceIsShownFromShowToOrderOut) {
  const auto surface = this->makeSurface(this->delegate);
  EXPECT_FALSE(surface->isShown());
  EXPECT_EQ(surface->frame(), this->kFrame);
  EXPECT_EQ(surface->alpha(), 1);
  EXPECT_GE(surface->backingScale(), 1);
  surface->show();
  surface->show();
  EXPECT_TRUE(surface->isShown());
  EXPECT_EQ(surface->frame(), this->kFrame);
  surface->orderOut();
  surface->orderOut();
  EXPECT_FALSE(surface->isShown());
  EXPECT_EQ(this->delegate.heard, "");
}

TYPED_TEST_P(WindowSystemContract, AlphaIsCutToItsRange) {
  const auto surface = this->makeSurface(this->delegate);
  for (const auto& [asked, given] : std::vector<std::pair<double, double>>{{0.25, 0.25}, {-1, 0}, {2, 1}}) {
    surface->setAlpha(asked);
    EXPECT_EQ(surface->alpha(), given);
  }
}

TYPED_TEST_P(WindowSystemContract, ShowingPaintsEverythingAndLaterOnlyWhatNeedsIt) {
  const Rect bounds({0, 0}, this->kFrame.size);
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->subject.waitFor([&] { return this->delegate.painted == bounds; }));
  this->subject.settle();
  this->delegate.painted = {};
  surface->needsDisplay({100, 100, 20, 10});
  EXPECT_TRUE(this->delegate.painted.isEmpty()) << "never within the call";
  ASSERT_TRUE(this->subject.waitFor([&] { return !this->delegate.painted.isEmpty(); }));
  EXPECT_EQ(this->delegate.painted, Rect(100, 100, 20, 10));
}

TYPED_TEST_P(WindowSystemContract, AHiddenSurfaceIsNotPainted) {
  const auto surface = this->makeSurface(this->delegate);
  surface->needsDisplay({0, 0, 50, 50});
  this->subject.settle();
  EXPECT_TRUE(this->delegate.painted.isEmpty());
  surface->show();
  ASSERT_TRUE(this->subject.waitFor([&] { return !this->delegate.painted.isEmpty(); }));
  this->subject.settle();
  surface->orderOut();
  this->delegate.painted = {};
  surface->needsDisplay({0, 0, 50, 50});
  this->subject.settle();
  EXPECT_TRUE(this->delegate.painted.isEmpty());
}

TYPED_TEST_P(WindowSystemContract, ThePointerIsToldInTheSurfacesOwnPoints) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, {540, 650}, {240, 250}));
  EXPECT_EQ(surface->pointerLocation(), (Point{240, 250}));
  this->subject.movePointer({250, 200});
  this->subject.settle();
  EXPECT_EQ(surface->pointerLocation(), (Point{-50, -200}));
}

TYPED_TEST_P(WindowSystemContract, TheFrameMayChangeWhileTheSurfaceIsShown) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  surface->setFrame({100, 400, 400, 400});
  EXPECT_EQ(surface->frame(), Rect(100, 400, 400, 400));
  EXPECT_TRUE(this->hears(this->delegate, {310, 650}, {210, 250}));
}

TYPED_TEST_P(WindowSystemContract, BothButtonsAreToldApart) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  this->click(PointerButton::primary);
  this->click(PointerButton::secondary);
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released pressed secondary released secondary "));
}

TYPED_TEST_P(WindowSystemContract, OutsideItsDiscASurfaceTakesNoInput) {
  const auto menu = this->makeSurface(this->delegate);
  const auto sub = this->makeSurface(this->other, {400, 500, 200, 200}, SurfaceLevel::subMenu);
  menu->show();
  sub->show();
  // In the square of the sub-menu and outside its disc.
  ASSERT_TRUE(this->hears(this->delegate, {415, 515}, {115, 115}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released "));
  ASSERT_TRUE(this->hears(this->other, this->kCenter, {100, 100}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->other, "pressed released "));
}

TYPED_TEST_P(WindowSystemContract, LeavingTheDiscIsNoExitAndLeavingTheSquareIsOne) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  this->subject.movePointer({310, 790});
  this->subject.settle();
  // Only the way back can be waited for: an exit would have come before it.
  ASSERT_TRUE(this->hears(this->delegate, {500, 602}, {200, 202}));
  EXPECT_EQ(this->delegate.heard, "");
  this->subject.movePointer({310, 790});
  this->subject.movePointer({290, 810});
  EXPECT_TRUE(this->comesTo(this->delegate, "exited "));
  this->subject.movePointer({200, 810});
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  EXPECT_EQ(this->delegate.heard, "exited ");
  this->subject.movePointer({900, 600});
  EXPECT_TRUE(this->comesTo(this->delegate, "exited exited "));
}

TYPED_TEST_P(WindowSystemContract, ASurfaceThatIsOrderedOutHearsOfNoExit) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  surface->orderOut();
  this->subject.movePointer({900, 600});
  this->subject.settle();
  const auto later = this->makeSurface(this->other);
  later->show();
  ASSERT_TRUE(this->hears(this->other, {500, 610}, {200, 210}));
  EXPECT_EQ(this->delegate.heard, "");
}

TYPED_TEST_P(WindowSystemContract, APressedButtonKeepsThePointerUntilItsRelease) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  this->subject.press(PointerButton::primary);
  ASSERT_TRUE(this->hears(this->delegate, {900, 600}, {600, 200}));
  EXPECT_EQ(this->delegate.heard, "pressed ");
  this->subject.release(PointerButton::primary);
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released exited "));
}

TYPED_TEST_P(WindowSystemContract, SubMenusStandAboveMenusWhateverIsShownLast) {
  const auto sub = this->makeSurface(this->other, this->kFrame, SurfaceLevel::subMenu);
  const auto menu = this->makeSurface(this->delegate);
  sub->show();
  menu->show();
  ASSERT_TRUE(this->hears(this->other, this->kCenter, {200, 200}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->other, "pressed released "));
  EXPECT_EQ(this->delegate.heard, "");
}

TYPED_TEST_P(WindowSystemContract, ShowingAgainRaises) {
  const auto first = this->makeSurface(this->delegate);
  const auto second = this->makeSurface(this->other);
  first->show();
  second->show();
  first->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released "));
  EXPECT_EQ(this->other.heard, "");
}

TYPED_TEST_P(WindowSystemContract, EscapeReachesTheTopmostSurfaceThatIsShown) {
  const auto menu = this->makeSurface(this->delegate);
  const auto sub = this->makeSurface(this->other, {400, 500, 200, 200}, SurfaceLevel::subMenu);
  this->subject.pressEscape();
  menu->show();
  sub->show();
  this->subject.settle();
  this->subject.pressEscape();
  ASSERT_TRUE(this->comesTo(this->other, "cancelled "));
  EXPECT_EQ(this->delegate.heard, "");
  sub->orderOut();
  this->subject.pressEscape();
  EXPECT_TRUE(this->comesTo(this->delegate, "cancelled "));
  EXPECT_EQ(this->other.heard, "cancelled ");
}

TYPED_TEST_P(WindowSystemContract, ADelegateMayEndItsSurfaceAndASurfaceMayHaveNone) {
  auto surface = this->makeSurface(this->delegate);
  this->delegate.onRelease = [&] { surface.reset(); };
  surface->show();
  ASSERT_TRUE(this->hears(this->delegate, this->kCenter, {200, 200}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released "));
  EXPECT_FALSE(surface);

  const auto silent = this->makeSurface(this->other);
  silent->setDelegate(nullptr);
  silent->show();
  this->click();
  this->subject.pressEscape();
  this->subject.movePointer({900, 600});
  this->subject.settle();
  EXPECT_EQ(this->other.heard, "");
  EXPECT_EQ(this->other.moves, 0);
  EXPECT_TRUE(this->other.painted.isEmpty());
}

TYPED_TEST_P(WindowSystemContract, ThePointerIsLocatedOnTheScreen) {
  this->subject.movePointer({321, 654});
  this->subject.settle();
  EXPECT_EQ(this->subject.windows().pointerLocation(), (Point{321, 654}));
  std::vector<Point> located;
  const auto request = this->subject.windows().locatePointer([&](Point point) { located.push_back(point); });
  ASSERT_TRUE(this->subject.waitFor([&] { return !located.empty(); }));
  EXPECT_EQ(located, (std::vector<Point>{{321, 654}}));
  this->subject.movePointer({400, 700});
  this->subject.settle();
  EXPECT_EQ(located.size(), 1u) << "it was no guess";
}

TYPED_TEST_P(WindowSystemContract, ThePointerIsLocatedAtMostTwice) {
  std::vector<Point> located;
  const auto request = this->subject.windows().locatePointer([&](Point point) { located.push_back(point); });
  for (const Point place : {Point{321, 654}, Point{400, 700}, Point{500, 710}}) {
    this->subject.movePointer(place);
    this->subject.settle();
  }
  EXPECT_GE(located.size(), 1u);
  EXPECT_LE(located.size(), 2u);
}

TYPED_TEST_P(WindowSystemContract, AGuessOfThePointersPlaceIsNotCorrectedAfterAPress) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  std::vector<Point> located;
  const auto request = this->subject.windows().locatePointer([&](Point point) { located.push_back(point); });
  this->subject.settle();
  this->click();
  this->subject.settle();
  const std::size_t before = located.size();
  if (before == 0) return; // still unknown, and so no guess
  this->subject.movePointer(this->kCenter);
  this->subject.settle();
  EXPECT_EQ(located.size(), before);
}

TYPED_TEST_P(WindowSystemContract, AnEndedRequestForThePointerIsNotAnswered) {
  int calls = 0;
  auto request = this->subject.windows().locatePointer([&](Point) { ++calls; });
  const int before = calls;
  request.reset();
  this->subject.movePointer({321, 654});
  this->subject.settle();
  EXPECT_EQ(calls, before);
}

TYPED_TEST_P(WindowSystemContract, ARequestForThePointerMayEndWithinItsAnswer) {
  int calls = 0;
  Registration request;
  request = this->subject.windows().locatePointer([&](Point) {
    ++calls;
    request.reset();
  });
  this->subject.movePointer({321, 654});
  this->subject.settle();
  EXPECT_EQ(calls, 1);
}

TYPED_TEST_P(WindowSystemContract, ABubbleIsShownUntilItIsClosedAndTakesNoInput) {
  const auto surface = this->makeSurface(this->delegate);
  surface->show();
  auto bubble = this->subject.windows().makeBubble("Title");
  EXPECT_FALSE(bubble->isShown());
  bubble->close();
  bubble->show(*surface, Rect::centeredAt({180, 240}, 40));
  bubble->show(*surface, Rect::centeredAt({200, 200}, 60));
  EXPECT_TRUE(bubble->isShown());
  // Where the bubble hangs.
  ASSERT_TRUE(this->hears(this->delegate, {500, 550}, {200, 150}));
  this->click();
  EXPECT_TRUE(this->comesTo(this->delegate, "pressed released "));
  bubble->close();
  bubble->close();
  EXPECT_FALSE(bubble->isShown());
  bubble->show(*surface, Rect::centeredAt({200, 200}, 60));
  EXPECT_TRUE(bubble->isShown());
  bubble.reset();
}

REGISTER_TYPED_TEST_SUITE_P(
    WindowSystemContract, ASurfaceIsShownFromShowToOrderOut, AlphaIsCutToItsRange,
    ShowingPaintsEverythingAndLaterOnlyWhatNeedsIt, AHiddenSurfaceIsNotPainted,
    ThePointerIsToldInTheSurfacesOwnPoints, TheFrameMayChangeWhileTheSurfaceIsShown, BothButtonsAreToldApart,
    OutsideItsDiscASurfaceTakesNoInput, LeavingTheDiscIsNoExitAndLeavingTheSquareIsOne,
    ASurfaceThatIsOrderedOutHearsOfNoExit, APressedButtonKeepsThePointerUntilItsRelease,
    SubMenusStandAboveMenusWhateverIsShownLast, ShowingAgainRaises, EscapeReachesTheTopmostSurfaceThatIsShown,
    ADelegateMayEndItsSurfaceAndASurfaceMayHaveNone, ThePointerIsLocatedOnTheScreen,
    ThePointerIsLocatedAtMostTwice, AGuessOfThePointersPlaceIsNotCorrectedAfterAPress,
    AnEndedRequestForThePointerIsNotAnswered, ARequestForThePointerMayEndWithinItsAnswer,
    ABubbleIsShownUntilItIsClosedAndTakesNoInput);

} // namespace orbel::contracts
