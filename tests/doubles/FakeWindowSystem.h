// Surfaces, bubbles and a pointer without a screen. Tests find the surfaces that live by `surfaces`.
#pragma once

#include "platform/WindowSystem.h"
#include "tests/doubles/RecordingCanvas.h"

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
  void setFrame(const Rect& frame) override;
  Rect frame() const override { return screenFrame; }
  void show() override;
  void orderOut() override;
  bool isShown() const override { return shown; }
  void setAlpha(double alpha) override { windowAlpha = std::clamp(alpha, 0.0, 1.0); }
  double alpha() const override { return windowAlpha; }
  bool supportsBackdropBlur() const override;
  void setRoundBackdrop(BackdropMaterial newMaterial, double inset) override {
    isRound = true;
    material = newMaterial;
    backdropInset = inset;
  }
  void needsDisplay(const Rect& rect) override {
    if (shown) damage = damage.unitedWith(rect);
  }
  std::optional<Point> pointerLocation() const override;
  double backingScale() const override { return 1; }
  bool pointerIsOverOwnPopUp() const override { return overOwnPopUp; }

  // Lets the delegate draw what is damaged, as a display does soon after the damage.
  void paintDamage();
  // Whether input there, in screen points, is the surface's: inside its disc, if it has one.
  bool takesInputAt(Point screenPoint) const;

  SurfaceLevel level;
  SurfaceDelegate* delegate = nullptr;
  Rect screenFrame;
  bool shown = false;
  int timesShown = 0;
  double windowAlpha = 1;
  BackdropMaterial material = BackdropMaterial::lightFrost;
  bool isRound = false;
  double backdropInset = 0;
  Rect damage;                                // what paintDamage() will have drawn
  std::vector<RecordingCanvas::Call> picture; // as it was painted last
  bool overOwnPopUp = false;

private:
  FakeWindowSystem& m_owner;
};

class FakeBubble : public Bubble {
public:
  FakeBubble(FakeWindowSystem& owner, std::string bubbleText) : text(std::move(bubbleText)), m_owner(owner) {}
  ~FakeBubble() override;
  void show(const Surface& newSurface, const Rect& newAnchor) override;
  void close() override;
  bool isShown() const override { return shown; }

  std::string text;
  const Surface* surface = nullptr; // that it was shown on last; may be dangling
  Rect anchor;                      // in screen points
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
  // Where the pointer is unknown the answer comes with guessPointer() or with the next movement.
  Registration locatePointer(std::function<void(Point)> block) override;
  std::optional<Point> pointerLocation() const override { return pointer; }
  bool prefersReducedMotion() const override { return reducedMotion; }
  void beep() override { ++beeps; }

  // Answers whoever waits for the pointer, as a display that cannot wait for it any longer. The next movement
  // corrects the answer, unless a button is pressed before.
  void guessPointer(Point screenPoint);
  // Moves the pointer and notifies every shown surface that it enters or leaves, as a display would.
  void movePointer(Point screenPoint, std::uint64_t modifierFlags = 0);
  void press(PointerButton button, std::uint64_t modifierFlags = 0);
  void release(PointerButton button, std::uint64_t modifierFlags = 0);
  // A window of another kind takes the pointer while a button is down, and with it the release.
  void loseRelease() {
    m_pressed = nullptr;
    primaryButtonIsDown = false;
  }
  void click(Point screenPoint) {
    movePointer(screenPoint);
    press(PointerButton::primary);
    release(PointerButton::primary);
  }
  // Escape reaches the topmost surface; nothing happens while none is shown.
  void pressEscape() const;
  FakeSurface* surfaceUnderPointer() const; // the topmost one that takes input there

  std::optional<Point> pointer = Point{0, 0};
  bool primaryButtonIsDown = false;
  bool reducedMotion = false;
  bool blur = true;
  int beeps = 0;
  std::vector<FakeSurface*> surfaces;
  std::vector<FakeBubble*> shownBubbles;

private:
  struct PointerRequest {
    std::function<void(Point)> block; // empty once the request has ended
    bool isAnswered = false;
  };
  void tellPointer(Point screenPoint);
  // To all that the pointer has entered and is no longer in the square of.
  void tellExits(const FakeSurface* held, std::uint64_t modifierFlags);
  void raise(FakeSurface& surface);
  void hide(FakeSurface& surface);

  std::vector<FakeSurface*> m_stack; // what is shown, from bottom to top
  FakeSurface* m_pressed = nullptr;
  std::vector<FakeSurface*> m_entered;
  std::vector<std::shared_ptr<PointerRequest>> m_pointerRequests;
  friend class FakeSurface;
};

} // namespace orbel
