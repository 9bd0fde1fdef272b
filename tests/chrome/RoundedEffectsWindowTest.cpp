#include "chrome/RoundedEffectsWindow.h"

#include "tests/doubles/FakePlatform.h"
#include "tests/doubles/FakeSettingsForm.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class RoundedEffectsWindowTest : public testing::Test {
protected:
  RoundedEffectsWindow& window() {
    if (!m_window) m_window = std::make_unique<RoundedEffectsWindow>(managed);
    return *m_window;
  }
  RecordingCanvas::Call rim() {
    const Size size = window().strokeView()->image()->size();
    window().strokeView()->image()->representation(static_cast<int>(size.width),
                                                   static_cast<int>(size.height));
    return platform.graphics.lastCanvas.named("strokeRoundedRect").at(0);
  }
  void drag(Point from, Point to) {
    platform.windows.pointer = from;
    managed.delegate->backgroundPressed({});
    platform.windows.pointer = to;
    managed.delegate->backgroundDragged({});
  }

  FakePlatform platform;
  FakeManagedWindow managed;

private:
  std::unique_ptr<RoundedEffectsWindow> m_window;
};

TEST_F(RoundedEffectsWindowTest, FloatsAboveOrdinaryWindows) {
  window();
  EXPECT_TRUE(managed.floating);
}

TEST_F(RoundedEffectsWindowTest, IsLightGlassWithCornersOfTenPointsInsetByOne) {
  window();
  ASSERT_TRUE(managed.backdrop);
  EXPECT_EQ(managed.backdrop->material, BackdropMaterial::lightFrost);
  EXPECT_EQ(managed.backdrop->inset, 1);
  EXPECT_EQ(managed.backdrop->cornerRadius, 10);
}

TEST_F(RoundedEffectsWindowTest, ItsRimIsAWhiteLineOfOnePointInsetByOneAndAHalf) {
  const auto line = rim();
  EXPECT_EQ(line.rect, Rect(1.5, 1.5, 417, 377));
  EXPECT_EQ(line.radius, 10);
  EXPECT_EQ(line.color, Color::white(1));
  EXPECT_EQ(line.lineWidth, 1);
  EXPECT_TRUE(platform.graphics.lastCanvas.named("fillRoundedRect").empty());
}

TEST_F(RoundedEffectsWindowTest, TheRimLiesBeneathEverythingAndFillsTheWindow) {
  ASSERT_EQ(window().blurView()->subviews().size(), 1u);
  EXPECT_EQ(window().blurView()->subviews()[0], window().strokeView());
  EXPECT_EQ(window().strokeView()->frame(), Rect(0, 0, 420, 380));
}

TEST_F(RoundedEffectsWindowTest, TheRimIsWhatItPaints) {
  window();
  RecordingCanvas canvas;
  managed.delegate->paint(canvas, {0, 0, 420, 380});
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].name, "drawImage");
  EXPECT_EQ(canvas.calls[0].rect, Rect(0, 0, 420, 380));
}

TEST_F(RoundedEffectsWindowTest, ResizingDrawsMaskAndRimAnewWithTheSameCorners) {
  window();
  managed.resize({500, 300});
  EXPECT_EQ(managed.backdrop->size, Size(500, 300));
  EXPECT_EQ(managed.backdrop->cornerRadius, 10);
  const auto line = rim();
  EXPECT_EQ(line.rect, Rect(1.5, 1.5, 497, 297));
  EXPECT_EQ(line.radius, 10);
  EXPECT_EQ(window().strokeView()->frame(), Rect(0, 0, 500, 300));
}

TEST_F(RoundedEffectsWindowTest, DraggingBy30RightAnd20UpMovesItByExactlyThat) {
  window();
  const Point origin = managed.screenFrame.origin;
  drag({310, 210}, {340, 230});
  EXPECT_EQ(managed.screenFrame.origin, Point(origin.x + 30, origin.y + 20));
  // Wherever in the window it was taken.
  drag({700.5, 500.25}, {730.5, 520.25});
  EXPECT_EQ(managed.screenFrame.origin, Point(origin.x + 60, origin.y + 40));
  EXPECT_EQ(managed.screenFrame.size, Size(420, 380));
}

TEST_F(RoundedEffectsWindowTest, ADragIsMeasuredFromItsStartAndNotFromItsLastStep) {
  window();
  drag({310, 210}, {400, 400});
  platform.windows.pointer = Point{311, 210};
  managed.delegate->backgroundDragged({});
  EXPECT_EQ(managed.screenFrame.origin, Point(301, 200));
  EXPECT_EQ(window().originalMouseLocation(), Point(310, 210));
  EXPECT_EQ(window().originalWindowLocation(), Point(300, 200));
}

TEST_F(RoundedEffectsWindowTest, WhereThePointerIsUnknownItStays) {
  window();
  drag({310, 210}, {320, 210});
  platform.windows.pointer.reset();
  managed.delegate->backgroundDragged({});
  EXPECT_EQ(managed.screenFrame.origin, Point(310, 200));
}

TEST_F(RoundedEffectsWindowTest, WhereTheDisplayMovesItItIsLeftToTheDisplayAlone) {
  managed.movedByDisplay = true;
  window();
  drag({310, 210}, {340, 230});
  EXPECT_EQ(managed.screenFrame.origin, Point(300, 200));
  EXPECT_EQ(managed.happened, std::vector<std::string>{"beginInteractiveMove"}) << "once a press";
  managed.movedByDisplay = false;
  drag({310, 210}, {340, 230});
  EXPECT_EQ(managed.screenFrame.origin, Point(330, 220)) << "asked anew at every press";
}

TEST_F(RoundedEffectsWindowTest, OnADarkDesktopItIsDarkGlassFromTheChangeOn) {
  int told = 0;
  window().setColorSchemeChangeBlock([&] { ++told; });
  managed.changeColorScheme(ColorScheme::dark);
  EXPECT_EQ(managed.backdrop->material, BackdropMaterial::darkFrost);
  EXPECT_EQ(told, 1);
}

TEST_F(RoundedEffectsWindowTest, WithoutABlurItOnlyFloats) {
  managed.blur = false;
  EXPECT_EQ(window().blurView(), nullptr);
  EXPECT_EQ(window().strokeView(), nullptr);
  EXPECT_TRUE(managed.floating);
  EXPECT_FALSE(managed.backdrop);
  managed.resize({500, 300});
  managed.changeColorScheme(ColorScheme::dark);
  EXPECT_FALSE(managed.backdrop);
  drag({310, 210}, {340, 230});
  EXPECT_EQ(managed.screenFrame.origin, Point(330, 220));
}

} // namespace
} // namespace orbel
