#include "backends/qt/canvas/FrostedGlass.h"

#include <gtest/gtest.h>

#include <vector>

namespace orbel::qt {
namespace {

struct Components {
  int alpha, red, green, blue;
};

Components componentsAt(const Bitmap& bitmap, int x, int y) {
  const std::uint32_t pixel = bitmap.pixels[static_cast<std::size_t>(y * bitmap.width + x)];
  return {static_cast<int>(pixel >> 24), static_cast<int>(pixel >> 16 & 0xff),
          static_cast<int>(pixel >> 8 & 0xff), static_cast<int>(pixel & 0xff)};
}

std::vector<std::uint32_t> uniform(int side, std::uint32_t color) {
  return std::vector<std::uint32_t>(static_cast<std::size_t>(side * side), color);
}

Bitmap frosted(const std::vector<std::uint32_t>& pixels, int side, BackdropMaterial material,
               double scale = 1) {
  return FrostedGlass::disc(pixels.data(), side, side, {scale, scale}, scale, material);
}

TEST(FrostedGlassTest, OneColourStaysOneColourToTheEdge) {
  const Bitmap disc = frosted(uniform(200, 0xff406080), 200, BackdropMaterial::lightFrost);
  const Components middle = componentsAt(disc, 100, 100);
  for (const int x : {5, 40, 100, 160, 194}) {
    const Components here = componentsAt(disc, x, 100);
    EXPECT_EQ(here.alpha, 255);
    EXPECT_NEAR(here.red, middle.red, 1) << x;
    EXPECT_NEAR(here.green, middle.green, 1) << x;
    EXPECT_NEAR(here.blue, middle.blue, 1) << x;
  }
}

TEST(FrostedGlassTest, LightFrostBrightensAndDarkFrostDarkens) {
  const auto grey = uniform(64, 0xff808080);
  EXPECT_GT(componentsAt(frosted(grey, 64, BackdropMaterial::lightFrost), 32, 32).red, 160);
  EXPECT_LT(componentsAt(frosted(grey, 64, BackdropMaterial::darkFrost), 32, 32).red, 96);
}

TEST(FrostedGlassTest, WhiteStaysWhiteBehindLightFrost) {
  const Components middle =
      componentsAt(frosted(uniform(64, 0xffffffff), 64, BackdropMaterial::lightFrost), 32, 32);
  EXPECT_EQ(middle.red, 255);
  EXPECT_EQ(middle.green, 255);
  EXPECT_EQ(middle.blue, 255);
}

TEST(FrostedGlassTest, AHardEdgeBehindItBecomesASlowOne) {
  auto pixels = uniform(200, 0xff000000);
  for (int y = 0; y < 200; ++y) {
    for (int x = 100; x < 200; ++x)
      pixels[static_cast<std::size_t>(y * 200 + x)] = 0xffffffff;
  }
  const Bitmap disc = frosted(pixels, 200, BackdropMaterial::darkFrost);
  int steepest = 0;
  for (int x = 20; x < 180; ++x) {
    const int step = componentsAt(disc, x, 100).red - componentsAt(disc, x - 1, 100).red;
    EXPECT_GE(step, -1) << x; // dithering apart it only grows
    steepest = std::max(steepest, step);
  }
  EXPECT_LE(steepest, 4);
  EXPECT_GT(componentsAt(disc, 190, 100).red, componentsAt(disc, 10, 100).red + 60);
}

TEST(FrostedGlassTest, TheScaleBlursAsManyPointsAsBefore) {
  const auto half = [](int side) {
    auto pixels = uniform(side, 0xff000000);
    for (std::size_t i = pixels.size() / 2; i < pixels.size(); ++i)
      pixels[i] = 0xffffffff;
    return pixels;
  };
  const Bitmap single = frosted(half(200), 200, BackdropMaterial::darkFrost, 1);
  const Bitmap twice = frosted(half(400), 400, BackdropMaterial::darkFrost, 2);
  for (const int y : {60, 90, 110, 140}) {
    EXPECT_NEAR(componentsAt(single, 100, y).red, componentsAt(twice, 200, 2 * y).red, 4) << y;
  }
}

TEST(FrostedGlassTest, TheDiscIsRoundWithASoftEdgeAndAFaintLineAround) {
  const int side = 101;
  const Bitmap disc = frosted(uniform(side, 0xffffffff), side, BackdropMaterial::lightFrost);
  EXPECT_EQ(componentsAt(disc, 0, 0).alpha, 0);
  EXPECT_EQ(componentsAt(disc, 10, 10).alpha, 0);
  EXPECT_EQ(componentsAt(disc, 20, 20).alpha, 255);
  EXPECT_EQ(componentsAt(disc, 1, 50).alpha, 255);
  const Components line = componentsAt(disc, 0, 50);
  EXPECT_GT(line.alpha, 20);
  EXPECT_LT(line.alpha, 90);
  EXPECT_LT(line.red, 10);
  // The same on all four sides.
  for (int i = 0; i < side; ++i) {
    EXPECT_EQ(componentsAt(disc, i, 3).alpha, componentsAt(disc, side - 1 - i, 3).alpha) << i;
    EXPECT_EQ(componentsAt(disc, i, 3).alpha, componentsAt(disc, i, side - 4).alpha) << i;
    EXPECT_EQ(componentsAt(disc, i, 3).alpha, componentsAt(disc, 3, i).alpha) << i;
  }
}

TEST(FrostedGlassTest, TheCoveredAreaIsThatOfTheCircle) {
  const Bitmap veil = FrostedGlass::plain(200, 200, {1, 0}, BackdropMaterial::darkFrost);
  const double full = componentsAt(veil, 100, 100).alpha;
  double area = 0;
  for (const std::uint32_t pixel : veil.pixels)
    area += (pixel >> 24) / full;
  EXPECT_NEAR(area, 3.14159265 * 99 * 99, 30);
}

TEST(FrostedGlassTest, PixelsArePremultiplied) {
  for (const auto material : {BackdropMaterial::lightFrost, BackdropMaterial::darkFrost}) {
    for (const Bitmap& bitmap :
         {FrostedGlass::veil(60, 60, {1, 1}, material), FrostedGlass::plain(60, 60, {1, 1}, material),
          frosted(uniform(60, 0xffff8000), 60, material)}) {
      for (int y = 0; y < 60; ++y) {
        for (int x = 0; x < 60; ++x) {
          const Components here = componentsAt(bitmap, x, y);
          ASSERT_LE(std::max({here.red, here.green, here.blue}), here.alpha) << x << ", " << y;
        }
      }
    }
  }
}

TEST(FrostedGlassTest, AVeilLetsTheLiveBlurShowThroughAndAPlainDiscHardlyAnything) {
  EXPECT_LT(componentsAt(FrostedGlass::veil(60, 60, {1, 1}, BackdropMaterial::lightFrost), 30, 30).alpha,
            180);
  EXPECT_GT(componentsAt(FrostedGlass::plain(60, 60, {1, 1}, BackdropMaterial::lightFrost), 30, 30).alpha,
            230);
}

TEST(FrostedGlassTest, TinyAndOddSizesAreDrawnToo) {
  for (const int side : {1, 2, 3, 9, 17}) {
    const Bitmap disc = frosted(uniform(side, 0xff00ff00), side, BackdropMaterial::lightFrost);
    EXPECT_EQ(disc.width, side);
    EXPECT_EQ(disc.height, side);
  }
  const auto pixels = uniform(40, 0xff00ff00);
  const Bitmap wide = FrostedGlass::disc(pixels.data(), 40, 23, {1, 1}, 1, BackdropMaterial::lightFrost);
  EXPECT_EQ(componentsAt(wide, 20, 11).alpha, 255);
  EXPECT_EQ(componentsAt(wide, 0, 0).alpha, 0);
}

} // namespace
} // namespace orbel::qt
