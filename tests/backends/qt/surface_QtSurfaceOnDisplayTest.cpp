// Menu surfaces as the X server and the person in front of it see them.
#include "tests/backends/qt/surface_WindowSystemFixture.h"
#include "tests/desktop/harness/TestWindow.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

using test::ScreenRect;
constexpr auto kLeft = test::PointerButton::left;
constexpr auto kRight = test::PointerButton::right;

class QtSurfaceOnDisplay : public WindowSystemFixture {
protected:
  RecordingDelegate delegate;
};

TEST_F(QtSurfaceOnDisplay, TheWindowStandsExactlyWhereItsFrameIs) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  EXPECT_EQ(session().windows().geometry(window), (ScreenRect{300, 200, 400, 400}));
  EXPECT_TRUE(session().windows().isOverrideRedirect(window));
  EXPECT_TRUE(surface->isShown());
  surface->orderOut();
  EXPECT_TRUE(showsOwnWindows(0));
  EXPECT_FALSE(surface->isShown());
}

TEST_F(QtSurfaceOnDisplay, TheFrameMayReachBeyondTheScreen) {
  const auto surface = makeSurface(delegate, squareAround(20, 1000, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_EQ(session().windows().geometry(ownWindows().front()), (ScreenRect{-180, 800, 400, 400}));
}

TEST_F(QtSurfaceOnDisplay, ShowingTakesNoFocus) {
  test::TestWindow program(session(), {});
  ASSERT_TRUE(becomesTrue([&] { return session().windows().focusWindow() == program.id(); },
                          "the program has the focus"));
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  session().input().clickAt({500, 400});
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("released primary") == 1; }, "the click has arrived"));
  EXPECT_EQ(session().windows().focusWindow(), program.id());
  EXPECT_EQ(session().windows().activeWindow(), program.id());
}

TEST_F(QtSurfaceOnDisplay, InputIsTakenInsideTheDiscAlone) {
  test::TestWindow program(session(), {.frame = {250, 150, 600, 600}});
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  const auto windowAt = [&](int x, int y) { return session().windows().windowAt({x, y}); };
  EXPECT_EQ(windowAt(500, 400), window);
  EXPECT_EQ(windowAt(302, 400), window);
  EXPECT_EQ(windowAt(500, 597), window);
  EXPECT_EQ(windowAt(310, 210), program.id());
  EXPECT_EQ(windowAt(355, 255), program.id()); // just outside the disc on the diagonal
  EXPECT_EQ(windowAt(362, 262), window);       // just inside
}

TEST_F(QtSurfaceOnDisplay, ItStandsAboveAFullscreenProgram) {
  test::TestWindow program(session(), {.frame = {0, 0, 1280, 1024}, .isFullscreen = true});
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_EQ(session().windows().windowAt({500, 400}), ownWindows().front());
}

TEST_F(QtSurfaceOnDisplay, BothButtonsCountAndTheOthersDoNot) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  for (const auto button : {test::PointerButton::middle, test::PointerButton::wheelUp,
                            test::PointerButton::wheelDown, kRight, kLeft}) {
    session().input().click(button);
  }
  ASSERT_TRUE(
      becomesTrue([&] { return delegate.count("released primary") == 1; }, "the last click has arrived"));
  std::vector<std::string> clicks;
  for (const auto& event : delegate.heard) {
    if (event != "moved") clicks.push_back(event);
  }
  EXPECT_EQ(clicks, (std::vector<std::string>{"pressed secondary", "released secondary", "pressed primary",
                                              "released primary"}));
}

TEST_F(QtSurfaceOnDisplay, HeldModifiersComeWithTheEvents) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  session().input().pressKey(XK_Control_L);
  session().input().press(kLeft);
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("pressed primary") == 1; }, "the press has arrived"));
  EXPECT_EQ(delegate.modifierFlags, kControlFlag);
  session().input().release(kLeft);
  session().input().releaseKey(XK_Control_L);
}

TEST_F(QtSurfaceOnDisplay, MovesSayWhetherThePrimaryButtonIsDown) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  // In two steps: of the buttons an entry knows only what the program has received so far, a move knows them.
  const auto movesTo = [&](int x, bool primaryButtonIsDown) {
    session().input().movePointer({x - 5, 400});
    session().input().movePointer({x, 400});
    return becomesTrue(
        [&] { return delegate.location.x == x - 300 && delegate.primaryButtonIsDown == primaryButtonIsDown; },
        "the move has arrived");
  };
  EXPECT_TRUE(movesTo(540, false));
  session().input().press(kLeft);
  EXPECT_TRUE(movesTo(550, true));
  session().input().release(kLeft);
  EXPECT_TRUE(movesTo(560, false));
  session().input().press(kRight);
  EXPECT_TRUE(movesTo(570, false));
  session().input().release(kRight);
}

