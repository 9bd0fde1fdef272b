// Makes the program's surfaces and bubbles and knows the pointer and the user's wishes about motion. Outlives
// all that it makes. Main thread only.
#pragma once

#include "foundation/Registration.h"
#include "platform/Bubble.h"
#include "platform/Surface.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace orbel {

class WindowSystem {
public:
  virtual ~WindowSystem() = default;
  // Not shown yet, without a delegate. Never empty. For the menu's windows.
  virtual std::unique_ptr<Surface> makeSurface(SurfaceLevel level) = 0;
  // Costs nothing until it is shown. Never empty. For the titles of items.
  virtual std::unique_ptr<Bubble> makeBubble(const std::string& text) = 0;

  // Hands the pointer's place, in screen points, to the block: within this call where the display knows it,
  // else when a surface of ours has met the pointer, or never. A display that would keep the user waiting may
  // guess first and call the block once more when it knows better, but not after a button was pressed on a
  // surface of ours. Nothing is called once the registration has ended, which may happen within the block; it
  // is empty where no call is left to be made. Used for summoning alone.
  virtual Registration locatePointer(std::function<void(Point)> block) = 0;
  // In screen points, asked of the display now; none where the display does not report it. For the recogniser
  // of pointer circles, and for the settings window, which is dragged by its background.
  virtual std::optional<Point> pointerLocation() const = 0;
  // The user asked the desktop for no animations. Asked by every menu window when it is made.
  virtual bool prefersReducedMotion() const = 0;
  // The desktop's alert sound, for what the shortcut recorder refuses.
  virtual void beep() = 0;
};

} // namespace orbel
