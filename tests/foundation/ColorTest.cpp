#include "foundation/Color.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

void expectNear(const Color& color, const Color& expected) {
  EXPECT_NEAR(color.red, expected.red, 1e-12);
  EXPECT_NEAR(color.green, expected.green, 1e-12);
  EXPECT_NEAR(color.blue, expected.blue, 1e-12);
  EXPECT_NEAR(color.alpha, expected.alpha, 1e-12);
}

TEST(Color, GreysHaveTheirCustomaryLevels) {
  EXPECT_EQ(Color::darkGray(), Color::white(1.0 / 3.0));
  EXPECT_EQ(Color::gray(), Color::white(0.5));
  EXPECT_EQ(Color::lightGray(), Color::white(2.0 / 3.0));
  EXPECT_EQ(Color::clear().alpha, 0);
  EXPECT_EQ(Color::white(0.2), (Color{0.2, 0.2, 0.2, 1}));
}

TEST(Color, AHueOfEachSixthGivesThePureColours) {
  const Color pure[] = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}, {1, 0, 1}};
  for (int sixth = 0; sixth < 6; ++sixth) {
    expectNear(Color::fromHueSaturationBrightness({sixth / 6.0, 1, 1}, 1), pure[sixth]);
    EXPECT_NEAR(pure[sixth].hueSaturationBrightness().hue, sixth / 6.0, 1e-12);
  }
}

TEST(Color, AHueOfOneIsRedAgain) {
  expectNear(Color::fromHueSaturationBrightness({1, 1, 1}, 0.5), {1, 0, 0, 0.5});
}

TEST(Color, HueSaturationAndBrightnessLeadBackToTheColour) {
  for (const Color color :
       {Color{0.1, 0.6, 0.3, 0.4}, Color{0.9, 0.2, 0.7}, Color{0.3, 0.3, 0.8}, Color{0.5, 0.4, 0.4}}) {
    expectNear(Color::fromHueSaturationBrightness(color.hueSaturationBrightness(), color.alpha), color);
  }
}

TEST(Color, AGreyHasNoSaturationAndKeepsItsBrightness) {
  const auto components = Color::white(0.66).hueSaturationBrightness();
  EXPECT_EQ(components.saturation, 0);
  EXPECT_EQ(components.brightness, 0.66);
  EXPECT_EQ(Color::white(0).hueSaturationBrightness().saturation, 0);
}

TEST(Color, AGreysWhiteComponentIsItsLevelExactly) {
  EXPECT_EQ(Color::white(0.66).whiteComponent(), 0.66);
  EXPECT_EQ(Color::white(1).whiteComponent(), 1);
}

TEST(Color, TheWhiteComponentOfAColourWeighsGreenMost) {
  EXPECT_NEAR((Color{1, 0, 0}).whiteComponent(), 0.299, 1e-12);
  EXPECT_NEAR((Color{0, 1, 0}).whiteComponent(), 0.587, 1e-12);
  EXPECT_NEAR((Color{0, 0, 1}).whiteComponent(), 0.114, 1e-12);
}

TEST(Color, AnotherAlphaLeavesTheColour) {
  EXPECT_EQ((Color{0.1, 0.2, 0.3, 0.4}).withAlpha(0.9), (Color{0.1, 0.2, 0.3, 0.9}));
}

} // namespace
} // namespace orbel
