// Pixels: premultiplied ARGB, 32 bits each in native byte order, rows from top to bottom without padding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orbel {

struct Bitmap {
  int width = 0;  // pixels
  int height = 0; // pixels
  std::vector<std::uint32_t> pixels;

  Bitmap() = default;
  Bitmap(int bitmapWidth, int bitmapHeight)
      : width(bitmapWidth), height(bitmapHeight),
        pixels(static_cast<std::size_t>(bitmapWidth) * static_cast<std::size_t>(bitmapHeight)) {}

  bool isEmpty() const { return width <= 0 || height <= 0; }

  // Half the size in both directions, each pixel the mean of four; an odd last row or column counts alone.
  Bitmap halved() const;
};

} // namespace orbel
