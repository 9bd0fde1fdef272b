// Which icon theme the user's desktop shows, by its settings files. Used by the icon loader.
#pragma once

#include "backends/qt/icons/IconTheme.h"

#include <QString>

namespace orbel::qt {

class IconThemeChoice {
public:
  // The theme that Qt learnt from the desktop, else that of the first settings file that names an installed
  // one, else the first installed of the well-known complete themes, else "hicolor".
  static QString current(const IconTheme::Folders& folders);
  // The first installed of the well-known complete themes, for names that the chosen one lacks; else empty.
  static QString fallback(const IconTheme::Folders& folders);
  // The theme that the settings files below a configuration folder name and that is installed; else empty.
  static QString configured(const QString& configurationFolder, const IconTheme::Folders& folders);
};

} // namespace orbel::qt
