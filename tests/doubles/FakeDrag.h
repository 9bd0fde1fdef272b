// A drag from another program at a place and with files that the test chooses.
#pragma once

#include "scene/DragInfo.h"

#include <utility>

namespace orbel {

class FakeDrag : public DragInfo {
public:
  explicit FakeDrag(Point windowPoint, std::vector<std::string> files = {})
      : location(windowPoint), paths(std::move(files)) {}
  Point locationInWindow() const override { return location; }
  const std::optional<std::vector<std::string>>& filePaths() const override { return paths; }

  Point location;
  std::optional<std::vector<std::string>> paths;
};

} // namespace orbel
