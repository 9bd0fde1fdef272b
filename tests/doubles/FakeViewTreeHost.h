// A window of a view tree without a window: the test sets where the pointer is and reads what was damaged.
#pragma once

#include "scene/ViewTree.h"
#include "tests/doubles/FakeWindowSystem.h"

#include <memory>
#include <optional>

namespace orbel {

class FakeViewTreeHost : public ViewTreeHost {
public:
  explicit FakeViewTreeHost(const Rect& frameOnScreen) : frame(frameOnScreen) {}
  // With a surface of its own.
  FakeViewTreeHost(const Rect& frameOnScreen, FakeWindowSystem& windows)
      : frame(frameOnScreen), m_surface(windows.makeSurface(SurfaceLevel::menu)) {
    m_surface->setFrame(frameOnScreen);
  }

  void needsDisplay(const Rect& rectInWindow) override { damage = damage.unitedWith(rectInWindow); }
  std::optional<Point> pointerLocationInWindow() const override { return pointer; }
  double backingScale() const override { return scale; }
  Rect screenFrame() const override { return frame; }
  const Surface* hostSurface() const override { return m_surface.get(); }

  Rect frame;                   // screen points
  std::optional<Point> pointer; // window points
  double scale = 1;
  Rect damage; // window points, everything since the test cleared it

private:
  std::unique_ptr<Surface> m_surface;
};

} // namespace orbel
