// The round pieces of the settings window that draw themselves.
#include "chrome/RoundVisualEffectView.h"
#include "chrome/SwatchView.h"

#include "tests/doubles/RecordingCanvas.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

TEST(RoundVisualEffectViewTest, IsADiscInsetByOneWithAWhiteRimOnItsFullBounds) {
  RoundVisualEffectView view(Rect(10, 10, 32, 32));
  RecordingCanvas canvas;
  view.draw(canvas);
  ASSERT_EQ(canvas.calls.size(), 2u);
  EXPECT_EQ(canvas.calls[0].name, "fillEllipse");
  EXPECT_EQ(canvas.calls[0].rect, Rect(1, 1, 30, 30));
  EXPECT_LT(canvas.calls[0].color.alpha, 1);
  EXPECT_EQ(canvas.calls[1].name, "strokeEllipse");
  EXPECT_EQ(canvas.calls[1].rect, Rect(0, 0, 32, 32));
  EXPECT_EQ(canvas.calls[1].color, Color::white(1));
  EXPECT_EQ(canvas.calls[1].lineWidth, 1);
}

TEST(RoundVisualEffectViewTest, ItsGlassIsThinnerOnADarkDesktop) {
  RoundVisualEffectView view(Rect(0, 0, 32, 32));
  RecordingCanvas light;
  view.draw(light);
  view.setColorScheme(ColorScheme::dark);
  RecordingCanvas dark;
  view.draw(dark);
  EXPECT_LT(dark.calls[0].color.alpha, light.calls[0].color.alpha);
}

TEST(SwatchViewTest, IsADiscOfItsColourWithTheBorderWithinItsBounds) {
  SwatchView view(Rect(5, 5, 20, 20));
  view.setFillColor({1, 0, 0, 1});
  view.setCornerRadius(10);
  view.setBorder(Color::lightGray(), 1);
  RecordingCanvas canvas;
  view.draw(canvas);
  ASSERT_EQ(canvas.calls.size(), 2u);
  EXPECT_EQ(canvas.calls[0].name, "fillRoundedRect");
  EXPECT_EQ(canvas.calls[0].color, (Color{1, 0, 0, 1}));
  EXPECT_EQ(canvas.calls[0].radius, canvas.calls[0].rect.size.height / 2);
  EXPECT_EQ(canvas.calls[1].name, "strokeRoundedRect");
  EXPECT_EQ(canvas.calls[1].color, Color::lightGray());
  EXPECT_EQ(canvas.calls[1].rect.insetBy(-0.5, -0.5), Rect(0, 0, 20, 20));
}

TEST(SwatchViewTest, HasNoBorderUnlessItIsGivenOne) {
  SwatchView view(Rect(0, 0, 20, 20));
  RecordingCanvas canvas;
  view.draw(canvas);
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].name, "fillRoundedRect");
  EXPECT_EQ(canvas.calls[0].rect, Rect(0, 0, 20, 20));
  EXPECT_EQ(canvas.calls[0].color, Color::white(1));
}

} // namespace
} // namespace orbel