TEST_F(QtSurfaceOnDisplay, AFastSecondClickIsAClickLikeTheFirst) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  session().input().click();
  session().input().click();
  ASSERT_TRUE(
      becomesTrue([&] { return delegate.count("released primary") == 2; }, "both clicks have arrived"));
  EXPECT_EQ(delegate.count("pressed primary"), 2);
}

TEST_F(QtSurfaceOnDisplay, TheTapsActBeforeARelease) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  onDrain = [&] { delegate.heard.emplace_back("drained"); };
  surface->show();
  session().input().clickAt({500, 400});
  ASSERT_TRUE(
      becomesTrue([&] { return delegate.count("released primary") == 1; }, "the release has arrived"));
  ASSERT_GE(delegate.heard.size(), 2u);
  EXPECT_EQ(delegate.heard[delegate.heard.size() - 2], "drained");
  EXPECT_EQ(delegate.count("drained"), 1);
}

TEST_F(QtSurfaceOnDisplay, ATapMayEndTheSurfaceThatIsAboutToHearTheRelease) {
  auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  onDrain = [&] { surface.reset(); };
  surface->show();
  session().input().clickAt({500, 400});
  ASSERT_TRUE(becomesTrue([&] { return !surface; }, "the surface has gone"));
  settle();
  EXPECT_EQ(delegate.count("released primary"), 0);
}

TEST_F(QtSurfaceOnDisplay, ADelegateMayEndItsSurfaceAndShowAnother) {
  auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  RecordingDelegate other;
  delegate.onRelease = [&] {
    surface = makeSurface(other, squareAround(500, 400, 400));
    surface->show();
  };
  surface->show();
  session().input().clickAt({500, 400});
  ASSERT_TRUE(
      becomesTrue([&] { return delegate.count("released primary") == 1; }, "the release has arrived"));
  session().input().movePointer({510, 400});
  EXPECT_TRUE(becomesTrue([&] { return other.count("moved") >= 1; }, "the new surface hears the pointer"));
}

TEST_F(QtSurfaceOnDisplay, LeavingTheSquareThroughACornerIsAnExit) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("moved") >= 1; }, "the pointer is inside"));
  session().input().movePointer({310, 210});
  settle();
  EXPECT_EQ(delegate.count("exited"), 0);
  session().input().movePointer({290, 190});
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("exited") == 1; }, "the exit is reported"));
  EXPECT_EQ(delegate.location, (Point{-10, 410}));
  session().input().movePointer({200, 190});
  settle();
  EXPECT_EQ(delegate.count("exited"), 1);
}

TEST_F(QtSurfaceOnDisplay, LeavingAtOnceIsAnExitAtOnce) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("moved") >= 1; }, "the pointer is inside"));
  session().input().movePointer({900, 400});
  EXPECT_TRUE(becomesTrue([&] { return delegate.count("exited") == 1; }, "the exit is reported"));
}

TEST_F(QtSurfaceOnDisplay, AHiddenSurfaceReportsNoExit) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().input().movePointer({500, 400});
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("moved") >= 1; }, "the pointer is inside"));
  session().input().movePointer({310, 210});
  settle();
  surface->orderOut();
  session().input().movePointer({100, 100});
  settle();
  EXPECT_EQ(delegate.count("exited"), 0);
}

TEST_F(QtSurfaceOnDisplay, EscapeBelongsToThePrograms) {
  test::TestWindow program(session(), {});
  ASSERT_TRUE(becomesTrue([&] { return session().windows().focusWindow() == program.id(); },
                          "the program has the focus"));
  const auto surface = makeSurface(delegate, squareAround(900, 700, 400));
  surface->show();
  session().input().typeKey(XK_Escape);
  ASSERT_TRUE(becomesTrue([&] { return delegate.count("cancelled") == 1; }, "the menu is cancelled"));
  surface->orderOut();
  settle();
  const auto before = program.log().lines().size();
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(
      becomesTrue([&] { return program.log().lines().size() > before; }, "the program hears the key"));
  EXPECT_EQ(delegate.count("cancelled"), 1);
}

