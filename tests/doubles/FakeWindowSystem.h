// Surfaces, bubbles and a pointer without a screen. Tests find the surfaces that live by `surfaces`.
#pragma once

#include "platform/WindowSystem.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeWindowSystem;

class FakeSurface : public Surface {
public:
  FakeSurface(FakeWindowSystem& owner, SurfaceLevel surfaceLevel) : level(surfaceLevel), m_owner(owner) {}
  ~FakeSurface() override;
  void setDelegate(SurfaceDelegate* surfaceDelegate) override { delegate = surfaceDelegate; }
  void setFrame(const Rect& frame) override { screenFrame = frame; }
  Rect frame() const override { return screenFrame; }
  void show() override {
    shown = true;
    ++timesShown;
  }
  void orderOut() override { shown = false; }
  bool isShown() const override { return shown; }
  void setAlpha(double alpha) override { windowAlpha = alpha; }
  double alpha() const override { return windowAlpha; }
  bool supportsBackdropBlur() const override;
  void setRoundBackdrop(BackdropMaterial newMaterial, double inset) override {
    material = newMaterial;
    backdropInset = inset;
  }
  void needsDisplay(const Rect& rect) override { damage = damage.unitedWith(rect); }
  std::optional<Point> pointerLocation() const override;
  double backingScale() const override { return 1; }
  bool pointerIsOverOwnPopUp() const override { return overOwnPopUp; }

  SurfaceLevel level;
  SurfaceDelegate* delegate = nullptr;
  Rect screenFrame;
  bool shown = false;
  int timesShown = 0;
  double windowAlpha = 1;
  BackdropMaterial material = BackdropMaterial::lightFrost;
  double backdropInset = 0;
  Rect damage;
  bool overOwnPopUp = false;

private:
  FakeWindowSystem& m_owner;
};

class FakeBubble : public Bubble {
public:
  FakeBubble(FakeWindowSystem& owner, std::string bubbleText) : text(std::move(bubbleText)), m_owner(owner) {}
  ~FakeBubble() override;
  void show(const Rect& anchorOnScreen) override;
  void close() override;
  bool isShown() const override { return shown; }

  std::string text;
  Rect anchor;
  bool shown = false;

private:
  FakeWindowSystem& m_owner;
};

class FakeWindowSystem : public WindowSystem {
public:
  std::unique_ptr<Surface> makeSurface(SurfaceLevel level) override {
    auto surface = std::make_unique<FakeSurface>(*this, level);
    surfaces.push_back(surface.get());
    return surface;
  }
  std::unique_ptr<Bubble> makeBubble(const std::string& text) override {
    return std::make_unique<FakeBubble>(*this, text);
  }
  void locatePointer(std::function<void(Point)> block) override {
    if (pointer) {
      block(*pointer);
    } else {
      m_waitingForPointer.push_back(std::move(block)); // told at the next movement
    }
  }
  std::optional<Point> pointerLocation() const override { return pointer; }
  bool prefersReducedMotion() const override { return reducedMotion; }
  void beep() override { ++beeps; }

  // Moves the pointer and tells every shown surface that it meets or leaves, as a display would.
  void movePointer(Point screenPoint, std::uint64_t modifierFlags = 0);
  void press(PointerButton button, std::uint64_t modifierFlags = 0);
  void release(PointerButton button, std::uint64_t modifierFlags = 0);
  void click(Point screenPoint) {
    movePointer(screenPoint);
    press(PointerButton::primary);
    release(PointerButton::primary);
  }
  FakeSurface* surfaceUnderPointer() const; // the newest shown one

  std::optional<Point> pointer = Point{0, 0};
  bool reducedMotion = false;
  bool blur = true;
  int beeps = 0;
  std::vector<FakeSurface*> surfaces;
  std::vector<FakeBubble*> shownBubbles;

private:
  FakeSurface* m_pressed = nullptr;
  std::vector<FakeSurface*> m_entered;
  std::vector<std::function<void(Point)>> m_waitingForPointer;
  friend class FakeSurface;
};

} // namespace orbel
