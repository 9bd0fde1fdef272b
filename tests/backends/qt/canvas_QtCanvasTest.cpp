#include "backends/qt/canvas/QtCanvas.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>

namespace orbel::qt {
namespace {

constexpr std::uint32_t kRed = 0xffff0000;
constexpr std::uint32_t kBlue = 0xff0000ff;

// Paper of white pixels, so that what is drawn and what is not can be distinguished.
class QtCanvasTest : public testing::Test {
protected:
  explicit QtCanvasTest(int pixels = 100, double points = 100)
      : m_image(pixels, pixels, QImage::Format_ARGB32_Premultiplied) {
    m_image.fill(Qt::white);
    m_painter.begin(&m_image);
    canvas.emplace(m_painter, m_image.size(), Size{points, points}, m_scratch);
  }
  ~QtCanvasTest() override { m_painter.end(); }

  // From the top-left corner.
  QColor pixel(int x, int y) const { return QColor::fromRgb(m_image.pixel(x, y)); }
  // The smallest rectangle that holds everything that is not white.
  QRect drawn() const {
    QRect area;
    for (int y = 0; y < m_image.height(); ++y) {
      for (int x = 0; x < m_image.width(); ++x) {
        if (m_image.pixel(x, y) != 0xffffffff) area |= QRect(x, y, 1, 1);
      }
    }
    return area;
  }
  void wipe() { m_image.fill(Qt::white); }

  static ImagePointer uniformImage(int side, std::uint32_t color) {
    Bitmap bitmap(side, side);
    std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), color);
    return Image::withBitmap({static_cast<double>(side), static_cast<double>(side)}, bitmap);
  }

  std::optional<QtCanvas> canvas;

private:
  QImage m_image;
  QPainter m_painter;
  QtCanvas::Scratch m_scratch;
};

class QtCanvasAtScaleTwoTest : public QtCanvasTest {
protected:
  QtCanvasAtScaleTwoTest() : QtCanvasTest(100, 50) {}
};

TEST_F(QtCanvasTest, TheYAxisPointsUp) {
  canvas->fillRect({0, 0, 10, 20}, Color{1, 0, 0});
  EXPECT_EQ(drawn(), QRect(0, 80, 10, 20));
}

TEST_F(QtCanvasTest, ATranslationMovesTheOriginUntilItIsRestored) {
  canvas->save();
  canvas->translate({30, 10});
  canvas->fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  EXPECT_EQ(drawn(), QRect(30, 80, 10, 10));
  canvas->restore();
  wipe();
  canvas->fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  EXPECT_EQ(drawn(), QRect(0, 90, 10, 10));
}

TEST_F(QtCanvasTest, OpacitiesMultiplyAndGoWithTheirRestore) {
  canvas->save();
  canvas->multiplyOpacity(0.5);
  canvas->save();
  canvas->multiplyOpacity(0.5);
  canvas->fillRect({0, 0, 10, 10}, Color::white(0));
  EXPECT_NEAR(pixel(5, 95).red(), 191, 2);
  canvas->restore();
  canvas->fillRect({20, 0, 10, 10}, Color::white(0));
  EXPECT_NEAR(pixel(25, 95).red(), 127, 2);
  canvas->restore();
  canvas->fillRect({40, 0, 10, 10}, Color::white(0));
  EXPECT_EQ(pixel(45, 95).red(), 0);
}

TEST_F(QtCanvasTest, AnEllipseHasASoftEdge) {
  canvas->fillEllipse({10, 10, 80, 80}, Color::white(0));
  EXPECT_EQ(pixel(50, 50).red(), 0);
  EXPECT_EQ(pixel(12, 12).red(), 255);
  int soft = 0;
  for (int x = 10; x < 50; ++x) {
    const int red = pixel(x, 24).red();
    if (red > 0 && red < 255) ++soft;
  }
  EXPECT_GE(soft, 1);
}

TEST_F(QtCanvasTest, AStrokeIsCentredOnItsPath) {
  canvas->strokeLine({0, 50}, {100, 50}, Color::white(0), 4);
  EXPECT_EQ(drawn(), QRect(0, 48, 100, 4));
}

TEST_F(QtCanvasTest, ARadiusBeyondHalfASideMakesRoundEnds) {
  canvas->fillRoundedRect({0, 0, 100, 20}, 1000, Color::white(0));
  EXPECT_EQ(pixel(0, 81).red(), 255);
  EXPECT_EQ(pixel(50, 81).red(), 0);
  EXPECT_EQ(pixel(1, 90).red(), 0);
}

TEST_F(QtCanvasTest, AnImageCoversWholePixels) {
  canvas->drawImage(*uniformImage(64, kRed), {10.3, 10.4, 20.2, 20.2});
  EXPECT_EQ(drawn(), QRect(10, 70, 20, 20));
  EXPECT_EQ(pixel(10, 70), QColor(Qt::red));
  EXPECT_EQ(pixel(29, 89), QColor(Qt::red));
}

