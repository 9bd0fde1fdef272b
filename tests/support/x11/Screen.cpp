#include "tests/support/x11/Screen.h"

#include "tests/support/x11/XcbReply.h"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <xcb/xfixes.h>

namespace orbel::test {

namespace {

constexpr int kBytesPerPixel = 4;

} // namespace

Screen::Screen(DisplayConnection& display, std::filesystem::path pictureFolder)
    : m_display(display), m_pictureFolder(std::move(pictureFolder)) {
  // The server refuses every request of XFixes before that for the version.
  const auto cookie = xcb_xfixes_query_version(display.get(), 4, 0);
  const XcbReply<xcb_xfixes_query_version_reply_t> reply(
      xcb_xfixes_query_version_reply(display.get(), cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server has no XFixes");
}

ScreenRect Screen::bounds() const {
  return {0, 0, m_display.screen().width_in_pixels, m_display.screen().height_in_pixels};
}

Picture Screen::capture(const ScreenRect& rect) const {
  const int left = std::max(rect.x, 0);
  const int top = std::max(rect.y, 0);
  const int width = std::min(rect.x + rect.width, bounds().width) - left;
  const int height = std::min(rect.y + rect.height, bounds().height) - top;
  if (width <= 0 || height <= 0) throw std::invalid_argument("nothing of the rectangle is on the screen");
  const auto cookie =
      xcb_get_image(m_display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_display.root(),
                    static_cast<std::int16_t>(left), static_cast<std::int16_t>(top),
                    static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), ~0U);
  const XcbReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_display.get(), cookie, nullptr));
  const int expectedBytes = width * height * kBytesPerPixel;
  if (!reply || xcb_get_image_data_length(reply.get()) < expectedBytes) {
    throw std::runtime_error("the screen cannot be read");
  }
  // Depth 24 on a little-endian server: blue, green, red, unused.
  const std::uint8_t* byte = xcb_get_image_data(reply.get());
  Picture picture(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x, byte += kBytesPerPixel)
      picture.set({x, y}, {byte[2], byte[1], byte[0]});
  }
  return picture;
}

Rgb Screen::pixel(ScreenPoint point) const {
  return capture({point.x, point.y, 1, 1}).at({0, 0});
}

std::filesystem::path Screen::save(const std::string& name) const {
  return save(name, bounds());
}

std::filesystem::path Screen::save(const std::string& name, const ScreenRect& rect) const {
  const std::filesystem::path file = m_pictureFolder / (name + ".png");
  capture(rect).savePng(file);
  return file;
}

void Screen::hidePointer() {
  xcb_xfixes_hide_cursor(m_display.get(), m_display.root());
  m_display.roundTrip();
}

void Screen::showPointer() {
  xcb_xfixes_show_cursor(m_display.get(), m_display.root());
  m_display.roundTrip();
}

} // namespace orbel::test
