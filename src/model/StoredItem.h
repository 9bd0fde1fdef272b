// The item dictionary: the keys under which items are stored, and reading and writing the two that every
// kind has.
#pragma once

#include "foundation/PropertyList.h"

#include <optional>
#include <string>

namespace orbel {

class StoredItem {
public:
  static constexpr const char* kClassKey = "class";
  static constexpr const char* kNameKey = "name";
  static constexpr const char* kBookmarkDataKey = "bookmarkData";
  static constexpr const char* kSubitemsKey = "subitems";

  // None when there is none, and when it is no text (logged).
  static std::optional<std::string> name(const PropertyList& dictionary);

  // A dictionary with the class and the name. An item without a name is written without one and so reads as
  // it was.
  static PropertyList::Dictionary dictionary(const char* className, const std::optional<std::string>& name);
};

} // namespace orbel
