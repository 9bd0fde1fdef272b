// A drag of another program's over a surface: its files as local paths, read once when the drag enters. A
// list without a single local file (a link out of a browser) is none.
#pragma once

#include "scene/DragInfo.h"

#include <QMimeData>

namespace orbel::qt {

class FileDrag : public DragInfo {
public:
  explicit FileDrag(const QMimeData& data);

  void setLocation(Point locationInWindow) { m_location = locationInWindow; }
  Point locationInWindow() const override { return m_location; }
  const std::optional<std::vector<std::string>>& filePaths() const override { return m_paths; }

  // The action to answer with: what the surface wants where the source offers it, else the other one of copy
  // and link that it does; a move never, since the dragged file stays where it is.
  static Qt::DropAction answer(DragOperation wanted, Qt::DropActions offered);

private:
  Point m_location;
  std::optional<std::vector<std::string>> m_paths;
};

} // namespace orbel::qt
