#include "model/StoredItem.h"

#include "foundation/Log.h"

namespace orbel {

std::optional<std::string> StoredItem::name(const PropertyList& dictionary) {
  const PropertyList* name = dictionary.find(kNameKey);
  if (!name) return std::nullopt;
  if (const std::string* text = name->string()) return *text;
  Log::warning("the name of a stored item is no text; the item has no name");
  return std::nullopt;
}

PropertyList::Dictionary StoredItem::dictionary(const char* className,
                                                const std::optional<std::string>& name) {
  PropertyList::Dictionary dictionary = {{kClassKey, className}};
  if (name) dictionary.emplace(kNameKey, *name);
  return dictionary;
}

} // namespace orbel
