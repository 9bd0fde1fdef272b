#include "backends/qt/settings/ScreenFrost.h"

#include "backends/qt/canvas/CellPicture.h"
#include "backends/qt/windows/DisplayServer.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orbel::qt {

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
  const common::DeviceRect screen = m_display.wholeScreen();
  // A kept one would hold memory for a whole screen from then on.
  const auto snapshot = m_display.makeScreenPicture(DisplayServer::PictureMemory::single);
  if (!snapshot->capture(screen)) return;
  const int side = std::clamp(static_cast<int>(std::lround(kCellPoints * scale)), 1, 64);
  CellPicture cells(snapshot->pixels(), screen.width, screen.height, side);
  cells.blur(kBlurRadius);
  cells.tint(kSaturation, std::array<double, 3>{}, 0);
  const Bitmap whole = cells.enlarged();
  const QImage borrowed(reinterpret_cast<const uchar*>(whole.pixels.data()), whole.width, whole.height,
                        QImage::Format_RGB32);
  m_picture = borrowed.scaled(std::max(1, screen.width / kReduction), std::max(1, screen.height / kReduction),
                              Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void ScreenFrost::paint(QPainter& painter, const QRectF& target, const common::DeviceRect& place,
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

} // namespace orbel::qt
