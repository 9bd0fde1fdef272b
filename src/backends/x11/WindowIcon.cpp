#include "backends/x11/WindowIcon.h"

#include "backends/x11/PropertyRequest.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace orbel::x11 {

namespace {

constexpr std::uint32_t kMaximumBytes = 16 * 1024 * 1024; // several pictures of 1024 pixels
constexpr std::uint32_t kMaximumSide = 4096;

struct Picture {
  int width = 0;
  int height = 0;
  std::span<const std::uint32_t> pixels; // straight alpha

  int smallerSide() const { return std::min(width, height); }
};

std::uint32_t premultiplied(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  const auto channel = [&](unsigned shift) {
    return (((pixel >> shift & 0xFFU) * alpha + 127) / 255) << shift;
  };
  return alpha << 24 | channel(16) | channel(8) | channel(0);
}

// Width, height and pixels, one picture after the other. Takes the first off; none when what follows is
// not whole.
std::optional<Picture> takePicture(std::span<const std::uint32_t>& items) {
  if (items.size() < 2) return std::nullopt;
  const std::uint32_t width = items[0];
  const std::uint32_t height = items[1];
  items = items.subspan(2);
  if (width == 0 || height == 0 || width > kMaximumSide || height > kMaximumSide) return std::nullopt;
  const std::size_t count = std::size_t{width} * height;
  if (count > items.size()) return std::nullopt;
  const Picture picture{static_cast<int>(width), static_cast<int>(height), items.first(count)};
  items = items.subspan(count);
  return picture;
}

bool isBetter(const Picture& picture, const Picture& than, int pixelSize) {
  const bool isLargeEnough = picture.smallerSide() >= pixelSize;
  if (isLargeEnough != (than.smallerSide() >= pixelSize)) return isLargeEnough;
  return isLargeEnough ? picture.smallerSide() < than.smallerSide()
                       : picture.smallerSide() > than.smallerSide();
}

} // namespace

Bitmap WindowIcon::read(Connection& connection, xcb_window_t window, int pixelSize) {
  PropertyRequest property(connection, window, "_NET_WM_ICON", kMaximumBytes);
  auto items = property.numbers();
  std::optional<Picture> best;
  while (const auto picture = takePicture(items))
    if (!best || isBetter(*picture, *best, pixelSize)) best = picture;
  if (!best) return {};

  Bitmap bitmap(best->width, best->height);
  std::ranges::transform(best->pixels, bitmap.pixels.begin(), premultiplied);
  return bitmap;
}

} // namespace orbel::x11
