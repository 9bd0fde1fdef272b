#include "platform/Graphics.h"

#include <utility>

namespace orbel {

ImagePointer Graphics::drawnImage(Size pointSize, std::function<void(Canvas&)> drawing) {
  return std::make_shared<Image>(
      pointSize, [this, pointSize, drawing = std::move(drawing)](int pixelWidth, int pixelHeight) {
        return render(pixelWidth, pixelHeight, pointSize, drawing);
      });
}

ImagePointer Graphics::keptImage(const std::string& key, Size pointSize,
                                 std::function<void(Canvas&)> drawing) {
  for (const auto& [keptKey, image] : m_kept) {
    if (keptKey == key) return image;
  }
  if (m_kept.size() >= kKeptImages) m_kept.erase(m_kept.begin());
  m_kept.emplace_back(key, drawnImage(pointSize, std::move(drawing)));
  return m_kept.back().second;
}

} // namespace orbel
