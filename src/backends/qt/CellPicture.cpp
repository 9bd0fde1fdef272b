#include "backends/qt/CellPicture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orbel {

namespace {
constexpr double kComponentOne = 255 * 256.0;
constexpr int kBlurPasses = 3;
// Pixels are mixed in blocks of fixed size, which the compiler turns into vector instructions.
constexpr std::size_t kBlock = 8;

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

// Rounding differs from pixel to pixel in an even pattern, so that slow gradients show no bands.
using Thresholds = std::array<float, kBlock>;
Thresholds thresholds(int y) {
  static constexpr std::array<std::uint8_t, 16> kPattern{0, 8,  2, 10, 12, 4, 14, 6,
                                                         3, 11, 1, 9,  15, 7, 13, 5};
  Thresholds row{};
  for (std::size_t x = 0; x < row.size(); ++x) {
    row[x] = (static_cast<float>(kPattern[static_cast<std::size_t>(y & 3) * 4 + (x & 3)]) + 0.5f) / 16;
  }
  return row;
}

// A row of cells drawn out to the width of the picture, a plane for each component, 0 to 255.
struct WideRow {
  explicit WideRow(std::size_t width) {
    for (auto& plane : planes)
      plane.resize(width);
  }

  void draw(const std::uint16_t* cells, const std::vector<Between>& columns) {
    for (std::size_t c = 0; c < planes.size(); ++c) {
      float* plane = planes[c].data();
      for (std::size_t x = 0; x < columns.size(); ++x) {
        const auto left = static_cast<float>(cells[static_cast<std::size_t>(columns[x].first) * 3 + c]);
        const auto right = static_cast<float>(cells[static_cast<std::size_t>(columns[x].second) * 3 + c]);
        plane[x] = (left + (right - left) * columns[x].weight) / 256;
      }
    }
  }

  int cellRow = -1;
  std::array<std::vector<float>, 3> planes;
};

void mixBlock(const WideRow& upper, const WideRow& lower, float weight, const Thresholds& rounding,
              std::size_t x, std::uint32_t* out) {
  std::array<std::int32_t, kBlock> pixels;
  pixels.fill(0xff);
  for (std::size_t c = 0; c < upper.planes.size(); ++c) {
    const float* above = upper.planes[c].data() + x;
    const float* below = lower.planes[c].data() + x;
    for (std::size_t i = 0; i < kBlock; ++i) {
      const float value = above[i] + (below[i] - above[i]) * weight + rounding[i];
      pixels[i] = pixels[i] << 8 | static_cast<std::int32_t>(value);
    }
  }
  std::copy(pixels.begin(), pixels.end(), out);
}
} // namespace

CellPicture::CellPicture(const std::uint32_t* pixels, int width, int height, int side)
    : m_width(width), m_height(height), m_side(side), m_columns((width + side - 1) / side),
      m_rows((height + side - 1) / side) {
  m_components.resize(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows) * 3);
  std::vector<std::uint32_t> sums(static_cast<std::size_t>(m_columns) * 3);
  for (int cellY = 0; cellY < m_rows; ++cellY) {
    std::fill(sums.begin(), sums.end(), 0);
    const int bottom = std::min((cellY + 1) * side, height);
    for (int y = cellY * side; y < bottom; ++y) {
      const std::uint32_t* line = pixels + static_cast<std::ptrdiff_t>(y) * width;
      std::uint32_t* sum = sums.data();
      for (int left = 0; left < width; left += side, sum += 3) {
        // Red and blue are summed in one number: sixteen bits hold those of a line of a cell.
        std::uint32_t redBlue = 0;
        std::uint32_t green = 0;
        const int right = std::min(left + side, width);
        for (int x = left; x < right; ++x) {
          redBlue += line[x] & 0x00ff00ff;
          green += (line[x] >> 8) & 0xff;
        }
        sum[0] += redBlue >> 16;
        sum[1] += green;
        sum[2] += redBlue & 0xffff;
      }
    }
    Component* out = row(cellY);
    for (std::size_t i = 0; i < sums.size(); ++i) {
      const int left = static_cast<int>(i / 3) * side;
      const int count = (std::min(left + side, width) - left) * (bottom - cellY * side);
      const auto divisor = static_cast<std::uint32_t>(count);
      out[i] = static_cast<Component>((sums[i] * 256 + divisor / 2) / divisor);
    }
  }
}

void CellPicture::blur(int radius) {
  std::vector<Component> copy(static_cast<std::size_t>(std::max(m_columns, m_rows)));
  for (int pass = 0; pass < kBlurPasses; ++pass) {
    for (int y = 0; y < m_rows; ++y)
      blurLine(row(y), m_columns, 3, radius, copy);
    for (int x = 0; x < m_columns; ++x)
      blurLine(row(0) + x * 3, m_rows, m_columns * 3, radius, copy);
  }
}

// Beyond the ends of the line its last cells repeat.
void CellPicture::blurLine(Component* line, int count, int step, int radius, std::vector<Component>& copy) {
  const auto window = static_cast<std::uint32_t>(2 * radius + 1);
  const auto at = [&](int i) -> std::uint32_t {
    return copy[static_cast<std::size_t>(std::clamp(i, 0, count - 1))];
  };
  for (int c = 0; c < 3; ++c) {
    for (int i = 0; i < count; ++i)
      copy[static_cast<std::size_t>(i)] = line[i * step + c];
    std::uint32_t sum = 0;
    for (int i = -radius; i <= radius; ++i)
      sum += at(i);
    for (int i = 0; i < count; ++i) {
      line[i * step + c] = static_cast<Component>((sum + window / 2) / window);
      sum += at(i + radius + 1) - at(i - radius);
    }
  }
}

void CellPicture::tint(double saturation, const std::array<double, 3>& color, double share) {
  for (std::size_t i = 0; i < m_components.size(); i += 3) {
    Component* cell = &m_components[i];
    const double grey = 0.2126 * cell[0] + 0.7152 * cell[1] + 0.0722 * cell[2];
    for (std::size_t c = 0; c < 3; ++c) {
      const double saturated = std::clamp(grey + (cell[c] - grey) * saturation, 0.0, kComponentOne);
      cell[c] = static_cast<Component>(saturated + (color[c] * kComponentOne - saturated) * share + 0.5);
    }
  }
}

Bitmap CellPicture::enlarged() const {
  Bitmap bitmap(m_width, m_height);
  std::vector<Between> columns;
  columns.reserve(static_cast<std::size_t>(m_width));
  for (int x = 0; x < m_width; ++x)
    columns.push_back(between(x, m_side, m_columns));

  std::vector<std::uint32_t> line((columns.size() + kBlock - 1) / kBlock * kBlock);
  WideRow upper(line.size());
  WideRow lower(line.size());
  const auto draw = [&](WideRow& wide, int cellRow) {
    if (wide.cellRow == cellRow) return;
    wide.cellRow = cellRow;
    wide.draw(row(cellRow), columns);
  };
  for (int y = 0; y < m_height; ++y) {
    const Between rows = between(y, m_side, m_rows);
    if (lower.cellRow == rows.first) std::swap(upper, lower);
    draw(upper, rows.first);
    draw(lower, rows.second);
    const Thresholds rounding = thresholds(y);
    for (std::size_t x = 0; x < line.size(); x += kBlock) {
      mixBlock(upper, lower, rows.weight, rounding, x, &line[x]);
    }
    std::copy_n(line.begin(), m_width, bitmap.pixels.begin() + static_cast<std::ptrdiff_t>(y) * m_width);
  }
  return bitmap;
}

} // namespace orbel
