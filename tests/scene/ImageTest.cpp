#include "scene/Image.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orbel {
namespace {

Bitmap filled(int width, int height, std::uint32_t pixel) {
  Bitmap bitmap(width, height);
  std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), pixel);
  return bitmap;
}

class ImageTest : public testing::Test {
protected:
  int renderings = 0;
  Image image{{320, 320}, [this](int width, int height) {
                ++renderings;
                return filled(width, height, 0xff102030);
              }};
};

TEST_F(ImageTest, PixelsAreMadeWhenTheyAreFirstDrawn) {
  EXPECT_EQ(renderings, 0);
  image.representation(100, 100);
  EXPECT_EQ(renderings, 1);
}

TEST_F(ImageTest, SmallerSizesComeFromTheKeptChain) {
  image.prepare(100, 100);
  EXPECT_EQ(image.representation(100, 100).width, 100);
  EXPECT_EQ(image.representation(51, 51).width, 100);
  EXPECT_EQ(image.representation(50, 50).width, 50);
  EXPECT_EQ(image.representation(20, 20).width, 25);
  EXPECT_EQ(image.representation(1, 1).width, 13); // not smaller than any icon is drawn
  EXPECT_EQ(renderings, 1);
}

TEST_F(ImageTest, ALargerSizeDrawsANewChain) {
  image.prepare(100, 100);
  EXPECT_EQ(image.representation(150, 150).width, 150);
  EXPECT_EQ(renderings, 2);
}

TEST_F(ImageTest, ALevelKeepsTheColourOfAPlainPicture) {
  EXPECT_EQ(image.representation(128, 128).halved().pixels[0], 0xff102030u);
}

TEST_F(ImageTest, ARendererWithFewPixelsIsNotAskedAgainForTheSameSize) {
  int asked = 0;
  const Image small({320, 320}, [&](int, int) {
    ++asked;
    return filled(16, 16, 0xffffffff);
  });
  small.representation(100, 100);
  small.representation(100, 100);
  small.representation(40, 40);
  EXPECT_EQ(asked, 1);
}

TEST_F(ImageTest, AnEmptyPictureIsEmptyAtEverySize) {
  const Image nothing({320, 320}, [](int, int) { return Bitmap(); });
  EXPECT_TRUE(nothing.representation(100, 100).isEmpty());
}

TEST_F(ImageTest, WhatWasDrawnStaysWhenThereIsNothingToDrawAnyMore) {
  int asked = 0;
  const Image gone({320, 320}, [&](int width, int height) {
    return ++asked == 1 ? filled(width, height, 0xff102030) : Bitmap();
  });
  gone.prepare(64, 64);
  const Bitmap* const small = &gone.representation(30, 30);
  EXPECT_EQ(gone.representation(128, 128).width, 64);
  EXPECT_EQ(gone.representation(128, 128).width, 64);
  EXPECT_EQ(&gone.representation(30, 30), small) << "nothing is halved anew";
  EXPECT_EQ(small->width, 32);
  EXPECT_EQ(asked, 2) << "once for each size";
}

TEST(BitmapTest, HalvingTakesTheMeanOfFourPixels) {
  Bitmap bitmap(2, 2);
  bitmap.pixels = {0xff000000, 0xff040404, 0xff080808, 0xff0c0c0c};
  const Bitmap half = bitmap.halved();
  ASSERT_EQ(half.width, 1);
  EXPECT_EQ(half.pixels[0], 0xff060606u);
}

TEST(BitmapTest, AnOddLastColumnCountsAlone) {
  Bitmap bitmap(3, 1);
  bitmap.pixels = {0xff000000, 0xff040404, 0xff202020};
  const Bitmap half = bitmap.halved();
  ASSERT_EQ(half.width, 2);
  EXPECT_EQ(half.pixels[1], 0xff202020u);
}

} // namespace
} // namespace orbel
