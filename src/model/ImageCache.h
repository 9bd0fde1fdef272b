// The icons of menu items, kept so that they are neither fetched nor drawn anew every time a menu is shown.
// At most 35, the oldest leaving first; a lookup does not make an entry younger. Keyed by the items'
// identities. Main thread only.
#pragma once

#include "scene/Image.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orbel {

class ImageCache {
public:
  static constexpr std::size_t kCapacity = 35;

  ImageCache() = default;
  ImageCache(const ImageCache&) = delete;
  ImageCache& operator=(const ImageCache&) = delete;

  // The one that every item uses (SharedObjects).
  static ImageCache& sharedCache();

  // Appends an entry, also under a key that is there already: lookups find the older one until it has left.
  void storeImage(ImagePointer image, std::string key);
  // The first entry under the key; empty when there is none.
  ImagePointer imageForKey(std::string_view key) const;
  // Removes the first entry under the key.
  void removeImageForKey(std::string_view key);

  // Parallel lists, oldest first: the image at an index belongs to the key at the same index. Lists of
  // different lengths are a broken cache, which the next store empties.
  const std::vector<std::string>& keys() const { return m_keys; }
  const std::vector<ImagePointer>& values() const { return m_values; }
  void setKeys(std::vector<std::string> keys) { m_keys = std::move(keys); }
  void setValues(std::vector<ImagePointer> values) { m_values = std::move(values); }

private:
  std::optional<std::size_t> firstIndexOf(std::string_view key) const;

  std::vector<std::string> m_keys;
  std::vector<ImagePointer> m_values;
};

} // namespace orbel
