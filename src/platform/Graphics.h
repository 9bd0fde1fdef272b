// Drawing outside any window.
#pragma once

#include "scene/Canvas.h"
#include "scene/Image.h"

#include <functional>

namespace orbel {

class Graphics {
public:
  virtual ~Graphics() = default;
  // Runs the drawing on a clear bitmap of that size, scaled so that the canvas spans pointSize. Y up as
  // everywhere.
  virtual Bitmap render(int pixelWidth, int pixelHeight, Size pointSize,
                        const std::function<void(Canvas&)>& drawing) = 0;

  // An image whose content the drawing produces whenever pixels of a new size are needed.
  ImagePointer drawnImage(Size pointSize, std::function<void(Canvas&)> drawing);
};

} // namespace orbel
