// A coarse picture of a piece of the screen: one colour for each square cell of pixels. It is blurred and
// tinted as such, which costs a fraction of doing so with the pixels, and drawn out to their size again
// without a trace of the cells.
#pragma once

#include "scene/Bitmap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace orbel::qt {

class CellPicture {
public:
  // Each cell is the mean of side by side pixels; those at the right and bottom edges may have fewer. The
  // pixels are opaque, rows from top to bottom without padding.
  CellPicture(const std::uint32_t* pixels, int width, int height, int side);

  // Three means over the cells that are at most that far away: close to a bell.
  void blur(int radius);
  // Moves the colours away from grey by the factor, then towards the colour (red, green, blue from 0 to 1) by
  // the share.
  void tint(double saturation, const std::array<double, 3>& color, double share);
  // Opaque, of the size of the original.
  Bitmap enlarged() const;

private:
  // In 8.8 fixed point: a smooth surface shows steps if it is rounded to 8 bits on the way.
  using Component = std::uint16_t;

  Component* row(int y) { return m_components.data() + static_cast<std::ptrdiff_t>(y) * m_columns * 3; }
  const Component* row(int y) const {
    return m_components.data() + static_cast<std::ptrdiff_t>(y) * m_columns * 3;
  }
  void blurLine(Component* line, int count, int step, int radius, std::vector<Component>& copy);

  int m_width; // pixels
  int m_height;
  int m_side;
  int m_columns; // cells
  int m_rows;
  std::vector<Component> m_components; // red, green and blue of each cell
};

} // namespace orbel::qt
