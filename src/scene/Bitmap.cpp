#include "scene/Bitmap.h"

#include <algorithm>

namespace orbel {

namespace {
std::uint32_t meanOfFour(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
  // Two channels at a time, each in 16 bits, so that the sums have room; 2 rounds to nearest.
  constexpr std::uint32_t kEven = 0x00ff00ff;
  const std::uint32_t even = (a & kEven) + (b & kEven) + (c & kEven) + (d & kEven) + 0x00020002;
  const std::uint32_t odd =
      ((a >> 8) & kEven) + ((b >> 8) & kEven) + ((c >> 8) & kEven) + ((d >> 8) & kEven) + 0x00020002;
  return ((even >> 2) & kEven) | (((odd >> 2) & kEven) << 8);
}
} // namespace

Bitmap Bitmap::halved() const {
  Bitmap half(std::max(1, (width + 1) / 2), std::max(1, (height + 1) / 2));
  for (int y = 0; y < half.height; ++y) {
    const auto* upper =
        &pixels[static_cast<std::size_t>(std::min(2 * y, height - 1)) * static_cast<std::size_t>(width)];
    const auto* lower =
        &pixels[static_cast<std::size_t>(std::min(2 * y + 1, height - 1)) * static_cast<std::size_t>(width)];
    auto* row = &half.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(half.width)];
    for (int x = 0; x < half.width; ++x) {
      const int left = std::min(2 * x, width - 1);
      const int right = std::min(2 * x + 1, width - 1);
      row[x] = meanOfFour(upper[left], upper[right], lower[left], lower[right]);
    }
  }
  return half;
}

} // namespace orbel
