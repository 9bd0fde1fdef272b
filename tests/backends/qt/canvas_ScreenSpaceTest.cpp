#include "backends/qt/windows/ScreenSpace.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>

namespace orbel::qt {
namespace {

// One screen at the origin, of any size, one pixel a point.
class ScreenSpaceTest : public testing::Test {
protected:
  void SetUp() override {
    ASSERT_TRUE(QGuiApplication::primaryScreen());
    ASSERT_EQ(QGuiApplication::primaryScreen()->devicePixelRatio(), 1);
    height = QGuiApplication::primaryScreen()->geometry().height();
    width = QGuiApplication::primaryScreen()->geometry().width();
  }
  int width = 0;
  int height = 0;
};

TEST_F(ScreenSpaceTest, TheYAxisIsFlippedAboutTheBottomOfThePrimaryScreen) {
  EXPECT_EQ(ScreenSpace::toPoints(30, 0), (Point{30, static_cast<double>(height)}));
  EXPECT_EQ(ScreenSpace::toPoints(30, height - 10), (Point{30, 10}));
  EXPECT_EQ(ScreenSpace::toDevice({10, 20, 100, 50}), (common::DeviceRect{10, height - 70, 100, 50}));
  EXPECT_EQ(ScreenSpace::toQt({10, 20, 100, 50}), QRect(10, height - 70, 100, 50));
  EXPECT_EQ(ScreenSpace::toQt(Point{10.4, 20.4}), QPoint(10, height - 20));
}

TEST_F(ScreenSpaceTest, PlacesBesideTheScreenAreCountedOnFromIt) {
  EXPECT_EQ(ScreenSpace::toDevice({-100, -50, 100, 50}), (common::DeviceRect{-100, height, 100, 50}));
  EXPECT_EQ(ScreenSpace::screenAt({-1e6, 1e6}), QGuiApplication::primaryScreen());
}

TEST_F(ScreenSpaceTest, AFrameIsRoundedToWholePixels) {
  EXPECT_EQ(ScreenSpace::toDevice({10.4, 20.4, 100.2, 50.2}), (common::DeviceRect{10, height - 71, 100, 50}));
}

TEST_F(ScreenSpaceTest, TheScreensFrameIsInScreenPoints) {
  EXPECT_EQ(ScreenSpace::frameOf(QGuiApplication::primaryScreen()),
            (Rect{0, 0, static_cast<double>(width), static_cast<double>(height)}));
}

} // namespace
} // namespace orbel::qt
