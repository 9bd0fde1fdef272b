// The pixels of a piece of the screen as they were at one moment. Device pixels of the whole screen, y down. Made
// by the display server; holds its memory until it is released.
#pragma once

#include "backends/common/DeviceRect.h"

#include <cstdint>

namespace orbel::common {

class ScreenPicture {
public:
  virtual ~ScreenPicture() = default;

  // Reads the rectangle; what of it lies off the screen repeats the pixels at the screen's edge. False, with
  // the cause logged, when the display gives nothing; the object is empty then.
  virtual bool capture(const DeviceRect& rect) = 0;
  // Replaces the part that both cover by the other's pixels: what was there before our own window.
  virtual void patchFrom(const ScreenPicture& older) = 0;
  virtual void release() = 0;

  virtual const DeviceRect& rect() const = 0;
  // Opaque ARGB in native byte order, rows from top to bottom without padding; null while empty.
  virtual const std::uint32_t* pixels() const = 0;
  virtual std::uint32_t* pixels() = 0;
  bool isEmpty() const { return pixels() == nullptr; }
};

} // namespace orbel::common
