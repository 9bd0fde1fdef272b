// What the window system knows and keeps in order beyond single surfaces.
#include "tests/backends/qt/surface_WindowSystemFixture.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <QDialog>

namespace orbel::qt {
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
  EXPECT_FALSE(system->locatePointer([&](Point point) { located = point; })) << "nothing is left to be told";
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
  bubble->show(*wholeScreen, squareAround(520, 400, 40));
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
  EXPECT_TRUE(becomesTrue(
      [&] {
        return session().windows().windowAt({400, 400}) == order.front();
      },
      "and back on top"));
}

// Takes the part of a manager that draws windows like ours above all others.
class ManagerName {
public:
  explicit ManagerName(test::DisplayConnection& display, const std::string& name)
      : m_display(display),
        m_window(display.value(display.root(), "_NET_SUPPORTING_WM_CHECK").value_or(XCB_NONE)),
        m_earlier(display.text(m_window, "_NET_WM_NAME").value_or("")) {
    set(name);
  }
  ~ManagerName() { set(m_earlier); }
  ManagerName(const ManagerName&) = delete;
  ManagerName& operator=(const ManagerName&) = delete;

private:
  void set(const std::string& name) {
    xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_window, m_display.atom("_NET_WM_NAME"),
                        m_display.atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(name.size()),
                        name.data());
    m_display.roundTrip();
  }

  test::DisplayConnection& m_display;
  xcb_window_t m_window;
  std::string m_earlier;
};

TEST_F(QtWindowSystemOnDisplay, WhereTheManagerIgnoresTheOrderSurfacesGoOutOfSightForADialog) {
  ManagerName manager(session().display(), "KWin");
  const auto menu = makeSurface(delegate, squareAround(500, 400, 500));
  const auto sub = makeSurface(subDelegate, squareAround(550, 400, 300), SurfaceLevel::subMenu);
  const auto bubble = system->makeBubble("Title");
  menu->show();
  bubble->show(*wholeScreen, squareAround(520, 400, 40));
  ASSERT_TRUE(showsOwnWindows(2));

  QDialog dialog;
  dialog.show();
  system->standBelow(dialog.winId());
  EXPECT_TRUE(showsOwnWindows(0));
  EXPECT_TRUE(menu->isShown());
  sub->show();
  settle();
  EXPECT_TRUE(showsOwnWindows(0));

  dialog.hide();
  system->standBelow(std::nullopt);
  EXPECT_TRUE(showsOwnWindows(3));
  EXPECT_EQ(session().windows().geometry(ownWindows().front()), (test::ScreenRect{250, 150, 500, 500}));
}

TEST_F(QtWindowSystemOnDisplay, ASurfaceOrderedOutBehindADialogStaysAway) {
  ManagerName manager(session().display(), "GNOME Shell");
  const auto menu = makeSurface(delegate, squareAround(500, 400, 500));
  menu->show();
  ASSERT_TRUE(showsOwnWindows(1));
  QDialog dialog;
  dialog.show();
  system->standBelow(dialog.winId());
  menu->orderOut();
  dialog.hide();
  system->standBelow(std::nullopt);
  settle();
  EXPECT_TRUE(showsOwnWindows(0));
}

TEST_F(QtWindowSystemOnDisplay, EscapeBelongsToTheDialog) {
  const auto menu = makeSurface(delegate, squareAround(500, 400, 500));
  menu->show();
  QDialog dialog;
  dialog.setGeometry(400, 350, 200, 120);
  dialog.show();
  system->standBelow(dialog.winId());
  ASSERT_TRUE(becomesTrue(
      [&] { return session().windows().focusWindow() == static_cast<xcb_window_t>(dialog.winId()); },
      "the dialog has the focus"));
  session().input().typeKey(XK_Escape);
  ASSERT_TRUE(becomesTrue([&] { return !dialog.isVisible(); }, "Escape ends the dialog"));
  EXPECT_EQ(delegate.count("cancelled"), 0);
  system->standBelow(std::nullopt);
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(becomesTrue([&] { return delegate.count("cancelled") == 1; }, "Escape is the menu's again"));
}

} // namespace
} // namespace orbel::qt
