// Pixels for icon names and picture files; implemented by a backend that has an icon theme and image formats.
#pragma once

#include "scene/Bitmap.h"

#include <string>
#include <vector>

namespace orbel::common {

class IconLoader {
public:
  virtual ~IconLoader() = default;
  // The first of the names that the icon theme has, square, of about that many pixels; empty when it
  // has none.
  virtual Bitmap themeIcon(const std::vector<std::string>& names, int pixelSize) = 0;
  // Whether the theme has any of the names, without loading it.
  virtual bool hasThemeIcon(const std::vector<std::string>& names) = 0;
  // A picture file (PNG, SVG, XPM, ...), fitted into a square of that many pixels; empty, and logged, when it
  // is broken or enormous.
  virtual Bitmap pictureFile(const std::string& path, int pixelSize) = 0;
  // A picture that ships with the program ("Finder", "fallback-application", ...); empty when there is none.
  virtual Bitmap ownPicture(const std::string& name, int pixelSize) = 0;
  virtual bool hasOwnPicture(const std::string& name) = 0;
};

} // namespace orbel::common
