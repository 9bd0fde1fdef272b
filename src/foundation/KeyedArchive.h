// Keyed archives of a single object with integer fields: a binary property list with "$archiver"
// "NSKeyedArchiver",
// "$version", "$objects" and "$top". This is the stored form of a keyboard shortcut.
#pragma once

#include "foundation/PropertyList.h"
#include "foundation/Result.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace orbel {

class KeyedArchive {
public:
  struct Object {
    std::string className;
    std::map<std::string, std::int64_t> fields;
    friend bool operator==(const Object&, const Object&) = default;
  };

  // The archive of the object, or of nothing (its root is the "$null" object).
  static PropertyList::Data archive(const std::optional<Object>& root);

  // The root object, or nothing when the archive is of nothing. Fails when the bytes are no such archive.
  static Result<std::optional<Object>> unarchive(const PropertyList::Data& data);
};

} // namespace orbel
