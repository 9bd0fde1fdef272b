#include "backends/qt/settings/ScreenFrost.h"

#include "backends/qt/CellPicture.h"
#include "backends/qt/DisplayServer.h"
#include "backends/x11/Connection.h"
#include "backends/x11/RootSnapshot.h"
#include "backends/x11/SharedPixels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orbel {

namespace {
constexpr int kReduction = 4;
constexpr double kCellPoints = 8;
constexpr int kBlurRadius = 4; // cells
constexpr double kSaturation = 1.5;

// Stronger than the menu's: letters stand on it.
const QColor kLightTint(246, 247, 250, 178);
const QColor kDarkTint(30, 31, 36, 200);
} // namespace

void ScreenFrost::take(double scale) {
  release();
  Connection& connection = m_display.connection();
  const DeviceRect screen{0, 0, connection.screen().width_in_pixels, connection.screen().height_in_pixels};
  // Not the menus', which would keep memory for a whole screen from then on.
  SharedPixelsStore memory(connection);
  RootSnapshot snapshot(connection, memory);
  if (!snapshot.capture(screen)) return;
  const int side = std::clamp(static_cast<int>(std::lround(kCellPoints * scale)), 1, 64);
  CellPicture cells(snapshot.pixels(), screen.width, screen.height, side);
  cells.blur(kBlurRadius);
  cells.tint(kSaturation, std::array<double, 3>{}, 0);
  const Bitmap whole = cells.enlarged();
  const QImage borrowed(reinterpret_cast<const uchar*>(whole.pixels.data()), whole.width, whole.height,
                        QImage::Format_RGB32);
  m_picture = borrowed.scaled(std::max(1, screen.width / kReduction), std::max(1, screen.height / kReduction),
                              Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void ScreenFrost::paint(QPainter& painter, const QRectF& target, const DeviceRect& place,
                        BackdropMaterial material) const {
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QRectF source(static_cast<double>(place.x) / kReduction, static_cast<double>(place.y) / kReduction,
                      static_cast<double>(place.width) / kReduction,
                      static_cast<double>(place.height) / kReduction);
  painter.drawImage(target, m_picture, source);
  painter.fillRect(target, material == BackdropMaterial::darkFrost ? kDarkTint : kLightTint);
  painter.restore();
}

} // namespace orbel
