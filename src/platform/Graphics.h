// Drawing outside any window: for the rims of the windows and for the icons of collections. Main thread only.
#pragma once

#include "scene/Canvas.h"
#include "scene/Image.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class Graphics {
public:
  virtual ~Graphics() = default;
  // Runs the drawing, once and within this call, on a clear bitmap of that size, scaled so that the canvas
  // spans pointSize. Y up as everywhere. Drawings may nest. With no pixels nothing is drawn and the bitmap
  // is empty.
  virtual Bitmap render(int pixelWidth, int pixelHeight, Size pointSize,
                        const std::function<void(Canvas&)>& drawing) = 0;

  // An image whose content the drawing produces whenever pixels of a new size are needed.
  ImagePointer drawnImage(Size pointSize, std::function<void(Canvas&)> drawing);

  // The same, kept under a key that names everything the drawing depends on, so that a window which is made
  // anew for every show does not draw its decoration anew. The few that were made last are kept.
  ImagePointer keptImage(const std::string& key, Size pointSize, std::function<void(Canvas&)> drawing);

private:
  static constexpr std::size_t kKeptImages = 4;
  std::vector<std::pair<std::string, ImagePointer>> m_kept; // oldest first
};

} // namespace orbel
