#include "backends/qt/canvas/CellPicture.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace orbel::qt {

namespace {
constexpr double kComponentOne = 255 * 256.0;
constexpr int kBlurPasses = 3;
// Pixels are summed and mixed in blocks of fixed size, which the compiler turns into vector instructions.
constexpr std::size_t kBlock = 8;

std::size_t wholeBlocks(int width) {
  return (static_cast<std::size_t>(width) + kBlock - 1) / kBlock * kBlock;
}

// Mixing is done with six bits behind the point: the largest difference still doubles into sixteen bits.
constexpr int kMixShift = 6;
constexpr int kComponentToMix = 8 - kMixShift;

// A step of the way from one value to another, which weight is in 2^15th: the upper half of a product, for
// which there is an instruction.
std::int16_t mixed(std::int16_t from, std::int16_t to, std::int16_t weight) {
  const auto doubled = static_cast<std::int16_t>((to - from) * 2);
  return static_cast<std::int16_t>(from + (doubled * weight >> 16));
}

// Where a row of pixels lies between the middles of two cells; weight is the second one's in 2^15th.
struct Between {
  int first;
  int second;
  std::int16_t weight;
};

Between between(int pixel, int side, int cellCount) {
  const double place = std::clamp((pixel + 0.5) / side - 0.5, 0.0, cellCount - 1.0);
  const int first = static_cast<int>(place);
  return {first, std::min(first + 1, cellCount - 1), static_cast<std::int16_t>((place - first) * 32767)};
}

// Rounding differs from pixel to pixel in an even pattern, so that slow gradients show no bands.
using Thresholds = std::array<std::int16_t, kBlock>;
Thresholds thresholds(int y) {
  static constexpr std::array<std::uint8_t, 16> kPattern{0, 8,  2, 10, 12, 4, 14, 6,
                                                         3, 11, 1, 9,  15, 7, 13, 5};
  Thresholds row{};
  for (std::size_t x = 0; x < row.size(); ++x) {
    const int place = kPattern[static_cast<std::size_t>(y & 3) * 4 + (x & 3)];
    row[x] = static_cast<std::int16_t>((2 * place + 1) << kMixShift >> 5);
  }
  return row;
}

// A row of cells drawn out to the width of the picture, a plane for each component.
struct WideRow {
  explicit WideRow(std::size_t width) {
    for (auto& plane : planes)
      plane.resize(width);
  }

  // Between the middles of two cells the value rises evenly; before the first and after the last it stays.
  void draw(const std::uint16_t* cells, int cellCount, int side, int width) {
    for (std::size_t c = 0; c < planes.size(); ++c) {
      const auto cell = [&](int index) {
        return cells[static_cast<std::size_t>(std::clamp(index, 0, cellCount - 1)) * 3 + c] >>
               kComponentToMix;
      };
      std::int16_t* pixel = planes[c].data();
      std::int16_t* const end = pixel + width;
      for (int gap = 0; pixel < end; ++gap) {
        const int from = cell(gap - 1);
        const std::int32_t step = ((cell(gap) - from) << 16) / side;
        std::int32_t value = (from << 16) + (side % 2 == 0 ? step / 2 : 0);
        const int length = gap == 0 ? side / 2 : side;
        std::int16_t* const gapEnd = std::min(pixel + length, end);
        for (; pixel < gapEnd; value += step)
          *pixel++ = static_cast<std::int16_t>(value >> 16);
      }
    }
  }

  int cellRow = -1;
  std::array<std::vector<std::int16_t>, 3> planes;
};

using BlockOfBytes = std::array<std::uint16_t, kBlock>;

BlockOfBytes mixBlock(const std::int16_t* above, const std::int16_t* below, std::int16_t weight,
                      const Thresholds& rounding) {
  BlockOfBytes bytes;
  for (std::size_t i = 0; i < kBlock; ++i) {
    const auto value = static_cast<std::int16_t>(mixed(above[i], below[i], weight) + rounding[i]);
    bytes[i] = static_cast<std::uint16_t>(value >> kMixShift);
  }
  return bytes;
}

void mixBlock(const WideRow& upper, const WideRow& lower, std::int16_t weight, const Thresholds& rounding,
              std::size_t x, std::uint32_t* out) {
  const auto component = [&](std::size_t c) {
    return mixBlock(upper.planes[c].data() + x, lower.planes[c].data() + x, weight, rounding);
  };
  const BlockOfBytes red = component(0);
  const BlockOfBytes green = component(1);
  const BlockOfBytes blue = component(2);
  for (std::size_t i = 0; i < kBlock; ++i) {
    const auto upperHalf = static_cast<std::uint16_t>(red[i] | 0xff00);
    const auto lowerHalf = static_cast<std::uint16_t>(green[i] << 8 | blue[i]);
    out[i] = static_cast<std::uint32_t>(upperHalf) << 16 | lowerHalf;
  }
}

// The sums of the pixels of some lines, for each of the picture's columns: red and blue in one number, of
// which sixteen bits hold those of the tallest cell.
class ColumnSums {
public:
  explicit ColumnSums(int width) : m_redBlue(wholeBlocks(width)), m_green(wholeBlocks(width)) {}

