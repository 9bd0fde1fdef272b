#include "model/ImageCache.h"

#include "foundation/SharedObjects.h"

#include <algorithm>
#include <iterator>

namespace orbel {

ImageCache& ImageCache::sharedCache() {
  return SharedObjects::current().get<ImageCache>();
}

void ImageCache::storeImage(ImagePointer image, std::string key) {
  if (m_keys.size() != m_values.size()) {
    m_keys.clear();
    m_values.clear();
  }
  while (m_keys.size() >= kCapacity) {
    m_keys.erase(m_keys.begin());
    m_values.erase(m_values.begin());
  }
  m_keys.push_back(std::move(key));
  m_values.push_back(std::move(image));
}

ImagePointer ImageCache::imageForKey(std::string_view key) const {
  const auto index = firstIndexOf(key);
  return index ? m_values[*index] : nullptr;
}

void ImageCache::removeImageForKey(std::string_view key) {
  const auto index = firstIndexOf(key);
  if (!index) return;
  m_keys.erase(std::next(m_keys.begin(), static_cast<std::ptrdiff_t>(*index)));
  m_values.erase(std::next(m_values.begin(), static_cast<std::ptrdiff_t>(*index)));
}

std::optional<std::size_t> ImageCache::firstIndexOf(std::string_view key) const {
  const auto found = std::find(m_keys.begin(), m_keys.end(), key);
  const auto index = static_cast<std::size_t>(std::distance(m_keys.begin(), found));
  // Of a broken cache only the part that both lists cover counts.
  if (index >= std::min(m_keys.size(), m_values.size())) return std::nullopt;
  return index;
}

} // namespace orbel
