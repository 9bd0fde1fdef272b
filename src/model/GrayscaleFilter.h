// Turns pictures grey with a slightly raised contrast, so that running programs stand apart from the user's
// own items.
#pragma once

#include "foundation/Geometry.h"
#include "scene/Bitmap.h"
#include "scene/Image.h"

namespace orbel {

class GrayscaleFilter {
public:
  // Luminance by the Rec. 709 weights, then contrast 1.1 about the middle: out = (in - 0.5) * 1.1 + 0.5, cut
  // to 0..1. Works on the colours as they are without their opacity, which stays as it is. Channels are taken
  // as they are stored, gamma and all.
  static Bitmap filtered(const Bitmap& bitmap);

  // The picture in grey at that nominal size in points; filtered when a pixel size is first drawn.
  static ImagePointer filtered(ImagePointer image, Size pointSize);
};

} // namespace orbel
