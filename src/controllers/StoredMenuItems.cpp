#include "controllers/StoredMenuItems.h"

#include "foundation/Log.h"
#include "model/CollectionMenuItem.h"
#include "platform/Platform.h"

#include <utility>

namespace orbel {

namespace {
constexpr const char* kMenuItemsKey = "menuItems";

bool hasDroppedMembers(const MenuItem& item) {
  const auto* collection = dynamic_cast<const CollectionMenuItem*>(&item);
  return collection && collection->hasDroppedMembers();
}
} // namespace

std::optional<StoredMenuItems::Loaded> StoredMenuItems::load() {
  m_storeHoldsUnreadable = false;
  const PropertyList* stored = Platform::current().preferences.object(kMenuItemsKey);
  if (!stored) return std::nullopt;
  Loaded loaded;
  if (!stored->list()) {
    Log::warning("the stored menu items are not a list; the menu shows its default items");
    loaded.droppedElements = m_storeHoldsUnreadable = true;
    return loaded;
  }
  // A copy, because resolving a bookmark may touch the store.
  const PropertyList::List elements = *stored->list();
  loaded.items.reserve(elements.size());
  for (const PropertyList& element : elements) {
    MenuItemPointer item = MenuItem::withDictionaryRepresentation(element);
    if (!item) {
      loaded.droppedElements = true;
      continue;
    }
    if (hasDroppedMembers(*item)) m_storeHoldsUnreadable = true;
    loaded.items.push_back(std::move(item));
  }
  if (loaded.droppedElements) m_storeHoldsUnreadable = true;
  return loaded;
}

void StoredMenuItems::save(const MenuItemList& items) {
  PreferencesStore& preferences = Platform::current().preferences;
  if (std::exchange(m_storeHoldsUnreadable, false)) preferences.keepDatedCopy();
  PropertyList::List dictionaries;
  dictionaries.reserve(items.size());
  for (const MenuItemPointer& item : items) {
    if (auto dictionary = item->dictionaryRepresentation()) dictionaries.push_back(std::move(*dictionary));
  }
  preferences.setObject(kMenuItemsKey, std::move(dictionaries));
}

} // namespace orbel
