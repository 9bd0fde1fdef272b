#include "backends/qt/FrostedGlass.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace orbel {

namespace {
// The blur works on cells of this many points: at the radius it has, smaller ones look the same and cost more.
constexpr double kCellPoints = 8;
// In cells; three passes of a box make a bell.
constexpr int kBlurRadius = 3;
constexpr int kBlurPasses = 3;

// A component in 8.8 fixed point: a smooth surface shows steps if it is rounded to 8 bits on the way.
using Component = std::uint16_t;
constexpr double kComponentOne = 255 * 256.0;

constexpr double kLineAlpha = 0.2;

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

struct Cells {
  int width;
  int height;
  std::vector<Component> components; // three a cell

  Component* row(int y) { return components.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width) * 3; }
};

Cells meanCells(const std::uint32_t* pixels, int width, int height, int side) {
  Cells cells{(width + side - 1) / side, (height + side - 1) / side, {}};
  cells.components.resize(static_cast<std::size_t>(cells.width) * static_cast<std::size_t>(cells.height) * 3);
  std::vector<std::uint32_t> sums(static_cast<std::size_t>(cells.width) * 3);
  for (int cellY = 0; cellY < cells.height; ++cellY) {
    std::fill(sums.begin(), sums.end(), 0);
    const int bottom = std::min((cellY + 1) * side, height);
    for (int y = cellY * side; y < bottom; ++y) {
      const std::uint32_t* row = pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
      for (int cellX = 0; cellX < cells.width; ++cellX) {
        // Red and blue are summed in one number: sixteen bits hold those of a row of a cell.
        std::uint32_t redBlue = 0;
        std::uint32_t green = 0;
        const int right = std::min((cellX + 1) * side, width);
        for (int x = cellX * side; x < right; ++x) {
          redBlue += row[x] & 0x00ff00ff;
          green += (row[x] >> 8) & 0xff;
        }
        std::uint32_t* sum = &sums[static_cast<std::size_t>(cellX) * 3];
        sum[0] += redBlue >> 16;
        sum[1] += green;
        sum[2] += redBlue & 0xffff;
      }
    }
    Component* out = cells.row(cellY);
    for (int cellX = 0; cellX < cells.width; ++cellX) {
      const int columns = std::min((cellX + 1) * side, width) - cellX * side;
      const auto count = static_cast<std::uint32_t>(columns * (bottom - cellY * side));
      for (int c = 0; c < 3; ++c) {
        const auto index = static_cast<std::size_t>(cellX * 3 + c);
        out[index] = static_cast<Component>((sums[index] * 256 + count / 2) / count);
      }
    }
  }
  return cells;
}

// A running mean over a line of cells; beyond its ends the last cell repeats.
void blurLine(Component* line, int count, std::size_t step, std::vector<Component>& copy) {
  constexpr std::uint32_t kWindow = 2 * kBlurRadius + 1;
  for (int c = 0; c < 3; ++c) {
    for (int i = 0; i < count; ++i) copy[static_cast<std::size_t>(i)] = line[static_cast<std::size_t>(i) * step + static_cast<std::size_t>(c)];
    const auto at = [&](int i) -> std::uint32_t { return copy[static_cast<std::size_t>(std::clamp(i, 0, count - 1))]; };
    std::uint32_t sum = 0;
    for (int i = -kBlurRadius; i <= kBlurRadius; ++i) sum += at(i);
    for (int i = 0; i < count; ++i) {
      line[static_cast<std::size_t>(i) * step + static_cast<std::size_t>(c)] = static_cast<Component>((sum + kWindow / 2) / kWindow);
      sum += at(i + kBlurRadius + 1) - at(i - kBlurRadius);
    }
  }
}

void blur(Cells& cells) {
  std::vector<Component> copy(static_cast<std::size_t>(std::max(cells.width, cells.height)));
  for (int pass = 0; pass < kBlurPasses; ++pass) {
    for (int y = 0; y < cells.height; ++y) blurLine(cells.row(y), cells.width, 3, copy);
    for (int x = 0; x < cells.width; ++x) {
      blurLine(cells.components.data() + x * 3, cells.height, static_cast<std::size_t>(cells.width) * 3, copy);
    }
  }
}

