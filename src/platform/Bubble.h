// A small bubble with an arrow and one line of text that points at something on a surface. It takes no input.
// Made by WindowSystem::makeBubble(), shown and closed by the item whose title it is. Main thread only.
#pragma once

#include "foundation/Geometry.h"

namespace orbel {

class Surface;

class Bubble {
public:
  virtual ~Bubble() = default;
  // Below the anchor, its arrow pointing up at the anchor's middle; where there is no room, above it. The
  // anchor is in the surface's own points. Shown already, it only follows the anchor; an equal anchor at an
  // equal place of the surface costs nothing. It does not follow the surface by itself, and is closed before
  // the surface is destroyed.
  virtual void show(const Surface& surface, const Rect& anchor) = 0;
  virtual void close() = 0;
  virtual bool isShown() const = 0;
};

} // namespace orbel