TEST_F(QtSurfaceOnDisplay, LevelsHoldWhateverIsShownLast) {
  RecordingDelegate subDelegate;
  const auto sub = makeSurface(subDelegate, squareAround(600, 450, 300), SurfaceLevel::subMenu);
  const auto menu = makeSurface(delegate, squareAround(500, 400, 400));
  const auto bubble = system->makeBubble("Title");
  bubble->show(*wholeScreen, squareAround(560, 420, 40));
  sub->show();
  menu->show();
  ASSERT_TRUE(showsOwnWindows(3));
  const auto windows = ownWindows();
  EXPECT_EQ(session().windows().geometry(windows[0]), (ScreenRect{300, 200, 400, 400}));
  EXPECT_EQ(session().windows().geometry(windows[1]), (ScreenRect{450, 300, 300, 300}));
}

TEST_F(QtSurfaceOnDisplay, ShowingAgainRaises) {
  RecordingDelegate otherDelegate;
  const auto first = makeSurface(delegate, squareAround(500, 400, 400));
  const auto second = makeSurface(otherDelegate, squareAround(520, 400, 400));
  first->show();
  second->show();
  ASSERT_TRUE(showsOwnWindows(2));
  const auto top = ownWindows().back();
  first->show();
  EXPECT_TRUE(becomesTrue([&] { return ownWindows().size() == 2 && ownWindows().front() == top; },
                          "the first is on top"));
}

TEST_F(QtSurfaceOnDisplay, TheFirstPictureNeedsNoTurnOfTheLoop) {
  delegate.drawing = [](Canvas& canvas) { canvas.fillRect({190, 190, 20, 20}, Color{0, 1, 0}); };
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  session().display().roundTrip();
  EXPECT_EQ(session().screen().pixel({500, 400}), (test::Rgb{0, 255, 0}));
}

TEST_F(QtSurfaceOnDisplay, OnlyDamageIsPainted) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  settle();
  delegate.painted.clear();
  surface->needsDisplay({100, 100, 20, 10});
  surface->needsDisplay({130, 120, 10, 10});
  EXPECT_TRUE(delegate.painted.empty());
  ASSERT_TRUE(becomesTrue([&] { return !delegate.painted.empty(); }, "the damage is painted"));
  EXPECT_EQ(delegate.painted, (std::vector<Rect>{{100, 100, 40, 30}}));
  settle();
  EXPECT_EQ(delegate.painted.size(), 1u);
}

TEST_F(QtSurfaceOnDisplay, BeingCoveredAndUncoveredPaintsNothing) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  settle();
  delegate.painted.clear();
  const auto bubble = system->makeBubble("Title");
  bubble->show(*wholeScreen, squareAround(500, 400, 40));
  ASSERT_TRUE(showsOwnWindows(2));
  const auto covered = session().screen().pixel({500, 435});
  bubble->close();
  ASSERT_TRUE(becomesTrue(
      [&] {
        return session().screen().pixel({500, 435}) != covered;
      },
      "the disc is whole again"));
  EXPECT_TRUE(delegate.painted.empty());
}

TEST_F(QtSurfaceOnDisplay, TheNextSurfaceUsesTheSameWindow) {
  auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  surface.reset();
  ASSERT_TRUE(showsOwnWindows(0));
  surface = makeSurface(delegate, squareAround(600, 500, 300));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_EQ(ownWindows().front(), window);
  EXPECT_EQ(session().windows().geometry(window), (ScreenRect{450, 350, 300, 300}));
}

TEST_F(QtSurfaceOnDisplay, ThePointerOverABubbleCountsAsOverThePopUp) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  const auto bubble = system->makeBubble("Title");
  bubble->show(*wholeScreen, squareAround(500, 580, 40));
  session().input().movePointer({500, 620});
  session().display().roundTrip();
  EXPECT_TRUE(surface->pointerIsOverOwnPopUp());
  session().input().movePointer({500, 700});
  session().display().roundTrip();
  EXPECT_FALSE(surface->pointerIsOverOwnPopUp());
  session().input().movePointer({500, 620});
  bubble->close();
  session().display().roundTrip();
  EXPECT_FALSE(surface->pointerIsOverOwnPopUp());
}

} // namespace
} // namespace orbel::qt
