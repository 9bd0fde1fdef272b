// What a path dropped from another program becomes in the menu, and who takes it.
#pragma once

#include "model/MenuItem.h"

#include <optional>
#include <string>
#include <vector>

namespace orbel {

// An application for a path that holds ".app" anywhere, or that is an application bundle of the desktop; else
// a file. Empty, with a line in the log, for a path that leads nowhere any more.
MenuItemPointer menuItemForDroppedPath(const std::string& path);

// One item for each path that leads somewhere, in their order.
MenuItemList menuItemsForDroppedPaths(const std::vector<std::string>& paths);

// Whether the item opens at least one of the paths, if there are any.
bool canOpenAny(const MenuItem& item, const std::optional<std::vector<std::string>>& paths);

} // namespace orbel
