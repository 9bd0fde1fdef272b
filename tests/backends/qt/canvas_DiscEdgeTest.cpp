#include "backends/qt/canvas/DiscEdge.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

Bitmap whiteSquare(int side) {
  Bitmap bitmap(side, side);
  for (auto& pixel : bitmap.pixels)
    pixel = 0xffffffff;
  return bitmap;
}

double areaOf(const Bitmap& bitmap) {
  double area = 0;
  for (const std::uint32_t pixel : bitmap.pixels)
    area += (pixel >> 24) / 255.0;
  return area;
}

TEST(DiscEdgeTest, WhatIsLeftHasTheAreaOfTheDisc) {
  for (const int side : {20, 57, 400}) {
    Bitmap bitmap = whiteSquare(side);
    DiscEdge{1, 0}.cut(bitmap);
    const double radius = side / 2.0 - 1;
    EXPECT_NEAR(areaOf(bitmap), 3.14159265 * radius * radius, 0.002 * side * side + 1) << side;
  }
}

TEST(DiscEdgeTest, TheEdgeIsAtMostTwoPixelsWide) {
  Bitmap bitmap = whiteSquare(400);
  DiscEdge{1, 0}.cut(bitmap);
  for (int y = 60; y < 340; ++y) {
    int soft = 0;
    for (int x = 0; x < 200; ++x) {
      const std::uint32_t alpha = bitmap.pixels[static_cast<std::size_t>(y * 400 + x)] >> 24;
      if (alpha > 0 && alpha < 255) ++soft;
    }
    EXPECT_LE(soft, 3) << y;
  }
}

TEST(DiscEdgeTest, TheLineLiesInTheInsetAndIsFaintAndDark) {
  Bitmap bitmap = whiteSquare(100);
  DiscEdge{3, 2}.cut(bitmap);
  const auto pixelAt = [&](int x) { return bitmap.pixels[static_cast<std::size_t>(50 * 100 + x)]; };
  EXPECT_EQ(pixelAt(0), 0u);
  for (const int x : {1, 2}) {
    EXPECT_NEAR(pixelAt(x) >> 24, 51, 8) << x;
    EXPECT_LE(pixelAt(x) & 0xff, 8u) << x;
  }
  EXPECT_EQ(pixelAt(4), 0xffffffffu);
}

TEST(DiscEdgeTest, ALineWiderThanTheInsetIsCutToIt) {
  Bitmap narrow = whiteSquare(100);
  DiscEdge{1, 1}.cut(narrow);
  Bitmap wide = whiteSquare(100);
  DiscEdge{1, 10}.cut(wide);
  EXPECT_EQ(narrow.pixels, wide.pixels);
}

TEST(DiscEdgeTest, ARectangleIsCutToAnEllipse) {
  Bitmap bitmap(200, 60);
  for (auto& pixel : bitmap.pixels)
    pixel = 0xffffffff;
  DiscEdge{0, 0}.cut(bitmap);
  EXPECT_NEAR(areaOf(bitmap), 3.14159265 * 100 * 30, 40);
}

} // namespace
} // namespace orbel::qt
