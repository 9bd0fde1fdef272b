// Where an item stands in the radial view: the section, and the position within it.
// Both count from 0. kNotFound stands in both where there is no such place (no gap is open).
#pragma once

#include <compare>
#include <cstdint>
#include <limits>

namespace orbel {

constexpr std::int64_t kNotFound = std::numeric_limits<std::int64_t>::max();

struct ItemPath {
  std::int64_t section = kNotFound;
  std::int64_t position = kNotFound;

  // clang-tidy 14 takes the comparison with 0 that this generates for one of pointers.
  friend auto operator<=>(const ItemPath&, const ItemPath&) = default; // NOLINT(modernize-use-nullptr)
};

} // namespace orbel
