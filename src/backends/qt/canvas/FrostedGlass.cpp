#include "backends/qt/canvas/FrostedGlass.h"

#include "backends/qt/canvas/CellPicture.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orbel::qt {

namespace {
// Cells of this size are far smaller than the blur and cannot be seen after it.
constexpr double kCellPoints = 8;
constexpr int kBlurRadius = 3; // cells

struct Glass {
  std::array<double, 3> tint; // red, green, blue from 0 to 1
  double tintAlpha;
  double saturation;
  double plainAlpha; // where nothing of the screen shows through
};

const Glass& glassOf(BackdropMaterial material) {
  static constexpr Glass kLight{{1.0, 1.0, 1.0}, 0.42, 1.4, 0.95};
  static constexpr Glass kDark{{0.08, 0.08, 0.09}, 0.62, 1.3, 0.95};
  return material == BackdropMaterial::lightFrost ? kLight : kDark;
}

Bitmap flatDisc(int width, int height, const DiscEdge& edge, const std::array<double, 3>& color,
                double alpha) {
  const auto byte = [](double component) { return static_cast<std::uint32_t>(std::lround(component * 255)); };
  const std::uint32_t pixel =
      byte(alpha) << 24 | byte(color[0] * alpha) << 16 | byte(color[1] * alpha) << 8 | byte(color[2] * alpha);
  Bitmap bitmap(width, height);
  std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), pixel);
  edge.cut(bitmap);
  return bitmap;
}
} // namespace

Bitmap FrostedGlass::disc(const std::uint32_t* pixels, int width, int height, const DiscEdge& edge,
                          double scale, BackdropMaterial material) {
  const int side = std::clamp(static_cast<int>(std::lround(kCellPoints * scale)), 1, 64);
  const Glass& glass = glassOf(material);
  CellPicture cells(pixels, width, height, side);
  cells.blur(kBlurRadius);
  cells.tint(glass.saturation, glass.tint, glass.tintAlpha);
  Bitmap bitmap = cells.enlarged();
  edge.cut(bitmap);
  return bitmap;
}

Bitmap FrostedGlass::veil(int width, int height, const DiscEdge& edge, BackdropMaterial material) {
  const Glass& glass = glassOf(material);
  return flatDisc(width, height, edge, glass.tint, glass.tintAlpha);
}

Bitmap FrostedGlass::plain(int width, int height, const DiscEdge& edge, BackdropMaterial material) {
  const Glass& glass = glassOf(material);
  return flatDisc(width, height, edge, glass.tint, glass.plainAlpha);
}

} // namespace orbel::qt
