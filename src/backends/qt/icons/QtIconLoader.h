// Pixels for icon names, picture files and the program's own pictures. Nothing drawn is kept here: the images
// of the core keep what they show. Sizes are device pixels. Used by the workspace and, for own pictures, by
// the graphics.
#pragma once

#include "backends/common/IconLoader.h"
#include "backends/qt/icons/IconTheme.h"

#include <QElapsedTimer>
#include <QString>
#include <QStringList>

#include <optional>

namespace orbel::qt {

class QtIconLoader final : public common::IconLoader {
public:
  // Follows the desktop's icon theme, also for Qt's own dialogs.
  QtIconLoader();
  // A fixed theme in fixed folders.
  QtIconLoader(QString theme, IconTheme::Folders folders);

  // A picture that has fewer pixels than asked for comes as it is, in a square of its longer side.
  Bitmap themeIcon(const std::vector<std::string>& names, int pixelSize) override;
  bool hasThemeIcon(const std::vector<std::string>& names) override;
  Bitmap pictureFile(const std::string& path, int pixelSize) override;
  Bitmap ownPicture(const std::string& name, int pixelSize) override;
  bool hasOwnPicture(const std::string& name) override;

private:
  IconTheme& theme();

  IconTheme::Folders m_folders;
  bool m_followsDesktop = false;
  std::optional<IconTheme> m_theme;
  QElapsedTimer m_sinceThemeCheck;
};

} // namespace orbel::qt
