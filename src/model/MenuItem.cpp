#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/StoredItem.h"

#include <sstream>

namespace orbel {

namespace {

struct StoredKind {
  const char* className;
  MenuItemPointer (*read)(const PropertyList& dictionary);
};

template <typename Kind>
MenuItemPointer read(const PropertyList& dictionary) {
  return Kind::withDictionaryRepresentation(dictionary);
}

constexpr StoredKind kStoredKinds[] = {
    {FileMenuItem::kClassName, &read<FileMenuItem>},
    {AppMenuItem::kClassName, &read<AppMenuItem>},
    {CoreMenuItem::kClassName, &read<CoreMenuItem>},
    {CollectionMenuItem::kClassName, &read<CollectionMenuItem>},
};

} // namespace

MenuItemPointer MenuItem::withDictionaryRepresentation(const PropertyList& dictionary) {
  const PropertyList* className = dictionary.find(StoredItem::kClassKey);
  if (!className || !className->string()) return nullptr;
  for (const StoredKind& kind : kStoredKinds) {
    if (*className->string() == kind.className) return kind.read(dictionary);
  }
  return nullptr;
}

std::string MenuItem::identity() const {
  std::ostringstream description;
  description << "<MenuItem: " << static_cast<const void*>(this) << '>';
  return description.str();
}

} // namespace orbel
