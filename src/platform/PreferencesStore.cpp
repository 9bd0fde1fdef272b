#include "platform/PreferencesStore.h"

#include <cmath>

namespace orbel {

bool PreferencesStore::boolean(const std::string& key) const {
  const PropertyList* value = object(key);
  if (!value) return false;
  if (const bool* flag = value->boolean()) return *flag;
  if (const std::int64_t* number = value->integer()) return *number != 0;
  return false;
}

std::int64_t PreferencesStore::integer(const std::string& key) const {
  const PropertyList* value = object(key);
  if (!value) return 0;
  if (const std::int64_t* number = value->integer()) return *number;
  if (const bool* flag = value->boolean()) return *flag ? 1 : 0;
  // Only whole numbers that every integer type holds: anything else is out of every setting's range anyway.
  if (const double* number = value->real(); number && std::abs(*number) < 1e15) {
    return static_cast<std::int64_t>(*number);
  }
  return 0;
}

} // namespace orbel
