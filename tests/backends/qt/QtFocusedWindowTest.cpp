#include "backends/qt-x11/QtFocusedWindow.h"

#include "tests/backends/qt/TestDisplay.h"

#include <QGuiApplication>
#include <QWindow>

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

class QtFocusedWindowOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
  }
  void TearDown() override {
    if (testDisplay()) unfocus();
  }
  void focus(QWindow& window) {
    // A window that comes gets the focus from the window manager. Asking for it besides would give it twice,
    // and the second time could come after the window is hidden again.
    if (window.isVisible())
      window.requestActivate();
    else
      window.show();
    ASSERT_TRUE(
        becomesTrue([&] { return QGuiApplication::focusWindow() == &window; }, "the window is focused"));
  }
  void unfocus() {
    m_window.hide();
    m_other.hide();
    ASSERT_TRUE(becomesTrue([&] { return !QGuiApplication::focusWindow(); }, "no window is focused"));
  }
  void watch() {
    m_observation = m_focused.observeLoss([this] { ++m_losses; });
  }

  QWindow m_window, m_other;
  qtx11::QtFocusedWindow m_focused;
  Registration m_observation;
  int m_losses = 0;
};

TEST_F(QtFocusedWindowOnDisplay, TheWindowWithTheFocusIsTold) {
  focus(m_window);
  EXPECT_EQ(m_focused.current(), m_window.winId());
  focus(m_other);
  EXPECT_EQ(m_focused.current(), m_other.winId());
  unfocus();
  EXPECT_EQ(m_focused.current(), 0u);
}

TEST_F(QtFocusedWindowOnDisplay, LosingTheFocusToAnotherWindowIsTold) {
  focus(m_window);
  watch();
  focus(m_other);
  EXPECT_EQ(m_losses, 1);
}

TEST_F(QtFocusedWindowOnDisplay, AWindowThatIsClosedHasLostTheFocus) {
  focus(m_window);
  watch();
  unfocus();
  EXPECT_EQ(m_losses, 1);
}

TEST_F(QtFocusedWindowOnDisplay, AWindowThatHasJustBeenHiddenDoesNotCountAndLosesNothing) {
  focus(m_window);
  focus(m_other);
  m_other.hide();
  EXPECT_EQ(m_focused.current(), 0u);
  watch();
  m_window.requestActivate();
  ASSERT_TRUE(
      becomesTrue([&] { return QGuiApplication::focusWindow() == &m_window; }, "the focus goes back"));
  EXPECT_EQ(m_losses, 0);
}

TEST_F(QtFocusedWindowOnDisplay, GainingTheFocusIsNoLoss) {
  ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);
  watch();
  focus(m_window);
  EXPECT_EQ(m_losses, 0);
  unfocus();
  EXPECT_EQ(m_losses, 1);
}

TEST_F(QtFocusedWindowOnDisplay, AnEndedObservationIsSilentAndMayEndWithinTheCall) {
  focus(m_window);
  m_observation = m_focused.observeLoss([this] {
    ++m_losses;
    m_observation.reset();
  });
  focus(m_other);
  focus(m_window);
  EXPECT_EQ(m_losses, 1);
}

} // namespace
} // namespace orbel::qt
