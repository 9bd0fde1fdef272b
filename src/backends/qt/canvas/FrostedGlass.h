// Turns a piece of the screen into what it looks like behind frosted glass, cut to an ellipse with a soft
// edge. Works on pixels alone: premultiplied ARGB, rows from top to bottom.
#pragma once

#include "backends/qt/canvas/DiscEdge.h"
#include "platform/Surface.h"
#include "scene/Bitmap.h"

#include <cstdint>

namespace orbel::qt {

class FrostedGlass {
public:
  // Of width by height opaque pixels; the scale is pixels a point and sets how far the frost blurs.
  static Bitmap disc(const std::uint32_t* pixels, int width, int height, const DiscEdge& edge, double scale,
                     BackdropMaterial material);
  // What lies over a live blur: the material's tint alone.
  static Bitmap veil(int width, int height, const DiscEdge& edge, BackdropMaterial material);
  // What stands there where nothing of the screen can be had.
  static Bitmap plain(int width, int height, const DiscEdge& edge, BackdropMaterial material);
};

} // namespace orbel::qt
