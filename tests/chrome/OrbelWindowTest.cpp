#include "chrome/OrbelWindow.h"

#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class OrbelWindowTest : public testing::Test {
protected:
  OrbelWindow& window() {
    if (!m_window) m_window = std::make_unique<OrbelWindow>();
    return *m_window;
  }
  FakeSurface& surface() {
    window();
    return *platform.windows.surfaces.at(0);
  }
  // What the rim image draws now.
  const RecordingCanvas& rim() {
    const Size size = window().frame().size;
    window().strokeView().image()->representation(static_cast<int>(size.width),
                                                  static_cast<int>(size.height));
    return platform.graphics.lastCanvas;
  }
  Color fill() { return rim().named("fillEllipse").at(0).color; }

  FakePlatform platform;

private:
  std::unique_ptr<OrbelWindow> m_window;
};

TEST_F(OrbelWindowTest, IsMadeAt200By200WithASideOf400AndOffTheScreen) {
  EXPECT_EQ(window().frame(), Rect(200, 200, 400, 400));
  EXPECT_FALSE(window().isShown());
  EXPECT_EQ(surface().level, SurfaceLevel::menu);
  EXPECT_EQ(window().tintColor(), Color::white(1));
}

TEST_F(OrbelWindowTest, AWhiteTintOverABlurIsAClearDiscOfLightFrostWithAWhiteRim) {
  window().setTintColor(Color::white(1));
  EXPECT_TRUE(window().backgroundBlurred());
  EXPECT_EQ(surface().material, BackdropMaterial::lightFrost);
  EXPECT_EQ(surface().backdropInset, 1);
  EXPECT_EQ(fill(), Color::clear());
  ASSERT_EQ(rim().calls.size(), 2u);
  const auto disc = rim().calls[0];
  EXPECT_EQ(disc.name, "fillEllipse") << "first, so that the rim is whole";
  EXPECT_EQ(disc.rect, Rect(1.5, 1.5, 397, 397));
  const auto stroke = rim().calls[1];
  EXPECT_EQ(stroke.name, "strokeEllipse");
  EXPECT_EQ(stroke.color, Color::white(1));
  EXPECT_EQ(stroke.rect, Rect(1.5, 1.5, 397, 397));
  EXPECT_EQ(stroke.lineWidth, 1);
}

TEST_F(OrbelWindowTest, ATintOverABlurIsDarkFrostUnderTheColourAtSixTenths) {
  window().setTintColor({1, 0, 0, 1});
  EXPECT_EQ(surface().material, BackdropMaterial::darkFrost);
  EXPECT_EQ(fill(), (Color{1, 0, 0, 0.6}));
  EXPECT_EQ(window().tintColor(), (Color{1, 0, 0, 1}));
}

TEST_F(OrbelWindowTest, ATintWhoseComponentsAllExceed99PercentCountsAsWhite) {
  window().setTintColor({0.995, 0.995, 0.995, 1});
  EXPECT_EQ(surface().material, BackdropMaterial::lightFrost);
  for (const Color& color :
       {Color{0.99, 1, 1, 1}, Color{1, 0.99, 1, 1}, Color{1, 1, 0.99, 1}, Color{1, 1, 0, 1}}) {
    window().setTintColor(Color::white(1));
    window().setTintColor(color);
    EXPECT_EQ(surface().material, BackdropMaterial::darkFrost) << color.green << ' ' << color.blue;
    EXPECT_EQ(fill(), color.withAlpha(0.6));
  }
}

TEST_F(OrbelWindowTest, WithoutABlurAWhiteTintIsAlmostOpaqueWhite) {
  platform.windows.blur = false;
  window().setTintColor(Color::white(1));
  EXPECT_FALSE(window().backgroundBlurred());
  EXPECT_EQ(fill(), Color::white(1, 0.95));
}

TEST_F(OrbelWindowTest, WithoutABlurATintIsKeptAsADarkerShadeOfItself) {
  platform.windows.blur = false;
  window().setTintColor({1, 0, 0, 1});
  const auto shade = window().tintColor().hueSaturationBrightness();
  EXPECT_DOUBLE_EQ(shade.hue, 0);
  EXPECT_DOUBLE_EQ(shade.saturation, 1);
  EXPECT_DOUBLE_EQ(shade.brightness, 0.8);
  EXPECT_DOUBLE_EQ(fill().alpha, 0.95);
}

TEST_F(OrbelWindowTest, WithoutABlurAVeryDarkTintIsKeptAsItIs) {
  platform.windows.blur = false;
  for (const double brightness : {0.15, 0.2}) {
    window().setTintColor({brightness, 0, 0, 1});
    EXPECT_DOUBLE_EQ(window().tintColor().hueSaturationBrightness().brightness, brightness);
  }
}

TEST_F(OrbelWindowTest, WithoutABlurATranslucentTintIsKeptOpaque) {
  platform.windows.blur = false;
  window().setTintColor({1, 0, 0, 0.5});
  EXPECT_EQ(window().tintColor().alpha, 1);
  EXPECT_DOUBLE_EQ(fill().alpha, 0.95);
}

