#include "controllers/ItemLookup.h"

#include <algorithm>

namespace orbel {

std::optional<std::size_t> indexOfItem(const MenuItemList& items, const MenuItemPointer& item) {
  if (!item) return std::nullopt;
  auto found = std::find(items.begin(), items.end(), item);
  if (found == items.end()) {
    found = std::find_if(items.begin(), items.end(), [&](const MenuItemPointer& candidate) {
      return candidate->name() == item->name() && candidate->identity() == item->identity();
    });
  }
  if (found == items.end()) return std::nullopt;
  return static_cast<std::size_t>(found - items.begin());
}

} // namespace orbel
