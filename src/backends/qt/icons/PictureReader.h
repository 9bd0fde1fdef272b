// Reads one picture file or resource into a square bitmap, within limits that keep a broken or enormous file
// from costing memory or time. Used by the icon loader.
#pragma once

#include "scene/Bitmap.h"

#include <QString>

namespace orbel::qt {

class PictureReader {
public:
  // Fitted into a square of that many pixels and centred there; a bitmap that has fewer comes as it is, in a
  // square of its longer side. Empty, with a line in the log that names the file, when it cannot be read or
  // exceeds the limits.
  static Bitmap read(const QString& path, int pixelSize);
};

} // namespace orbel::qt