  void clear() {
    std::fill(m_redBlue.begin(), m_redBlue.end(), 0);
    std::fill(m_green.begin(), m_green.end(), 0);
  }

  void add(const std::uint32_t* line, std::size_t width) {
    std::size_t x = 0;
    for (; x + kBlock <= width; x += kBlock)
      addBlock(line + x, &m_redBlue[x], &m_green[x]);
    std::array<std::uint32_t, kBlock> rest{};
    std::copy(line + x, line + width, rest.begin());
    if (x < width) addBlock(rest.data(), &m_redBlue[x], &m_green[x]);
  }

  // Over the columns from left to right, without the last.
  std::array<std::uint32_t, 3> sum(int left, int right) const {
    std::array<std::uint32_t, 3> sums{};
    for (auto x = static_cast<std::size_t>(left); x < static_cast<std::size_t>(right); ++x) {
      sums[0] += m_redBlue[x] >> 16;
      sums[1] += m_green[x];
      sums[2] += m_redBlue[x] & 0xffff;
    }
    return sums;
  }

private:
  static void addBlock(const std::uint32_t* pixels, std::uint32_t* redBlue, std::uint32_t* green) {
    for (std::size_t i = 0; i < kBlock; ++i) {
      redBlue[i] += pixels[i] & 0x00ff00ff;
      green[i] += (pixels[i] >> 8) & 0xff;
    }
  }

  std::vector<std::uint32_t> m_redBlue;
  std::vector<std::uint32_t> m_green;
};
} // namespace

CellPicture::CellPicture(const std::uint32_t* pixels, int width, int height, int side)
    : m_width(width), m_height(height), m_side(side), m_columns((width + side - 1) / side),
      m_rows((height + side - 1) / side) {
  m_components.resize(static_cast<std::size_t>(m_columns) * static_cast<std::size_t>(m_rows) * 3);
  ColumnSums lines(width);
  for (int cellY = 0; cellY < m_rows; ++cellY) {
    lines.clear();
    const int bottom = std::min((cellY + 1) * side, height);
    for (int y = cellY * side; y < bottom; ++y)
      lines.add(pixels + static_cast<std::ptrdiff_t>(y) * width, static_cast<std::size_t>(width));
    Component* out = row(cellY);
    for (int left = 0; left < width; left += side) {
      const int right = std::min(left + side, width);
      const auto count = static_cast<std::uint32_t>((right - left) * (bottom - cellY * side));
      for (const std::uint32_t sum : lines.sum(left, right))
        *out++ = static_cast<Component>((sum * 256 + count / 2) / count);
    }
  }
}

void CellPicture::blur(int radius) {
  const int longest = std::max(m_columns, m_rows);
  std::vector<Component> copy(static_cast<std::size_t>(longest + 2 * radius + 1));
  for (int pass = 0; pass < kBlurPasses; ++pass) {
    for (int y = 0; y < m_rows; ++y)
      blurLine(row(y), m_columns, 3, radius, copy);
    for (int x = 0; x < m_columns; ++x)
      blurLine(row(0) + x * 3, m_rows, m_columns * 3, radius, copy);
  }
}

void CellPicture::blurLine(Component* line, int count, int step, int radius, std::vector<Component>& copy) {
  const std::size_t window = 2 * static_cast<std::size_t>(radius) + 1;
  // Dividing by multiplying: exact for every sum of sixteen-bit numbers here.
  const std::uint64_t reciprocal = (std::uint64_t{1} << 32) / window + 1;
  for (int c = 0; c < 3; ++c) {
    // Beyond the ends of the line its last cells repeat.
    Component* end = std::fill_n(copy.data(), radius, line[c]);
    for (int i = 0; i < count; ++i)
      *end++ = line[i * step + c];
    std::fill_n(end, radius + 1, line[(count - 1) * step + c]);

    std::uint64_t sum = std::accumulate(copy.data(), copy.data() + window, std::uint64_t{0});
    const Component* oldest = copy.data();
    for (int i = 0; i < count; ++i, ++oldest) {
      line[i * step + c] = static_cast<Component>((sum + window / 2) * reciprocal >> 32);
      sum += oldest[window];
      sum -= *oldest;
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
  std::vector<std::uint32_t> line(wholeBlocks(m_width));
  WideRow upper(line.size());
  WideRow lower(line.size());
  const auto draw = [&](WideRow& wide, int cellRow) {
    if (wide.cellRow == cellRow) return;
    wide.cellRow = cellRow;
    wide.draw(row(cellRow), m_columns, m_side, m_width);
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

} // namespace orbel::qt
