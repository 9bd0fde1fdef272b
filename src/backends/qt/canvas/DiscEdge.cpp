#include "backends/qt/canvas/DiscEdge.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace orbel::qt {

namespace {
constexpr double kLineAlpha = 0.2;

// The standard's rounding is a call for each number.
std::uint32_t rounded(double positive) {
  return static_cast<std::uint32_t>(positive + 0.5);
}

std::uint32_t faded(std::uint32_t pixel, double coverage) {
  std::uint32_t result = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    result |= rounded(((pixel >> shift) & 0xff) * coverage) << shift;
  }
  return result;
}

// How much of a pixel lies inside an ellipse around the origin, by its middle's distance from the edge: to
// first order, which is exact for a circle.
class EllipseCoverage {
public:
  EllipseCoverage(double radiusX, double radiusY)
      : m_x(std::max(radiusX, 0.5)), m_y(std::max(radiusY, 0.5)) {}

  double at(double dx, double dy) const {
    const double scaled = length(dx / m_x, dy / m_y);
    const double gradient = length(dx / (m_x * m_x), dy / (m_y * m_y));
    return gradient > 0 ? std::clamp((1 - scaled) * scaled / gradient + 0.5, 0.0, 1.0) : 1.0;
  }

  // Of the ellipse's row at that distance from its middle; a row within half a pixel of it counts
  // as touching.
  double halfWidthAt(double dy) const {
    const double share = std::max(std::abs(dy) - 0.5, 0.0) / m_y;
    return share < 1 ? m_x * std::sqrt(1 - share * share) : -1;
  }

private:
  // The standard's function guards against overflow, at ten times the cost.
  static double length(double x, double y) { return std::sqrt(x * x + y * y); }

  double m_x;
  double m_y;
};
} // namespace

void DiscEdge::cut(Bitmap& bitmap) const {
  const double centerX = bitmap.width / 2.0;
  const double centerY = bitmap.height / 2.0;
  const EllipseCoverage disc(centerX - inset, centerY - inset);
  const double outlineInset = inset - std::min(inset, lineWidth);
  const EllipseCoverage outline(centerX - outlineInset, centerY - outlineInset);
  for (int y = 0; y < bitmap.height; ++y) {
    std::uint32_t* row = &bitmap.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width)];
    const double dy = y + 0.5 - centerY;
    // True while the pixel is not wholly inside; from either side the rest of the row needs no look then.
    const auto cutPixel = [&](int x) {
      const double dx = x + 0.5 - centerX;
      const double inside = disc.at(dx, dy);
      if (inside >= 1) return false;
      const double line = (outline.at(dx, dy) - inside) * kLineAlpha;
      row[x] = faded(row[x], inside) + (rounded(line * 255) << 24);
      return true;
    };
    // Most of what is outside needs no look either.
    const double reach = outline.halfWidthAt(dy) + 1;
    const int first = std::clamp(static_cast<int>(centerX - reach), 0, bitmap.width);
    const int last = std::clamp(static_cast<int>(std::ceil(centerX + reach)), first, bitmap.width);
    std::fill(row, row + first, 0);
    std::fill(row + last, row + bitmap.width, 0);
    int left = first;
    while (left < last && cutPixel(left))
      ++left;
    for (int right = last - 1; right > left && cutPixel(right);)
      --right;
  }
}

} // namespace orbel::qt
