#include "controllers/DroppedFiles.h"

#include "model/AppMenuItem.h"
#include "model/FileMenuItem.h"
#include "platform/Platform.h"

namespace orbel {

MenuItemPointer menuItemForDroppedPath(const std::string& path) {
  if (path.find(".app") != std::string::npos || Platform::current().workspace.isApplicationBundle(path)) {
    return AppMenuItem::withPath(path);
  }
  return FileMenuItem::withPath(path);
}

} // namespace orbel