TEST_F(OrbelWindowTest, AResizedWindowDrawsItsRimAnewAndMovingItDrawsNothing) {
  const ImagePointer before = window().strokeView().image();
  window().setFrame({0, 0, 400, 400});
  EXPECT_EQ(window().strokeView().image(), before);
  window().setFrame({0, 0, 500, 500});
  EXPECT_NE(window().strokeView().image(), before);
  EXPECT_EQ(rim().named("strokeEllipse").at(0).rect, Rect(1.5, 1.5, 497, 497));
  EXPECT_EQ(window().contentView().frame(), Rect(0, 0, 500, 500));
}

TEST_F(OrbelWindowTest, ThePictureOfAResizeIsOfTheNewSize) {
  window().show();
  surface().paintDamage();
  window().setFrame({300, 300, 500, 500});
  ASSERT_EQ(surface().picture.size(), 1u);
  EXPECT_EQ(surface().picture[0].rect, Rect(0, 0, 500, 500));
  EXPECT_EQ(surface().picture[0].image, window().strokeView().image().get());
  EXPECT_EQ(surface().picture[0].image->size(), (Size{500, 500}));
}

TEST_F(OrbelWindowTest, AFadeTakes150MillisecondsAndItsCompletionComesOnceFromTheRunLoop) {
  int completions = 0;
  window().setAlphaValue(0);
  window().animateAlphaValue(1, [&] { ++completions; });
  EXPECT_EQ(window().alphaValue(), 0);
  platform.runLoop.advance(0.075);
  EXPECT_GT(window().alphaValue(), 0.2);
  EXPECT_LT(window().alphaValue(), 0.8);
  EXPECT_EQ(completions, 0);
  platform.runLoop.advance(0.1);
  EXPECT_EQ(window().alphaValue(), 1);
  EXPECT_EQ(completions, 1);
  EXPECT_FALSE(platform.runLoop.wantsFrames());
}

TEST_F(OrbelWindowTest, AShowDuringAFadeOutTakesTheWindowBackFromWhereItIs) {
  bool hidden = false;
  window().setAlphaValue(1);
  window().animateAlphaValue(0, [&] { hidden = true; });
  EXPECT_TRUE(window().isFadingOut());
  platform.runLoop.advance(0.075);
  const double midway = window().alphaValue();
  window().animateAlphaValue(1, [] {});
  EXPECT_FALSE(window().isFadingOut());
  EXPECT_EQ(window().alphaValue(), midway);
  platform.runLoop.advance(0.5);
  EXPECT_EQ(window().alphaValue(), 1);
  EXPECT_FALSE(hidden);
}

TEST_F(OrbelWindowTest, UnderReducedMotionAFadeIsImmediateAndItsCompletionStillComesLater) {
  platform.windows.reducedMotion = true;
  bool done = false;
  window().setAlphaValue(0);
  window().animateAlphaValue(1, [&] { done = true; });
  EXPECT_EQ(window().alphaValue(), 1);
  EXPECT_FALSE(done);
  platform.runLoop.runDue();
  EXPECT_TRUE(done);
}

TEST_F(OrbelWindowTest, AWindowMayEndInTheCompletionOfItsFade) {
  auto ending = std::make_unique<OrbelWindow>();
  ending->animateAlphaValue(0, [&] { ending.reset(); });
  platform.runLoop.advance(0.2);
  EXPECT_EQ(ending, nullptr);
  EXPECT_TRUE(platform.windows.surfaces.empty());
}

TEST_F(OrbelWindowTest, ThePointerIsOverTheSquareFrameOrOverAPopUpOfTheWindow) {
  window().setFrame({100, 100, 400, 400});
  platform.windows.pointer = Point{101, 101};
  EXPECT_TRUE(window().pointerIsOver());
  platform.windows.pointer = Point{99, 101};
  EXPECT_FALSE(window().pointerIsOver());
  surface().overOwnPopUp = true;
  EXPECT_TRUE(window().pointerIsOver());
  surface().overOwnPopUp = false;
  platform.windows.pointer = std::nullopt;
  EXPECT_FALSE(window().pointerIsOver());
}

TEST_F(OrbelWindowTest, EscapeRunsTheCancelBlock) {
  int cancelled = 0;
  window().setCancelBlock([&] { ++cancelled; });
  surface().delegate->cancelRequested();
  EXPECT_EQ(cancelled, 1);
}

TEST_F(OrbelWindowTest, AWindowOffTheScreenHasNoPointerInItsViews) {
  platform.windows.pointer = Point{300, 300};
  EXPECT_EQ(window().contentView().pointerLocation(), std::nullopt);
  window().show();
  EXPECT_EQ(window().contentView().pointerLocation(), (Point{100, 100}));
}

} // namespace
} // namespace orbel
