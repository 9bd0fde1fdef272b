// The shortcut, where the menu appears, how large it is, and what a press through its corner reaches.
#include "tests/desktop/menu/MenuFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include "tests/support/x11/Wallpaper.h"

#include <array>
#include <cmath>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};
constexpr std::array<ScreenPoint, 4> kDirections{{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};

class SummonTest : public MenuFixture, public testing::WithParamInterface<WindowManagerKind> {
protected:
  SummonTest() : MenuFixture({.windowManager = GetParam()}) {}

  // How far from the place something else than the wallpaper is seen, looking inwards from far away.
  int extentFrom(ScreenPoint place, ScreenPoint direction) {
    constexpr int kFar = 320;
    constexpr int kUnlikeWallpaper = 24;
    for (int distance = kFar; distance > 0; --distance) {
      const ScreenPoint point{place.x + direction.x * distance, place.y + direction.y * distance};
      if (!m_session.screen().bounds().contains(point)) continue;
      if (difference(m_session.screen().pixel(point), Wallpaper::colorAt(point)) > kUnlikeWallpaper)
        return distance;
    }
    return 0;
  }

  // The rim's outer edge lies a point inside the menu's square.
  void expectRoundDisc(ScreenPoint center, int side) {
    const auto frame = menuFrame().value();
    EXPECT_EQ(frame.width, side);
    EXPECT_EQ(frame.height, side);
    EXPECT_NEAR(frame.center().x, center.x, 1);
    EXPECT_NEAR(frame.center().y, center.y, 1);
    for (const ScreenPoint direction : kDirections)
      EXPECT_NEAR(extentFrom(center, direction), side / 2 - 1, 1) << "towards " << direction;
    // On the diagonal the square reaches far beyond the disc: there the desktop is seen untouched.
    const int diagonal = static_cast<int>((side / 2.0 + 4) * std::sqrt(0.5));
    for (const ScreenPoint corner : {ScreenPoint{1, 1}, {1, -1}, {-1, 1}, {-1, -1}}) {
      const ScreenPoint point{center.x + corner.x * diagonal, center.y + corner.y * diagonal};
      EXPECT_TRUE(hasColor(point, Wallpaper::colorAt(point)));
    }
  }
};

TEST_P(SummonTest, TheShortcutShowsARoundMenuCentredOnThePointer) {
  startAgent();
  ASSERT_TRUE(summonAt(kPlace));
  expectRoundDisc(kPlace, 400);
  savePicture("at rest");
}

TEST_P(SummonTest, TheShortcutHidesTheMenuUnderThePointerAndMovesItFromElsewhere) {
  startAgent();
  ASSERT_TRUE(summonAt(kPlace));
  m_input.movePointer({kPlace.x + 60, kPlace.y + 60});
  pressShortcut();
  ASSERT_TRUE(waitUntilMenuHidden());

  ASSERT_TRUE(summonAt(kPlace));
  const ScreenPoint elsewhere{kPlace.x - 330, kPlace.y - 120};
  ASSERT_TRUE(summonAt(elsewhere));
  expectRoundDisc(elsewhere, 400);
  EXPECT_EQ(agent().menuWindows().size(), 1U);
  // Where it was, nothing of it is left.
  const ScreenPoint left{kPlace.x + 150, kPlace.y};
  EXPECT_TRUE(waitFor([&] { return hasColor(left, Wallpaper::colorAt(left)); }, "the old place is free"));
}

TEST_P(SummonTest, TheMenuIsCentredOnThePointerAlsoAtTheScreensEdge) {
  startAgent();
  ASSERT_TRUE(summonAt({20, 30}));
  EXPECT_EQ(menuFrame(), (ScreenRect{-180, -170, 400, 400}));
}

TEST_P(SummonTest, SizesTwoAndThreeAre500And600Points) {
  m_session.preferences().setInteger("menuSizeSettings", 2);
  startAgent();
  ASSERT_TRUE(summonAt(kPlace));
  expectRoundDisc(kPlace, 500);
  quitAgent();

  m_session.preferences().setInteger("menuSizeSettings", 3);
  startAgentAlone();
  ASSERT_TRUE(summonAt(kPlace));
  expectRoundDisc(kPlace, 600);
}

TEST_P(SummonTest, AClickInTheTransparentCornerReachesTheWindowBelow) {
  const TestWindow below(m_session, {.frame = {300, 200, 700, 600}});
  startAgent();
  ASSERT_TRUE(waitUntilActive(below));
  const ScreenPoint center = below.frame().center();
  ASSERT_TRUE(summonAt(center));
  const auto frame = menuFrame().value();
  const ScreenPoint corner{frame.x + 30, frame.y + 30};
  EXPECT_EQ(m_windows.windowAt(corner), below.id());
  EXPECT_EQ(m_windows.windowAt({frame.x + 200, frame.y + 4}), menuWindow());
  m_input.clickAt(corner);
  const std::string press = "button-press 1 " + std::to_string(corner.x - below.frame().x) + ' ' +
                            std::to_string(corner.y - below.frame().y);
  EXPECT_TRUE(waitFor([&] { return below.log().contains(press); }, "the window below saw the press"));
  EXPECT_TRUE(waitFor([&] { return below.log().contains("button-release"); }, "and the release"));
  // The corner belongs to the menu's square all the same, so it stays.
  EXPECT_TRUE(
      holdsFor([&] { return isMenuShown(center); }, std::chrono::milliseconds(300), "the menu stays"));
}

TEST_P(SummonTest, TheMenuCoversAFullscreenWindowWithoutTakingItsKeys) {
  const TestWindow film(m_session, {.isFullscreen = true});
  ASSERT_TRUE(waitUntilActive(film));
  startAgent();
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_EQ(m_windows.windowAt({kPlace.x, kPlace.y - 100}), menuWindow());
  EXPECT_EQ(m_windows.focusWindow(), film.id());
  m_input.typeText("a");
  EXPECT_TRUE(waitFor([&] { return film.log().contains("key-press 0x61"); }, "it gets what is typed"));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, SummonTest, allWindowManagers(), nameOfInstance);

} // namespace