void tint(Cells& cells, const Glass& glass) {
  for (std::size_t i = 0; i < cells.components.size(); i += 3) {
    Component* cell = &cells.components[i];
    const double grey = 0.2126 * cell[0] + 0.7152 * cell[1] + 0.0722 * cell[2];
    for (std::size_t c = 0; c < 3; ++c) {
      const double saturated = std::clamp(grey + (cell[c] - grey) * glass.saturation, 0.0, kComponentOne);
      const double tinted = saturated + (glass.tint[c] * kComponentOne - saturated) * glass.tintAlpha;
      cell[c] = static_cast<Component>(std::lround(tinted));
    }
  }
}

// Where a pixel lies between the middles of two cells; weight is the second one's, from 0 to 1.
struct Between {
  int first;
  int second;
  float weight;
};

Between between(int pixel, int side, int cellCount) {
  const double place = std::clamp((pixel + 0.5) / side - 0.5, 0.0, cellCount - 1.0);
  const int first = static_cast<int>(place);
  return {first, std::min(first + 1, cellCount - 1), static_cast<float>(place - first)};
}

// Pixels are mixed in blocks of fixed size, which the compiler turns into vector instructions.
constexpr int kBlock = 8;

// Rounding differs from pixel to pixel in an even pattern, so that slow gradients show no bands.
using Thresholds = std::array<float, kBlock>;
Thresholds thresholds(int y) {
  static constexpr std::array<std::uint8_t, 16> kPattern{0, 8, 2, 10, 12, 4, 14, 6, 3, 11, 1, 9, 15, 7, 13, 5};
  Thresholds row{};
  for (std::size_t x = 0; x < row.size(); ++x) {
    row[x] = (static_cast<float>(kPattern[static_cast<std::size_t>(y & 3) * 4 + (x & 3)]) + 0.5f) / 16;
  }
  return row;
}

// A row of cells drawn out to the width of the picture, a plane for each component, 0 to 255.
struct WideRow {
  int cellRow = -1;
  std::array<std::vector<float>, 3> planes;
};

void widen(Cells& cells, int cellRow, const std::vector<Between>& columns, WideRow& wide) {
  if (wide.cellRow == cellRow) return;
  wide.cellRow = cellRow;
  const Component* row = cells.row(cellRow);
  for (std::size_t c = 0; c < 3; ++c) {
    float* plane = wide.planes[c].data();
    for (std::size_t x = 0; x < columns.size(); ++x) {
      const auto left = static_cast<float>(row[static_cast<std::size_t>(columns[x].first) * 3 + c]);
      const auto right = static_cast<float>(row[static_cast<std::size_t>(columns[x].second) * 3 + c]);
      plane[x] = (left + (right - left) * columns[x].weight) / 256;
    }
  }
}

void mixBlock(const WideRow& upper, const WideRow& lower, float weight, const Thresholds& rounding, std::size_t x,
              std::uint32_t* out) {
  std::array<std::int32_t, kBlock> pixels;
  pixels.fill(0xff);
  for (std::size_t c = 0; c < 3; ++c) {
    const float* above = upper.planes[c].data() + x;
    const float* below = lower.planes[c].data() + x;
    for (std::size_t i = 0; i < kBlock; ++i) {
      const float value = above[i] + (below[i] - above[i]) * weight + rounding[i];
      pixels[i] = pixels[i] << 8 | static_cast<std::int32_t>(value);
    }
  }
  std::copy(pixels.begin(), pixels.end(), out);
}

Bitmap enlarged(Cells& cells, int width, int height, int side) {
  Bitmap bitmap(width, height);
  std::vector<Between> columns;
  columns.reserve(static_cast<std::size_t>(width));
  for (int x = 0; x < width; ++x) columns.push_back(between(x, side, cells.width));

  const std::size_t blocks = (static_cast<std::size_t>(width) + kBlock - 1) / kBlock;
  WideRow upper;
  WideRow lower;
  for (WideRow* row : {&upper, &lower}) {
    for (auto& plane : row->planes) plane.resize(blocks * kBlock);
  }
  std::vector<std::uint32_t> line(blocks * kBlock);
  for (int y = 0; y < height; ++y) {
    const Between rows = between(y, side, cells.height);
    if (lower.cellRow == rows.first) std::swap(upper, lower);
    widen(cells, rows.first, columns, upper);
    widen(cells, rows.second, columns, lower);
    const Thresholds rounding = thresholds(y);
    for (std::size_t x = 0; x < line.size(); x += kBlock) {
      mixBlock(upper, lower, rows.weight, rounding, x, &line[x]);
    }
    std::copy_n(line.begin(), width, bitmap.pixels.begin() + static_cast<std::ptrdiff_t>(y) * width);
  }
  return bitmap;
}

