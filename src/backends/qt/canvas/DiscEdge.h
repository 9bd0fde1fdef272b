// The edge of a round backdrop: soft, with a faint dark line around it, without which a light disc would melt
// into a light window. Pixels.
#pragma once

#include "scene/Bitmap.h"

namespace orbel::qt {

struct DiscEdge {
  double inset = 0;     // of the ellipse from the bitmap's bounds
  double lineWidth = 0; // of the line, which lies in the inset and is no wider than that

  // Clears what is outside the ellipse. Premultiplied ARGB.
  void cut(Bitmap& bitmap) const;
};

} // namespace orbel::qt
