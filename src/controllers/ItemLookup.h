// Finds an item again in a list that may have been loaded anew since.
#pragma once

#include "model/MenuItem.h"

#include <cstddef>
#include <optional>

namespace orbel {

// The place of that very object, else of the first one that stands for the same thing under the same name.
// None for no item and for one that has been removed.
std::optional<std::size_t> indexOfItem(const MenuItemList& items, const MenuItemPointer& item);

} // namespace orbel
