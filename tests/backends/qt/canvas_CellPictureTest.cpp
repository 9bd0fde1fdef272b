#include "backends/qt/canvas/CellPicture.h"

#include <gtest/gtest.h>

#include <vector>

namespace orbel::qt {
namespace {

using Pixels = std::vector<std::uint32_t>;
constexpr std::uint32_t kBlack = 0xff000000;
constexpr std::uint32_t kWhite = 0xffffffff;

// Left half black, right half white.
Pixels halves(int width, int height) {
  Pixels pixels;
  for (int i = 0; i < width * height; ++i)
    pixels.push_back(i % width < width / 2 ? kBlack : kWhite);
  return pixels;
}

int redAt(const Bitmap& bitmap, int x, int y) {
  return static_cast<int>(bitmap.pixels[static_cast<std::size_t>(y * bitmap.width + x)] >> 16 & 0xff);
}

TEST(CellPictureTest, CellsOfOnePixelGiveThePictureBack) {
  const Pixels pixels{0xff102030, 0xff405060, 0xff708090, 0xffa0b0c0, 0xffd0e0f0, 0xff010203};
  EXPECT_EQ(CellPicture(pixels.data(), 3, 2, 1).enlarged().pixels, pixels);
}

TEST(CellPictureTest, ACellIsTheMeanOfItsPixels) {
  const Pixels pixels{0xff000000, 0xff204060, 0xff4080c0, 0xff60c020};
  const Bitmap bitmap = CellPicture(pixels.data(), 2, 2, 2).enlarged();
  EXPECT_EQ(bitmap.pixels, Pixels(4, 0xff306050));
}

TEST(CellPictureTest, CellsAtTheEdgesAreMeansOfFewerPixels) {
  const Pixels pixels(7 * 5, 0xff336699);
  EXPECT_EQ(CellPicture(pixels.data(), 7, 5, 4).enlarged().pixels, pixels);
}

TEST(CellPictureTest, BetweenTheMiddlesOfCellsColoursAreMixed) {
  const Pixels pixels = halves(16, 8);
  const Bitmap bitmap = CellPicture(pixels.data(), 16, 8, 8).enlarged();
  EXPECT_EQ(redAt(bitmap, 0, 4), 0);
  EXPECT_EQ(redAt(bitmap, 15, 4), 255);
  for (int x = 1; x < 16; ++x)
    EXPECT_GE(redAt(bitmap, x, 4), redAt(bitmap, x - 1, 4) - 1);
  EXPECT_NEAR(redAt(bitmap, 7, 4) + redAt(bitmap, 8, 4), 255, 2);
}

TEST(CellPictureTest, ABlurReachesThreeTimesItsRadiusAndKeepsTheMean) {
  const Pixels pixels = halves(100, 4);
  CellPicture cells(pixels.data(), 100, 4, 1);
  cells.blur(2);
  const Bitmap bitmap = cells.enlarged();
  EXPECT_EQ(redAt(bitmap, 43, 1), 0);
  EXPECT_GT(redAt(bitmap, 45, 1), 0);
  EXPECT_LT(redAt(bitmap, 54, 1), 255);
  EXPECT_EQ(redAt(bitmap, 56, 1), 255);
  double sum = 0;
  for (int x = 0; x < 100; ++x)
    sum += redAt(bitmap, x, 1);
  EXPECT_NEAR(sum / 100, 127.5, 0.5);
}

TEST(CellPictureTest, ATintMovesColoursTowardsIt) {
  const Pixels pixels(4, 0xff808080);
  CellPicture cells(pixels.data(), 2, 2, 1);
  cells.tint(1, {1, 0, 0.5}, 0.5);
  const std::uint32_t pixel = cells.enlarged().pixels[0];
  EXPECT_NEAR(pixel >> 16 & 0xff, 192, 1);
  EXPECT_NEAR(pixel >> 8 & 0xff, 64, 1);
  EXPECT_NEAR(pixel & 0xff, 128, 1);
}

TEST(CellPictureTest, SaturationLeavesGreyAndSpreadsColours) {
  const Pixels grey(4, 0xff808080);
  CellPicture greyCells(grey.data(), 2, 2, 1);
  greyCells.tint(2, {0, 0, 0}, 0);
  EXPECT_NEAR(greyCells.enlarged().pixels[0] & 0xff, 0x80, 1);
  const Pixels warm(4, 0xffa08060);
  CellPicture warmCells(warm.data(), 2, 2, 1);
  warmCells.tint(2, {0, 0, 0}, 0);
  const std::uint32_t pixel = warmCells.enlarged().pixels[0];
  EXPECT_GT(pixel >> 16 & 0xff, 0xa8u);
  EXPECT_LT(pixel & 0xff, 0x58u);
}

} // namespace
} // namespace orbel::qt
