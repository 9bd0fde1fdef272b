#include "backends/qt/canvas/QtGraphics.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

TEST(QtGraphicsTest, ADrawingSpansTheBitmapWithTheYAxisUp) {
  QtGraphics graphics;
  const Bitmap bitmap = graphics.render(40, 40, {20, 20}, [](Canvas& canvas) {
    canvas.fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  });
  ASSERT_EQ(bitmap.width, 40);
  ASSERT_EQ(bitmap.height, 40);
  EXPECT_EQ(bitmap.pixels[39 * 40], 0xffff0000); // the lower left corner
  EXPECT_EQ(bitmap.pixels[20 * 40 + 19], 0xffff0000);
  EXPECT_EQ(bitmap.pixels[19 * 40], 0u);
  EXPECT_EQ(bitmap.pixels[39 * 40 + 20], 0u);
}

TEST(QtGraphicsTest, TheBitmapStartsClearAndIsPremultiplied) {
  QtGraphics graphics;
  const Bitmap bitmap = graphics.render(2, 2, {2, 2}, [](Canvas& canvas) {
    canvas.fillRect({0, 0, 1, 2}, Color::white(1, 0.5));
  });
  EXPECT_EQ(bitmap.pixels[0] >> 24, (bitmap.pixels[0] >> 16) & 0xff);
  EXPECT_NEAR(bitmap.pixels[0] >> 24, 128, 1);
  EXPECT_EQ(bitmap.pixels[1], 0u);
}

TEST(QtGraphicsTest, ADrawnImageMayHoldDrawnImages) {
  QtGraphics graphics;
  const auto inner = graphics.drawnImage({10, 10}, [](Canvas& canvas) {
    canvas.fillRect({0, 0, 10, 10}, Color{0, 1, 0});
  });
  const auto outer = graphics.drawnImage({20, 20}, [&](Canvas& canvas) {
    canvas.save();
    canvas.translate({10, 10});
    canvas.drawImage(*inner, {0, 0, 10, 10});
    canvas.restore();
    canvas.fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  });
  const Bitmap& bitmap = outer->representation(20, 20);
  EXPECT_EQ(bitmap.pixels[19], 0xff00ff00);      // upper right
  EXPECT_EQ(bitmap.pixels[19 * 20], 0xffff0000); // lower left
}

} // namespace
} // namespace orbel::qt