TEST_F(QtCanvasTest, AnImageKeepsItsSizeWhileItMoves) {
  for (int step = 0; step < 20; ++step) {
    wipe();
    canvas->drawImage(*uniformImage(64, kRed), {10 + step * 0.13, 10 + step * 0.17, 30.5, 30.5});
    EXPECT_EQ(drawn().size(), QSize(31, 31)) << "step " << step;
  }
}

TEST_F(QtCanvasTest, AnImageOfTheExactSizeIsDrawnPixelForPixel) {
  Bitmap bitmap(20, 20);
  for (std::size_t i = 0; i < bitmap.pixels.size(); ++i)
    bitmap.pixels[i] = i % 2 == 0 ? kRed : kBlue;
  canvas->drawImage(*Image::withBitmap({20, 20}, bitmap), {40, 40, 20, 20});
  EXPECT_EQ(pixel(40, 40), QColor(Qt::red));
  EXPECT_EQ(pixel(41, 40), QColor(Qt::blue));
  EXPECT_EQ(pixel(42, 40), QColor(Qt::red));
}

TEST_F(QtCanvasAtScaleTwoTest, AnImageIsAskedForDevicePixels) {
  std::vector<int> asked;
  Image image({20, 20}, [&](int width, int height) {
    asked.push_back(width);
    EXPECT_EQ(width, height);
    return Bitmap(width, height);
  });
  canvas->drawImage(image, {0, 0, 20, 20});
  EXPECT_EQ(asked, std::vector<int>{40});
  EXPECT_EQ(canvas->scale(), 2);
}

TEST_F(QtCanvasAtScaleTwoTest, PointsAreTwoPixels) {
  canvas->fillRect({0, 0, 5, 10}, Color{1, 0, 0});
  EXPECT_EQ(drawn(), QRect(0, 80, 10, 20));
}

TEST_F(QtCanvasTest, AnImageOutsideTheCanvasIsNotRendered) {
  bool rendered = false;
  Image image({20, 20}, [&](int width, int height) {
    rendered = true;
    return Bitmap(width, height);
  });
  canvas->drawImage(image, {200, 200, 20, 20});
  EXPECT_FALSE(rendered);
  canvas->drawImage(image, {90, 90, 20, 20});
  EXPECT_TRUE(rendered);
}

TEST_F(QtCanvasTest, ASilhouetteFillsTheOpaqueParts) {
  Bitmap bitmap(20, 20);
  for (std::size_t i = 0; i < bitmap.pixels.size(); ++i)
    bitmap.pixels[i] = i < 200 ? kRed : 0;
  canvas->drawSilhouette(*Image::withBitmap({20, 20}, bitmap), {40, 40, 20, 20}, Color{0, 0, 1});
  EXPECT_EQ(drawn(), QRect(40, 40, 20, 10));
  EXPECT_EQ(pixel(50, 45), QColor(Qt::blue));
}

TEST_F(QtCanvasTest, ASilhouetteOfHalfTransparentPixelsIsHalfAsStrong) {
  const auto image = uniformImage(20, 0x80000080);
  canvas->drawSilhouette(*image, {40, 40, 20, 20}, Color::white(0, 0.5));
  EXPECT_NEAR(pixel(50, 50).red(), 191, 2);
}

TEST_F(QtCanvasTest, AnEmptyImageDrawsNothing) {
  const Image image({20, 20}, [](int, int) { return Bitmap(); });
  canvas->drawImage(image, {0, 0, 20, 20});
  canvas->drawSilhouette(image, {0, 0, 20, 20}, Color::white(0));
  EXPECT_TRUE(drawn().isEmpty());
}

TEST_F(QtCanvasTest, TextIsCutToItsRectangle) {
  canvas->drawText("a text that is far too long for its place", {20, 40, 50, 20}, {});
  EXPECT_FALSE(drawn().isEmpty());
  EXPECT_TRUE(QRect(19, 39, 52, 22).contains(drawn()));
}

TEST_F(QtCanvasTest, TextKeepsToItsSide) {
  TextStyle style;
  style.alignment = TextAlignment::left;
  canvas->drawText("i", {0, 40, 100, 20}, style);
  EXPECT_LT(drawn().right(), 20);
  wipe();
  style.alignment = TextAlignment::right;
  canvas->drawText("i", {0, 40, 100, 20}, style);
  EXPECT_GT(drawn().left(), 80);
}

TEST_F(QtCanvasAtScaleTwoTest, TextGrowsWithTheScale) {
  const QFontMetricsF single(QtCanvas::interfaceFont(13));
  const QFontMetricsF twice(QtCanvas::interfaceFont(26));
  EXPECT_NEAR(twice.height(), 2 * single.height(), 2);
}

} // namespace
} // namespace orbel::qt
