#include "foundation/PropertyList.h"

namespace orbel {

PropertyList::PropertyList(const PropertyList&) = default;
PropertyList::PropertyList(PropertyList&&) noexcept = default;
PropertyList& PropertyList::operator=(const PropertyList&) = default;
PropertyList& PropertyList::operator=(PropertyList&&) noexcept = default;
PropertyList::~PropertyList() = default;

bool PropertyList::isEqual(const PropertyList& other) const {
  return m_value == other.m_value;
}

const PropertyList* PropertyList::find(std::string_view key) const {
  const Dictionary* entries = dictionary();
  if (!entries) return nullptr;
  const auto entry = entries->find(key);
  return entry == entries->end() ? nullptr : &entry->second;
}

} // namespace orbel
