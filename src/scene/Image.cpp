#include "scene/Image.h"

#include <utility>

namespace orbel {

namespace {
// Icons are never drawn smaller than this, so smaller levels would only cost memory.
constexpr int kSmallestLevel = 12;
} // namespace

Image::Image(Size pointSize, Renderer renderer) : m_size(pointSize), m_renderer(std::move(renderer)) {}

ImagePointer Image::withBitmap(Size pointSize, Bitmap bitmap) {
  return std::make_shared<Image>(pointSize, [bitmap = std::move(bitmap)](int, int) { return bitmap; });
}

const Bitmap& Image::representation(int pixelWidth, int pixelHeight) const {
  // What was asked of the renderer counts, not what it gave: one that has only few pixels is not asked again
  // and again.
  if (m_levels.empty() || pixelWidth > m_renderedWidth || pixelHeight > m_renderedHeight) {
    Bitmap rendered = m_renderer ? m_renderer(pixelWidth, pixelHeight) : Bitmap();
    m_renderedWidth = pixelWidth;
    m_renderedHeight = pixelHeight;
    if (m_levels.empty() || !rendered.isEmpty()) {
      m_levels.clear();
      m_levels.push_back(std::move(rendered));
    }
    while (m_levels.back().width > 2 * kSmallestLevel && m_levels.back().height > 2 * kSmallestLevel) {
      m_levels.push_back(m_levels.back().halved());
    }
  }
  for (auto level = m_levels.rbegin(); level != m_levels.rend(); ++level) {
    if (level->width >= pixelWidth && level->height >= pixelHeight) return *level;
  }
  return m_levels.front();
}

} // namespace orbel