std::uint32_t faded(std::uint32_t pixel, double coverage) {
  std::uint32_t result = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    result |= static_cast<std::uint32_t>(std::lround(((pixel >> shift) & 0xff) * coverage)) << shift;
  }
  return result;
}

// How much of a pixel lies inside an ellipse around the origin, by its middle's distance from the edge: to first order,
// which is exact for a circle.
class EllipseCoverage {
public:
  EllipseCoverage(double radiusX, double radiusY) : m_x(std::max(radiusX, 0.5)), m_y(std::max(radiusY, 0.5)) {}

  double at(double dx, double dy) const {
    const double scaled = std::hypot(dx / m_x, dy / m_y);
    const double gradient = std::hypot(dx / (m_x * m_x), dy / (m_y * m_y));
    return gradient > 0 ? std::clamp((1 - scaled) * scaled / gradient + 0.5, 0.0, 1.0) : 1.0;
  }

  // Of the ellipse's row at that distance from its middle; a row within half a pixel of it counts as touching.
  double halfWidthAt(double dy) const {
    const double share = std::max(std::abs(dy) - 0.5, 0.0) / m_y;
    return share < 1 ? m_x * std::sqrt(1 - share * share) : -1;
  }

private:
  double m_x;
  double m_y;
};

// Clears what is outside the ellipse and softens its edge. Round it runs a faint dark line, without which
// a light disc would melt into a light window.
void cutToEllipse(Bitmap& bitmap, const DiscEdge& edge) {
  const double centerX = bitmap.width / 2.0;
  const double centerY = bitmap.height / 2.0;
  const EllipseCoverage disc(centerX - edge.inset, centerY - edge.inset);
  const double outlineInset = edge.inset - std::min(edge.inset, edge.lineWidth);
  const EllipseCoverage outline(centerX - outlineInset, centerY - outlineInset);
  for (int y = 0; y < bitmap.height; ++y) {
    std::uint32_t* row = &bitmap.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width)];
    const double dy = y + 0.5 - centerY;
    // True while the pixel is not wholly inside; from either side the rest of the row needs no look then.
    const auto cut = [&](int x) {
      const double dx = x + 0.5 - centerX;
      const double inside = disc.at(dx, dy);
      if (inside >= 1) return false;
      const double line = (outline.at(dx, dy) - inside) * kLineAlpha;
      row[x] = faded(row[x], inside) + (static_cast<std::uint32_t>(std::lround(line * 255)) << 24);
      return true;
    };
    // Most of what is outside needs no look either.
    const double reach = outline.halfWidthAt(dy) + 1;
    const int first = std::clamp(static_cast<int>(centerX - reach), 0, bitmap.width);
    const int last = std::clamp(static_cast<int>(std::ceil(centerX + reach)), first, bitmap.width);
    std::fill(row, row + first, 0);
    std::fill(row + last, row + bitmap.width, 0);
    int left = first;
    while (left < last && cut(left)) ++left;
    for (int right = last - 1; right > left && cut(right);) --right;
  }
}

Bitmap flatDisc(int width, int height, const DiscEdge& edge, const std::array<double, 3>& color, double alpha) {
  const auto byte = [](double component) { return static_cast<std::uint32_t>(std::lround(component * 255)); };
  const std::uint32_t pixel = byte(alpha) << 24 | byte(color[0] * alpha) << 16 | byte(color[1] * alpha) << 8 |
                              byte(color[2] * alpha);
  Bitmap bitmap(width, height);
  std::fill(bitmap.pixels.begin(), bitmap.pixels.end(), pixel);
  cutToEllipse(bitmap, edge);
  return bitmap;
}
} // namespace

Bitmap FrostedGlass::disc(const std::uint32_t* pixels, int width, int height, const DiscEdge& edge, double scale,
                          BackdropMaterial material) {
  const int side = std::clamp(static_cast<int>(std::lround(kCellPoints * scale)), 1, 64);
  Cells cells = meanCells(pixels, width, height, side);
  blur(cells);
  tint(cells, glassOf(material));
  Bitmap bitmap = enlarged(cells, width, height, side);
  cutToEllipse(bitmap, edge);
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

} // namespace orbel
