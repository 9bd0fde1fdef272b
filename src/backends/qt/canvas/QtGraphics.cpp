#include "backends/qt/canvas/QtGraphics.h"

#include <QImage>
#include <QPainter>

namespace orbel::qt {

Bitmap QtGraphics::render(int pixelWidth, int pixelHeight, Size pointSize,
                          const std::function<void(Canvas&)>& drawing) {
  if (pixelWidth <= 0 || pixelHeight <= 0) return {};
  Bitmap bitmap(pixelWidth, pixelHeight);
  QImage image(reinterpret_cast<uchar*>(bitmap.pixels.data()), pixelWidth, pixelHeight,
               pixelWidth * static_cast<int>(sizeof(bitmap.pixels[0])), QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  // Drawings nest (the picture of a collection draws those of its members), so the scratch is this
  // call's own.
  QtCanvas::Scratch scratch;
  QtCanvas canvas(painter, image.size(), pointSize, scratch);
  drawing(canvas);
  return bitmap;
}

} // namespace orbel::qt
