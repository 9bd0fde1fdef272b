// A piece of the screen as RGB pixels, with the comparisons that tests make and a PNG for people to look at.
#pragma once

#include "tests/support/x11/ScreenGeometry.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

namespace orbel::test {

class Picture {
public:
  Picture(int width, int height);

  int width() const { return m_width; }
  int height() const { return m_height; }
  // The whole picture, in its own coordinates (origin top left).
  ScreenRect bounds() const { return {0, 0, m_width, m_height}; }

  const Rgb& at(ScreenPoint point) const { return m_pixels[index(point)]; }
  void set(ScreenPoint point, Rgb color) { m_pixels[index(point)] = color; }

  Picture part(const ScreenRect& rect) const;
  Rgb meanColor(const ScreenRect& rect) const;
  int count(const std::function<bool(const Rgb&)>& matches) const;

  // Throws std::runtime_error when the file cannot be written. Missing folders are made.
  void savePng(const std::filesystem::path& file) const;

  friend bool operator==(const Picture&, const Picture&) = default;

private:
  // Throws std::out_of_range outside the picture.
  std::size_t index(ScreenPoint point) const;

  int m_width;
  int m_height;
  std::vector<Rgb> m_pixels;
};

// The largest difference of a component, 0 to 255.
int difference(const Rgb& first, const Rgb& second);

// Over all components of all pixels, 0 to 255. The pictures must be of one size (std::invalid_argument).
struct PictureDifference {
  double mean = 0;
  int largest = 0;
};
PictureDifference difference(const Picture& first, const Picture& second);

} // namespace orbel::test
