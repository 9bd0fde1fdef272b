#include "controllers/DroppedFiles.h"

#include "foundation/Log.h"
#include "model/AppMenuItem.h"
#include "model/FileMenuItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orbel {

MenuItemPointer menuItemForDroppedPath(const std::string& path) {
  Workspace& workspace = Platform::current().workspace;
  // Files may be deleted while they are dragged. An item for nothing could never be opened.
  if (workspace.fileKind(path) == Workspace::FileKind::missing) {
    Log::warning("a dropped file has gone and is left out: " + path);
    return nullptr;
  }
  if (path.find(".app") != std::string::npos || workspace.isApplicationBundle(path)) {
    return AppMenuItem::withPath(path);
  }
  return FileMenuItem::withPath(path);
}

MenuItemList menuItemsForDroppedPaths(const std::vector<std::string>& paths) {
  MenuItemList items;
  items.reserve(paths.size());
  for (const std::string& path : paths) {
    if (auto item = menuItemForDroppedPath(path)) items.push_back(std::move(item));
  }
  return items;
}

bool canOpenAny(const MenuItem& item, const std::optional<std::vector<std::string>>& paths) {
  return paths && std::any_of(paths->begin(), paths->end(),
                              [&](const std::string& path) { return item.canOpenPath(path); });
}

} // namespace orbel
