// Title bubbles as the X server and the person in front of it see them.
#include "backends/qt/canvas/BubbleLayout.h"
#include "backends/qt/canvas/BubblePicture.h"
#include "tests/backends/qt/surface_WindowSystemFixture.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

using test::ScreenRect;

class QtBubbleOnDisplay : public WindowSystemFixture {
protected:
  static ScreenRect place() {
    return session().windows().geometry(ownWindows().front()).value_or(ScreenRect{});
  }
  testing::AssertionResult movesTo(int x, int y) {
    return becomesTrue([&] { return place().x == x && place().y == y; }, "the bubble follows");
  }
  static constexpr int kMargin = static_cast<int>(BubblePicture::kMargin);
};

TEST_F(QtBubbleOnDisplay, ItHangsBelowItsAnchor) {
  const auto bubble = system->makeBubble("Music Player");
  EXPECT_FALSE(bubble->isShown());
  bubble->show(*wholeScreen, squareAround(500, 400, 60));
  EXPECT_TRUE(bubble->isShown());
  ASSERT_TRUE(showsOwnWindows(1));
  const ScreenRect window = place();
  EXPECT_EQ(window.y + kMargin, 430); // the arrow's tip
  EXPECT_NEAR(window.x + window.width / 2.0, 500, 1);
  // Its body is light, just below the arrow.
  session().display().roundTrip();
  EXPECT_GT(session().screen().pixel({500, 442}).red, 235);
  bubble->close();
  EXPECT_FALSE(bubble->isShown());
  EXPECT_TRUE(showsOwnWindows(0));
}

TEST_F(QtBubbleOnDisplay, ClicksGoThroughIt) {
  const auto bubble = system->makeBubble("Music Player");
  bubble->show(*wholeScreen, squareAround(500, 400, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_NE(session().windows().windowAt({500, 450}), ownWindows().front());
}

TEST_F(QtBubbleOnDisplay, ItFollowsItsAnchor) {
  const auto bubble = system->makeBubble("Music Player");
  bubble->show(*wholeScreen, squareAround(500, 400, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  const ScreenRect before = place();
  const auto window = ownWindows().front();
  bubble->show(*wholeScreen, squareAround(523, 391, 60));
  ASSERT_TRUE(movesTo(before.x + 23, before.y - 9));
  EXPECT_EQ(place().width, before.width);
  EXPECT_EQ(ownWindows().front(), window);
  EXPECT_GT(session().screen().pixel({523, 433}).red, 235);
}

TEST_F(QtBubbleOnDisplay, AtTheBottomOfTheScreenItStandsAbove) {
  const auto bubble = system->makeBubble("Music Player");
  bubble->show(*wholeScreen, squareAround(500, 980, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  const ScreenRect window = place();
  EXPECT_EQ(window.y + window.height - kMargin, 950);
}

TEST_F(QtBubbleOnDisplay, AtTheSideOfTheScreenItStaysOnIt) {
  const auto bubble = system->makeBubble("A rather long title of a thing");
  bubble->show(*wholeScreen, squareAround(1270, 400, 30));
  ASSERT_TRUE(showsOwnWindows(1));
  const ScreenRect window = place();
  EXPECT_LE(window.x + window.width - kMargin, test::VirtualDisplay::kWidth);
}

TEST_F(QtBubbleOnDisplay, OneWindowServesManyTitlesInTurn) {
  const auto first = system->makeBubble("Mail");
  first->show(*wholeScreen, squareAround(500, 400, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  const int narrow = place().width;
  first->close();
  const auto second = system->makeBubble("A much longer title");
  second->show(*wholeScreen, squareAround(600, 500, 60));
  ASSERT_TRUE(
      becomesTrue([&] { return ownWindows().size() == 1 && place().width > narrow; }, "the second is shown"));
  EXPECT_EQ(ownWindows().front(), window);
}

TEST_F(QtBubbleOnDisplay, TwoMayBeShownAtATime) {
  const auto first = system->makeBubble("Mail");
  const auto second = system->makeBubble("Music");
  first->show(*wholeScreen, squareAround(300, 400, 60));
  second->show(*wholeScreen, squareAround(600, 400, 60));
  EXPECT_TRUE(showsOwnWindows(2));
}

TEST_F(QtBubbleOnDisplay, ItsAnchorIsInThePointsOfTheSurface) {
  RecordingDelegate delegate;
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  const auto bubble = system->makeBubble("Music Player");
  bubble->show(*surface, Rect::centeredAt({200, 200}, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_EQ(place().y + kMargin, 430);
  EXPECT_NEAR(place().x + place().width / 2.0, 500, 1);
  const ScreenRect before = place();
  surface->setFrame(squareAround(520, 390, 400));
  bubble->show(*surface, Rect::centeredAt({200, 200}, 60));
  EXPECT_TRUE(movesTo(before.x + 20, before.y - 10));
}

TEST_F(QtBubbleOnDisplay, AnEqualAnchorMovesNothing) {
  const auto bubble = system->makeBubble("Mail");
  const Rect anchor = squareAround(500, 400, 60);
  bubble->show(*wholeScreen, anchor);
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  // Moved away behind its back: only a bubble that is placed anew comes back.
  const std::uint32_t elsewhere[] = {100, 100};
  xcb_configure_window(session().display().get(), window, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                       elsewhere);
  settle();
  bubble->show(*wholeScreen, anchor);
  settle();
  EXPECT_EQ(place().x, 100);
  bubble->show(*wholeScreen, squareAround(501, 400, 60));
  EXPECT_TRUE(becomesTrue([&] { return place().x != 100; }, "another anchor places it"));
}

TEST_F(QtBubbleOnDisplay, ADestroyedBubbleIsClosed) {
  auto bubble = system->makeBubble("Mail");
  bubble->show(*wholeScreen, squareAround(500, 400, 60));
  ASSERT_TRUE(showsOwnWindows(1));
  bubble.reset();
  EXPECT_TRUE(showsOwnWindows(0));
}

} // namespace
} // namespace orbel::qt
