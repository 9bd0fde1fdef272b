// The window system on a platform of the toolkit that is not X11: less, but whole.
#include "backends/qt/QtWindowSystem.h"
#include "backends/qt/TestDisplay.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class SilentDelegate : public SurfaceDelegate {
public:
  void paint(Canvas& canvas, const Rect&) override {
    ++paintings;
    canvas.fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  }
  void pointerMoved(const MouseEvent&) override {}
  void pointerExited(const MouseEvent&) override {}
  void pointerPressed(PointerButton, const MouseEvent&) override {}
  void pointerReleased(PointerButton, const MouseEvent&) override {}
  void cancelRequested() override {}
  DragOperation dragMoved(const DragInfo&) override { return DragOperation::none; }
  void dragExited() override {}
  bool dragPerformed(const DragInfo&) override { return false; }

  int paintings = 0;
};

TEST(QtWindowSystemOffscreenTest, SurfacesAndBubblesWorkWithoutAServer) {
  if (testDisplay()) GTEST_SKIP() << "needs the round without a display";
  QtWindowSystem system(std::nullopt, {});
  SilentDelegate delegate;
  const auto surface = system.makeSurface(SurfaceLevel::menu);
  surface->setDelegate(&delegate);
  EXPECT_FALSE(surface->supportsBackdropBlur());
  surface->setRoundBackdrop(BackdropMaterial::lightFrost, 1);
  surface->setFrame({100, 100, 200, 200});
  EXPECT_EQ(surface->frame(), (Rect{100, 100, 200, 200}));
  surface->show();
  EXPECT_TRUE(surface->isShown());
  EXPECT_EQ(delegate.paintings, 1);
  surface->setAlpha(0.5);
  EXPECT_EQ(surface->alpha(), 0.5);
  surface->needsDisplay({0, 0, 10, 10});
  ASSERT_TRUE(becomesTrue([&] { return delegate.paintings == 2; }, "the damage is painted"));
  const auto bubble = system.makeBubble("Mail");
  bubble->show({150, 150, 40, 40});
  EXPECT_TRUE(bubble->isShown());
  bubble->show({160, 150, 40, 40});
  bubble->close();
  surface->orderOut();
  EXPECT_FALSE(surface->isShown());
  EXPECT_TRUE(system.pointerLocation().has_value());
  EXPECT_FALSE(system.prefersReducedMotion());
}

TEST(QtWindowSystemOffscreenTest, AlphaIsCutToItsRange) {
  if (testDisplay()) GTEST_SKIP() << "needs the round without a display";
  QtWindowSystem system(std::nullopt, {});
  const auto surface = system.makeSurface(SurfaceLevel::menu);
  surface->setAlpha(7);
  EXPECT_EQ(surface->alpha(), 1);
  surface->setAlpha(-1);
  EXPECT_EQ(surface->alpha(), 0);
}

} // namespace
} // namespace orbel
