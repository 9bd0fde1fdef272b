// What the window system knows and keeps in order beyond single surfaces.
#include "backends/qt/surface_WindowSystemFixture.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <QDialog>

namespace orbel {
namespace {

class QtWindowSystemOnDisplay : public WindowSystemFixture {
protected:
  // Whether the dialog's frame lies over all windows of ours.
  static bool isAboveOurs(const QDialog& dialog) {
    const auto own = ownWindows();
    return std::all_of(own.begin(), own.end(), [&](xcb_window_t window) {
      return session().windows().isAbove(static_cast<xcb_window_t>(dialog.winId()), window);
    });
  }

  RecordingDelegate delegate;
  RecordingDelegate subDelegate;
};

TEST_F(QtWindowSystemOnDisplay, ThePointersPlaceIsInScreenPointsWithTheYAxisUp) {
  session().input().movePointer({123, 1000});
  session().display().roundTrip();
  EXPECT_EQ(system->pointerLocation(), (Point{123, 24}));
  Point located;
  system->locatePointer([&](Point point) { located = point; });
  EXPECT_EQ(located, (Point{123, 24}));
}

TEST_F(QtWindowSystemOnDisplay, BackdropsAreBlurred) {
  EXPECT_TRUE(system->makeSurface(SurfaceLevel::menu)->supportsBackdropBlur());
}

TEST_F(QtWindowSystemOnDisplay, ADesktopThatSaysNothingAboutAnimationsWantsThem) {
  EXPECT_FALSE(system->prefersReducedMotion());
}

TEST_F(QtWindowSystemOnDisplay, ADialogStandsAboveAllSurfacesAndBubbles) {
  const auto menu = makeSurface(delegate, squareAround(500, 400, 500));
  const auto sub = makeSurface(subDelegate, squareAround(550, 400, 300), SurfaceLevel::subMenu);
  const auto bubble = system->makeBubble("Title");
  menu->show();
  sub->show();
  bubble->show(squareAround(520, 400, 40));
  ASSERT_TRUE(showsOwnWindows(3));
  const auto order = ownWindows();

  QDialog dialog;
  dialog.setGeometry(400, 350, 200, 120);
  dialog.show();
  system->standBelow(dialog.winId());
  ASSERT_TRUE(becomesTrue([&] { return dialog.isActiveWindow(); }, "the dialog has the focus"));
  EXPECT_TRUE(becomesTrue([&] { return isAboveOurs(dialog); }, "the dialog stands above"));
  EXPECT_EQ(ownWindows(), order);

  // A surface that is shown now stays below it, too.
  menu->show();
  settle();
  EXPECT_TRUE(isAboveOurs(dialog));
  EXPECT_EQ(ownWindows(), order);

  dialog.hide();
  system->standBelow(std::nullopt);
  EXPECT_TRUE(becomesTrue([&] { return ownWindows() == order; }, "the order is kept"));
  session().input().movePointer({500, 400});
  EXPECT_TRUE(becomesTrue([&] { return session().windows().windowAt({400, 400}) == order.front(); }, "and back on top"));
}

TEST_F(QtWindowSystemOnDisplay, EscapeBelongsToTheDialog) {
  const auto menu = makeSurface(delegate, squareAround(500, 400, 500));
  menu->show();
  QDialog dialog;
  dialog.setGeometry(400, 350, 200, 120);
  dialog.show();
  system->standBelow(dialog.winId());
  ASSERT_TRUE(becomesTrue([&] { return session().windows().focusWindow() == static_cast<xcb_window_t>(dialog.winId()); },
                          "the dialog has the focus"));
  session().input().typeKey(XK_Escape);
  ASSERT_TRUE(becomesTrue([&] { return !dialog.isVisible(); }, "Escape ends the dialog"));
  EXPECT_EQ(delegate.count("cancelled"), 0);
  system->standBelow(std::nullopt);
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(becomesTrue([&] { return delegate.count("cancelled") == 1; }, "Escape is the menu's again"));
}

} // namespace
} // namespace orbel
