// Waits for the pointer to leave a rectangle of the screen, wherever it moves and whatever window it is over.
// Nothing is asked of the display while nothing is waited for. Made by the display server for each menu window;
// main thread only.
#pragma once

#include "backends/common/DeviceRect.h"

#include <functional>

namespace orbel::common {

class PointerWatch {
public:
  virtual ~PointerWatch() = default;
  // Calls the block once, from the main loop, when the pointer has moved out of the rectangle, and stops; the
  // block may destroy the watch. False, and nothing is watched, when the pointer is outside already or the
  // display does not report it. Replaces an earlier wait.
  virtual bool waitUntilOutside(const DeviceRect& rect, std::function<void()> left) = 0;
  virtual void stop() = 0;
};

} // namespace orbel::common
