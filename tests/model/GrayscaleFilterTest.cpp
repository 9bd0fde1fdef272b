#include "model/GrayscaleFilter.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace orbel {
namespace {

std::uint32_t filteredPixel(std::uint32_t pixel) {
  Bitmap bitmap(1, 1);
  bitmap.pixels[0] = pixel;
  return GrayscaleFilter::filtered(bitmap).pixels[0];
}

TEST(GrayscaleFilter, WeighsThePureColoursByTheirLuminance) {
  EXPECT_EQ(filteredPixel(0xFFFF0000), 0xFF2F2F2Fu); // (0.2126 - 0.5) * 1.1 + 0.5 = 0.1839
  EXPECT_EQ(filteredPixel(0xFF00FF00), 0xFFBCBCBCu); // (0.7152 - 0.5) * 1.1 + 0.5 = 0.7367
  EXPECT_EQ(filteredPixel(0xFF0000FF), 0xFF080808u); // (0.0722 - 0.5) * 1.1 + 0.5 = 0.0294
}

TEST(GrayscaleFilter, CutsBlackAndWhiteToTheirLimits) {
  EXPECT_EQ(filteredPixel(0xFF000000), 0xFF000000u); // -0.05
  EXPECT_EQ(filteredPixel(0xFFFFFFFF), 0xFFFFFFFFu); // 1.05
}

TEST(GrayscaleFilter, SpreadsGreysAboutTheMiddle) {
  EXPECT_EQ(filteredPixel(0xFF808080), 0xFF808080u); // 128: 0.50196 becomes 0.50216
  EXPECT_EQ(filteredPixel(0xFF404040), 0xFF3A3A3Au); // 64: 0.25098 becomes 0.22608, of 255: 57.65
  EXPECT_EQ(filteredPixel(0xFFC0C0C0), 0xFFC6C6C6u); // 192: 0.75294 becomes 0.77824, of 255: 198.45
}

TEST(GrayscaleFilter, KeepsTheOpacityAndFiltersTheColourBeneathIt) {
  EXPECT_EQ(filteredPixel(0x80800000), 0x80181818u); // half-transparent red: 0.1839 of 128 is 23.5
  EXPECT_EQ(filteredPixel(0x40404040), 0x40404040u); // quarter-transparent white stays white
  EXPECT_EQ(filteredPixel(0x00000000), 0x00000000u);
}

TEST(GrayscaleFilter, ResultsAreGreyAndNeverBrighterThanTheirOpacity) {
  for (std::uint32_t alpha = 0; alpha <= 255; alpha += 5) {
    for (std::uint32_t red = 0; red <= alpha; red += 15) {
      for (std::uint32_t blue = 0; blue <= alpha; blue += 15) {
        const std::uint32_t result = filteredPixel(alpha << 24 | red << 16 | (alpha / 2) << 8 | blue);
        const std::uint32_t gray = result & 0xFF;
        ASSERT_EQ(result, alpha << 24 | gray << 16 | gray << 8 | gray);
        ASSERT_LE(gray, alpha);
      }
    }
  }
}

TEST(GrayscaleFilter, KeepsTheSizeOfABitmapAlsoOfAnEmptyOne) {
  const Bitmap filtered = GrayscaleFilter::filtered(Bitmap(3, 2));
  EXPECT_EQ(filtered.width, 3);
  EXPECT_EQ(filtered.height, 2);
  EXPECT_EQ(filtered.pixels.size(), 6u);
  EXPECT_TRUE(GrayscaleFilter::filtered(Bitmap()).isEmpty());
}

TEST(GrayscaleFilter, AnImageAsksItsSourceForTheSizeThatIsDrawn) {
  Size asked;
  const auto source = std::make_shared<Image>(Size{16, 16}, [&asked](int width, int height) {
    asked = {static_cast<double>(width), static_cast<double>(height)};
    return Bitmap(width, height);
  });
  const auto filtered = GrayscaleFilter::filtered(source, {320, 320});
  EXPECT_EQ(filtered->size(), (Size{320, 320}));
  EXPECT_EQ(asked, Size{});
  EXPECT_EQ(filtered->representation(72, 72).width, 72);
  EXPECT_EQ(asked, (Size{72, 72}));
}

} // namespace
} // namespace orbel
