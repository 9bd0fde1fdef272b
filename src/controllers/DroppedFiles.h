// What a path dropped from another program becomes in the menu.
#pragma once

#include "model/MenuItem.h"

#include <string>

namespace orbel {

// An application for a path that holds ".app" anywhere, or that is an application bundle of the desktop; else
// a file.
MenuItemPointer menuItemForDroppedPath(const std::string& path);

} // namespace orbel
