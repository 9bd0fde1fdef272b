#include "backends/qt/canvas/BubblePicture.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

BubbleLayout layoutOf(const QString& text, bool pointsUp = true) {
  BubbleLayout layout;
  layout.body = Rect({0, 0}, BubblePicture::bodySize(text));
  layout.arrow = layout.body.size.width / 2;
  layout.pointsUp = pointsUp;
  return layout;
}

QImage draw(const BubbleLayout& layout, BubblePicture::Edge edge, double scale = 1) {
  return BubblePicture::draw(QStringLiteral("Mail"), layout, scale, edge);
}

int middleOf(const QImage& picture) {
  return picture.width() / 2;
}

TEST(BubblePictureTest, ALongerTextMakesAWiderBodyOfTheSameHeight) {
  const Size shortSize = BubblePicture::bodySize(QStringLiteral("Mail"));
  const Size longSize = BubblePicture::bodySize(QStringLiteral("Mail and more mail"));
  EXPECT_GT(longSize.width, shortSize.width);
  EXPECT_EQ(longSize.height, shortSize.height);
}

TEST(BubblePictureTest, AnEndlessTextIsCut) {
  EXPECT_LT(BubblePicture::bodySize(QString(5000, u'm')).width, 500);
}

TEST(BubblePictureTest, TheArrowIsOnTheSideOfTheAnchor) {
  const int tip = static_cast<int>(BubblePicture::kMargin) + 2;
  const int besideTheTip = static_cast<int>(BubblePicture::kMargin) + 10;
  const auto isDrawn = [](const QImage& picture, int x, int y) { return qAlpha(picture.pixel(x, y)) > 0; };
  const QImage up = draw(layoutOf(QStringLiteral("Mail")), BubblePicture::Edge::hard);
  EXPECT_TRUE(isDrawn(up, middleOf(up), tip));
  EXPECT_FALSE(isDrawn(up, besideTheTip, tip));
  EXPECT_TRUE(isDrawn(up, besideTheTip, up.height() - 1 - tip));
  const QImage down = draw(layoutOf(QStringLiteral("Mail"), false), BubblePicture::Edge::hard);
  EXPECT_TRUE(isDrawn(down, middleOf(down), down.height() - 1 - tip));
  EXPECT_FALSE(isDrawn(down, besideTheTip, down.height() - 1 - tip));
  EXPECT_TRUE(isDrawn(down, besideTheTip, tip));
}

TEST(BubblePictureTest, HardEdgesLeaveNoHalfTransparentPixel) {
  const QImage picture = draw(layoutOf(QStringLiteral("Mail")), BubblePicture::Edge::hard);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const int alpha = qAlpha(picture.pixel(x, y));
      ASSERT_TRUE(alpha == 0 || alpha == 255) << x << ", " << y << " has " << alpha;
    }
  }
}

TEST(BubblePictureTest, TheOutlineIsExactlyTheOpaquePixels) {
  const QImage picture = draw(layoutOf(QStringLiteral("Mail")), BubblePicture::Edge::hard);
  QImage covered(picture.size(), QImage::Format_ARGB32);
  covered.fill(0);
  for (const common::DeviceRect& row : BubblePicture::outline(picture)) {
    for (int x = row.x; x < row.right(); ++x)
      covered.setPixel(x, row.y, 0xff000000);
  }
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      ASSERT_EQ(qAlpha(picture.pixel(x, y)) > 0, qAlpha(covered.pixel(x, y)) > 0) << x << ", " << y;
    }
  }
}

TEST(BubblePictureTest, TheBodyIsLightWithDarkTextAndASoftShadow) {
  const BubbleLayout layout = layoutOf(QStringLiteral("Mail"));
  const QImage picture = draw(layout, BubblePicture::Edge::soft);
  const int top = static_cast<int>(BubblePicture::kMargin + BubbleLayout::kArrowHeight);
  int darkest = 255;
  for (int y = top; y < top + static_cast<int>(layout.body.size.height); ++y) {
    for (int x = 20; x < picture.width() - 20; ++x)
      darkest = std::min(darkest, qRed(picture.pixel(x, y)));
  }
  EXPECT_LT(darkest, 120);
  EXPECT_GT(qRed(picture.pixel(20, top + 5)), 235);
  const QRgb below =
      picture.pixel(middleOf(picture), picture.height() - static_cast<int>(BubblePicture::kMargin) + 3);
  EXPECT_GT(qAlpha(below), 10);
  EXPECT_LT(qAlpha(below), 120);
  EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);
}

TEST(BubblePictureTest, TheScaleMultipliesThePixels) {
  const BubbleLayout layout = layoutOf(QStringLiteral("Mail"));
  const QImage single = draw(layout, BubblePicture::Edge::soft, 1);
  const QImage twice = draw(layout, BubblePicture::Edge::soft, 2);
  EXPECT_EQ(twice.size(), single.size() * 2);
}

} // namespace
} // namespace orbel::qt
