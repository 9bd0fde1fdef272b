#include "chrome/BezelView.h"

#include <utility>

namespace orbel {

void BezelView::setImage(ImagePointer image) {
  m_image = std::move(image);
  setNeedsDisplay();
}

void BezelView::draw(Canvas& canvas) {
  if (m_image) canvas.drawImage(*m_image, {{}, presentedFrame().size});
}

} // namespace orbel
