#include "platform/Graphics.h"

#include <utility>

namespace orbel {

ImagePointer Graphics::drawnImage(Size pointSize, std::function<void(Canvas&)> drawing) {
  return std::make_shared<Image>(
      pointSize, [this, pointSize, drawing = std::move(drawing)](int pixelWidth, int pixelHeight) {
        return render(pixelWidth, pixelHeight, pointSize, drawing);
      });
}

} // namespace orbel
