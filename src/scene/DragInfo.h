// A drag from another program, as the view under it sees it: opaque but for its place and the files it
// carries. Lives only while the drag destination is being called.
#pragma once

#include "foundation/Geometry.h"

#include <optional>
#include <string>
#include <vector>

namespace orbel {

enum class DragOperation { none, copy, link }; // only chooses the pointer's badge

class DragInfo {
public:
  virtual ~DragInfo() = default;
  virtual Point locationInWindow() const = 0;
  // Absolute local paths in the order of the drag; none when it carries no list of files.
  virtual const std::optional<std::vector<std::string>>& filePaths() const = 0;
};

} // namespace orbel
