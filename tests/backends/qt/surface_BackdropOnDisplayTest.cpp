// What stands behind a surface, with and without a compositor. The compositor is played by the test, which
// holds its selection: what it would draw is then given by the window's properties.
#include "tests/backends/qt/surface_WindowSystemFixture.h"
#include "tests/support/x11/XcbReply.h"

#include <gtest/gtest.h>
#include <xcb/shape.h>

namespace orbel::qt {
namespace {

using test::Picture;
using test::ScreenRect;

class BackdropOnDisplay : public WindowSystemFixture {
protected:
  void TearDown() override {
    if (testDisplay()) {
      setCompositor(false);
      setBlurOffered(false);
    }
  }

  void setCompositor(bool present) {
    auto& display = session().display();
    xcb_set_selection_owner(display.get(), present ? selectionWindow() : xcb_window_t{XCB_NONE},
                            display.atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    settle();
  }
  static void setBlurOffered(bool offered) {
    auto& display = session().display();
    const xcb_atom_t property = display.atom("_KDE_NET_WM_BLUR_BEHIND_REGION");
    const std::uint32_t nothing = 0;
    if (offered) {
      xcb_change_property(display.get(), XCB_PROP_MODE_REPLACE, display.root(), property, XCB_ATOM_CARDINAL,
                          32, 1, &nothing);
    } else {
      xcb_delete_property(display.get(), display.root(), property);
    }
    display.roundTrip();
  }
  static std::vector<std::uint32_t> blurRegion(xcb_window_t window) {
    return session()
        .display()
        .values(window, "_KDE_NET_WM_BLUR_BEHIND_REGION")
        .value_or(std::vector<std::uint32_t>{});
  }
  Picture capture(const ScreenRect& rect) {
    settle();
    return session().screen().capture(rect);
  }
  // The server's picture of the place after whatever was painted has arrived.
  testing::AssertionResult becomes(const Picture& expected, const ScreenRect& rect,
                                   const std::string& description) {
    return becomesTrue([&] { return difference(capture(rect), expected).largest == 0; }, description);
  }

  RecordingDelegate delegate;

private:
  static xcb_window_t selectionWindow() {
    static const xcb_window_t window = [] {
      auto& display = session().display();
      const xcb_window_t made = xcb_generate_id(display.get());
      xcb_create_window(display.get(), 0, made, display.root(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                        XCB_COPY_FROM_PARENT, 0, nullptr);
      return made;
    }();
    return window;
  }
};

constexpr ScreenRect kPlace{300, 200, 400, 400};

TEST_F(BackdropOnDisplay, WithoutACompositorTheScreenShowsThroughAroundTheDisc) {
  const Picture before = capture(kPlace);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const Picture shown = capture(kPlace);
  for (const test::ScreenPoint corner : {test::ScreenPoint{2, 2}, {50, 50}, {397, 2}, {350, 350}}) {
    EXPECT_EQ(shown.at(corner), before.at(corner)) << corner;
  }
  EXPECT_GT(difference(shown.at({200, 200}), before.at({200, 200})), 40);
}

TEST_F(BackdropOnDisplay, TheDiscsEdgeIsSoftWithoutACompositorToo) {
  const Picture before = capture(kPlace);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const Picture shown = capture(kPlace);
  // On the diagonal, from the outside to the inside, the dark disc is reached over pixels in between.
  int between = 0;
  for (int i = 54; i < 66; ++i) {
    const int fromOutside = difference(shown.at({i, i}), before.at({i, i}));
    const int fromInside = difference(shown.at({i, i}), shown.at({70, 70}));
    if (fromOutside > 8 && fromInside > 8) ++between;
  }
  EXPECT_GE(between, 1);
  EXPECT_LE(between, 3);
}

TEST_F(BackdropOnDisplay, WithoutACompositorAlphaFadesOverTheScreen) {
  const Picture before = capture(kPlace);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const Picture full = capture(kPlace);
  surface->setAlpha(0.5);
  ASSERT_TRUE(becomesTrue([&] { return capture(kPlace).at({200, 200}) != full.at({200, 200}); }, "it fades"));
  const Picture half = capture(kPlace);
  for (int x = 10; x < 400; x += 30) {
    const auto& behind = before.at({x, 200});
    const auto& front = full.at({x, 200});
    EXPECT_NEAR(half.at({x, 200}).red, (behind.red + front.red) / 2, 2) << x;
    EXPECT_NEAR(half.at({x, 200}).blue, (behind.blue + front.blue) / 2, 2) << x;
  }
  surface->setAlpha(0);
  EXPECT_TRUE(becomes(before, kPlace, "it is faded out"));
}

TEST_F(BackdropOnDisplay, ASurfaceThatMovesDoesNotShineThroughItself) {
  delegate.drawing = [](Canvas& canvas) { canvas.fillRect({50, 50, 300, 300}, Color{1, 1, 0}); };
  const auto surface = makeSurface(delegate, squareAround(560, 440, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const ScreenRect place{360, 240, 400, 400};
  const Picture expected = capture(place);
  surface->setFrame(squareAround(500, 400, 400));
  ASSERT_TRUE(
      becomesTrue([&] { return session().windows().geometry(ownWindows().front()) == kPlace; }, "it moves"));
  surface->setFrame(squareAround(560, 440, 400));
  EXPECT_TRUE(becomes(expected, place, "it looks as if it had never been elsewhere"));
}

TEST_F(BackdropOnDisplay, ASubMenuShowsTheMenuBehindItButNoTitle) {
  delegate.drawing = [](Canvas& canvas) { canvas.fillRect({50, 50, 300, 300}, Color{1, 1, 0}); };
  RecordingDelegate subDelegate;
  const auto menu = makeSurface(delegate, squareAround(500, 400, 400));
  const auto sub = makeSurface(subDelegate, squareAround(500, 400, 200), SurfaceLevel::subMenu);
  menu->show();
  sub->show();
  ASSERT_TRUE(showsOwnWindows(2));
  const ScreenRect place{400, 300, 200, 200};
  const Picture expected = capture(place);
  EXPECT_EQ(expected.at({2, 2}), (test::Rgb{255, 255, 0}));
  sub->orderOut();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto bubble = system->makeBubble("Title");
  bubble->show(*wholeScreen, squareAround(500, 400, 40));
  ASSERT_TRUE(showsOwnWindows(2));
  sub->show();
  bubble->close();
  ASSERT_TRUE(becomesTrue([&] { return ownWindows().size() == 2; }, "the title is closed"));
  EXPECT_TRUE(becomes(expected, place, "the sub-menu has no trace of the title"));
}

TEST_F(BackdropOnDisplay, UnderACompositorAlphaIsTheWindowsOpacity) {
  setCompositor(true);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->setAlpha(0.25);
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  settle();
  EXPECT_NEAR(session().windows().opacity(window), 0.25, 0.01);
  delegate.painted.clear();
  surface->setAlpha(0.75);
  settle();
  EXPECT_NEAR(session().windows().opacity(window), 0.75, 0.01);
  EXPECT_TRUE(delegate.painted.empty());
}

TEST_F(BackdropOnDisplay, ABlurThatIsOfferedIsUsedForTheDisc) {
  setCompositor(true);
  setBlurOffered(true);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto region = blurRegion(ownWindows().front());
  ASSERT_FALSE(region.empty());
  ASSERT_EQ(region.size() % 4, 0u);
  double area = 0;
  for (std::size_t i = 0; i < region.size(); i += 4)
    area += region[i + 2] * static_cast<double>(region[i + 3]);
  EXPECT_NEAR(area, 3.14159265 * 199 * 199, 200);
}

TEST_F(BackdropOnDisplay, NoBlurIsAskedForWhereNoneIsOffered) {
  setCompositor(true);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  EXPECT_TRUE(blurRegion(ownWindows().front()).empty());
}

TEST_F(BackdropOnDisplay, ACompositorThatComesOrGoesIsFollowedAtOnce) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->setAlpha(0.5);
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto window = ownWindows().front();
  const Picture alone = capture(kPlace);
  setCompositor(true);
  EXPECT_TRUE(becomesTrue([&] { return std::abs(session().windows().opacity(window) - 0.5) < 0.01; },
                          "the compositor is to fade it"));
  setCompositor(false);
  EXPECT_TRUE(
      becomesTrue([&] { return session().windows().opacity(window) == 1; }, "it fades by itself again"));
  EXPECT_TRUE(becomes(alone, kPlace, "it looks as before"));
}

TEST_F(BackdropOnDisplay, WhenTheCompositorGoesAndTookTheBlurAlongAPlainDiscRemains) {
  setCompositor(true);
  setBlurOffered(true);
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  setBlurOffered(false);
  setCompositor(false);
  // Its corners no longer belong to the window, where they would be black.
  const auto window = ownWindows().front();
  auto& display = session().display();
  ASSERT_TRUE(becomesTrue(
      [&] {
        const auto extents = test::XcbReply<xcb_shape_query_extents_reply_t>(xcb_shape_query_extents_reply(
            display.get(), xcb_shape_query_extents(display.get(), window), nullptr));
        return extents && extents->bounding_shaped;
      },
      "the window is cut to the disc"));
  EXPECT_TRUE(blurRegion(window).empty());
}

TEST_F(BackdropOnDisplay, AnotherMaterialIsShownAtOnce) {
  const auto surface = makeSurface(delegate, squareAround(500, 400, 400));
  surface->show();
  ASSERT_TRUE(showsOwnWindows(1));
  const auto dark = capture(kPlace).at({200, 200});
  surface->setRoundBackdrop(BackdropMaterial::lightFrost, 1);
  EXPECT_TRUE(becomesTrue(
      [&] {
        return capture(kPlace).at({200, 200}).green > dark.green + 60;
      },
      "it is light"));
}

} // namespace
} // namespace orbel::qt
