#include "backends/qt/settings/ViewHost.h"

#include "tests/doubles/ManualRunLoop.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

// Paints its lower half red, and writes down where the pointer is.
class HalfRedView : public View {
public:
  using View::View;
  void draw(Canvas& canvas) override {
    canvas.fillRect({0, 0, bounds().size.width, bounds().size.height / 2}, {1, 0, 0, 1});
  }
  void mouseDown(const MouseEvent& event) override { pressedAt = convertFromWindow(event.locationInWindow); }
  void mouseUp(const MouseEvent& event) override { releasedAt = convertFromWindow(event.locationInWindow); }
  void mouseDragged(const MouseEvent&) override { ++drags; }
  void mouseCancelled() override { ++cancellations; }
  void mouseEntered(const MouseEvent&) override { ++entered; }
  void mouseExited(const MouseEvent&) override { ++exited; }

  std::optional<Point> pressedAt;
  std::optional<Point> releasedAt;
  int drags = 0;
  int cancellations = 0;
  int entered = 0;
  int exited = 0;
};

constexpr int kMargin = ViewHost::kRingMargin;

class ViewHostTest : public testing::Test {
protected:
  ViewHost& host() {
    if (!m_host) {
      m_host = std::make_unique<ViewHost>(hosted, runLoop);
      m_host->show();
    }
    return *m_host;
  }

  std::shared_ptr<HalfRedView> view = std::make_shared<HalfRedView>(Rect(70, 80, 40, 20));
  int presses = 0;
  HostedView hosted{.view = view,
                    .accessibleName = "Color",
                    .accessibleValue = [] { return std::string("Red"); },
                    .toolTipAt = [](Point place) { return std::string(place.x < 20 ? "Left" : ""); },
                    .press = [this] { ++presses; }};
  ManualRunLoop runLoop;

private:
  std::unique_ptr<ViewHost> m_host;
};

TEST_F(ViewHostTest, IsAsLargeAsTheViewAndTheRingAroundIt) {
  EXPECT_EQ(host().size(), QSize(40 + 2 * kMargin, 20 + 2 * kMargin));
}

TEST_F(ViewHostTest, DrawsTheViewWithTheYAxisUp) {
  const QImage picture = host().grab().toImage();
  EXPECT_EQ(picture.pixelColor(kMargin + 20, kMargin + 15), QColor(Qt::red));
  EXPECT_NE(picture.pixelColor(kMargin + 20, kMargin + 4), QColor(Qt::red));
}

TEST_F(ViewHostTest, BringsPressesInTheViewsOwnPoints) {
  QTest::mousePress(&host(), Qt::LeftButton, {}, QPoint(kMargin + 10, kMargin + 5));
  QTest::mouseRelease(&host(), Qt::LeftButton, {}, QPoint(kMargin + 30, kMargin + 18));
  EXPECT_EQ(view->pressedAt, Point(10, 15));
  EXPECT_EQ(view->releasedAt, Point(30, 2));
}

TEST_F(ViewHostTest, AMoveIsADragWhileTheButtonIsDownAndEndsAPressWithoutIt) {
  const auto moveWith = [&](Qt::MouseButtons held) {
    const QPointF place(kMargin + 12, kMargin + 5);
    QMouseEvent move(QEvent::MouseMove, place, host().mapToGlobal(place), Qt::NoButton, held, {});
    QApplication::sendEvent(&host(), &move);
  };
  QTest::mousePress(&host(), Qt::LeftButton, {}, QPoint(kMargin + 10, kMargin + 5));
  moveWith(Qt::LeftButton);
  EXPECT_EQ(view->drags, 1);
  EXPECT_EQ(view->cancellations, 0);
  moveWith(Qt::NoButton);
  EXPECT_EQ(view->drags, 1);
  EXPECT_EQ(view->cancellations, 1);
  QTest::mouseRelease(&host(), Qt::LeftButton, {}, QPoint(kMargin + 10, kMargin + 5));
  EXPECT_EQ(view->releasedAt, std::nullopt);
}

TEST_F(ViewHostTest, TellsATrackingAreaThatThePointerEntersAndLeaves) {
  view->setTrackingArea(Rect(20, 0, 20, 20));
  QTest::mouseMove(&host(), QPoint(kMargin + 5, kMargin + 5));
  EXPECT_EQ(view->entered, 0);
  QTest::mouseMove(&host(), QPoint(kMargin + 30, kMargin + 5));
  EXPECT_EQ(view->entered, 1);
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&host(), &leave);
  EXPECT_EQ(view->exited, 1);
}

TEST_F(ViewHostTest, SpaceReturnAndEnterPressItAndOtherKeysDoNot) {
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_A})
    QTest::keyClick(&host(), key);
  QTest::keyClick(&host(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(presses, 3);
}

TEST_F(ViewHostTest, AViewThatTakesNoPressesTakesNoFocus) {
  hosted.press = {};
  EXPECT_EQ(host().focusPolicy(), Qt::NoFocus);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&host())->role(), QAccessible::Graphic);
}

TEST_F(ViewHostTest, ShowsAToolTipWhereTheViewHasOne) {
  const auto hover = [&](QPoint place) {
    QHelpEvent help(QEvent::ToolTip, place, host().mapToGlobal(place));
    QApplication::sendEvent(&host(), &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  };
  EXPECT_EQ(hover({kMargin + 5, kMargin + 5}), "Left");
  hover({kMargin + 35, kMargin + 5});
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(ViewHostTest, ReadersHearNameAndValueAndCanPressIt) {
  auto* accessible = QAccessible::queryAccessibleInterface(&host());
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Button);
  EXPECT_EQ(accessible->text(QAccessible::Name), "Color: Red");
  accessible->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(presses, 1);
}

TEST_F(ViewHostTest, TheViewMayLiveLongerThanItsHost) {
  {
    const ViewHost passing(hosted, runLoop);
    EXPECT_NE(view->tree(), nullptr);
  }
  EXPECT_EQ(view->tree(), nullptr);
  EXPECT_EQ(view->superview(), nullptr);
}

} // namespace
} // namespace orbel::qt
