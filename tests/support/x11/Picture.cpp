#include "tests/support/x11/Picture.h"

#include <algorithm>
#include <cstdlib>
#include <png.h>
#include <stdexcept>

namespace orbel::test {

Picture::Picture(int width, int height)
    : m_width(width), m_height(height),
      m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {}

std::size_t Picture::index(ScreenPoint point) const {
  if (!bounds().contains(point)) throw std::out_of_range("a pixel outside of the picture");
  return static_cast<std::size_t>(point.y) * static_cast<std::size_t>(m_width) +
         static_cast<std::size_t>(point.x);
}

Picture Picture::part(const ScreenRect& rect) const {
  Picture result(rect.width, rect.height);
  for (int y = 0; y < rect.height; ++y) {
    for (int x = 0; x < rect.width; ++x)
      result.set({x, y}, at({rect.x + x, rect.y + y}));
  }
  return result;
}

Rgb Picture::meanColor(const ScreenRect& rect) const {
  long red = 0;
  long green = 0;
  long blue = 0;
  for (int y = rect.y; y < rect.y + rect.height; ++y) {
    for (int x = rect.x; x < rect.x + rect.width; ++x) {
      const Rgb& color = at({x, y});
      red += color.red;
      green += color.green;
      blue += color.blue;
    }
  }
  const long number = static_cast<long>(rect.width) * rect.height;
  if (number <= 0) throw std::invalid_argument("the mean colour of an empty rectangle");
  const auto mean = [number](long sum) { return static_cast<std::uint8_t>((sum + number / 2) / number); };
  return {mean(red), mean(green), mean(blue)};
}

int Picture::count(const std::function<bool(const Rgb&)>& matches) const {
  return static_cast<int>(std::count_if(m_pixels.begin(), m_pixels.end(), matches));
}

void Picture::savePng(const std::filesystem::path& file) const {
  static_assert(sizeof(Rgb) == 3, "a row of pixels is a row of bytes");
  std::filesystem::create_directories(file.parent_path());
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(m_width);
  image.height = static_cast<png_uint_32>(m_height);
  image.format = PNG_FORMAT_RGB;
  if (!png_image_write_to_file(&image, file.c_str(), 0, m_pixels.data(), 0, nullptr)) {
    throw std::runtime_error(file.string() + ": " + image.message);
  }
}

int difference(const Rgb& first, const Rgb& second) {
  return std::max({std::abs(first.red - second.red), std::abs(first.green - second.green),
                   std::abs(first.blue - second.blue)});
}

PictureDifference difference(const Picture& first, const Picture& second) {
  if (first.bounds() != second.bounds()) throw std::invalid_argument("pictures of different sizes");
  PictureDifference result;
  long sum = 0;
  for (int y = 0; y < first.height(); ++y) {
    for (int x = 0; x < first.width(); ++x) {
      const Rgb& a = first.at({x, y});
      const Rgb& b = second.at({x, y});
      sum += std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
      result.largest = std::max(result.largest, difference(a, b));
    }
  }
  const double components = 3.0 * first.width() * first.height();
  result.mean = components > 0 ? static_cast<double>(sum) / components : 0;
  return result;
}

} // namespace orbel::test
