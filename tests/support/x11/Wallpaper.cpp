#include "tests/support/x11/Wallpaper.h"

#include <array>
#include <vector>

namespace orbel::test {

namespace {

constexpr int kBytesPerPixel = 4;
constexpr int kRowsPerRequest = 32; // 1280 pixels wide that stays below the core protocol's request limit

std::uint8_t between(int low, int high, int position, int length) {
  return static_cast<std::uint8_t>(low + (high - low) * position / length);
}

} // namespace

Rgb Wallpaper::colorAt(ScreenPoint point) {
  constexpr int kSpanX = 1280;
  constexpr int kSpanY = 1024;
  return {between(40, 235, point.x, kSpanX), between(70, 190, point.y, kSpanY),
          between(200, 90, point.x + point.y, kSpanX + kSpanY)};
}

Wallpaper::Wallpaper(DisplayConnection& display) : m_display(display) {
  const xcb_screen_t& screen = display.screen();
  m_pixmap = xcb_generate_id(display.get());
  xcb_create_pixmap(display.get(), screen.root_depth, m_pixmap, screen.root, screen.width_in_pixels,
                    screen.height_in_pixels);
  paint();
  xcb_change_window_attributes(display.get(), screen.root, XCB_CW_BACK_PIXMAP, &m_pixmap);
  xcb_clear_area(display.get(), 0, screen.root, 0, 0, 0, 0);
  for (const char* property : {"_XROOTPMAP_ID", "ESETROOT_PMAP_ID"}) {
    xcb_change_property(display.get(), XCB_PROP_MODE_REPLACE, screen.root, display.atom(property),
                        XCB_ATOM_PIXMAP, 32, 1, &m_pixmap);
  }
  display.roundTrip();
}

void Wallpaper::showAsDesktopWindow() {
  const xcb_screen_t& screen = m_display.screen();
  m_desktopWindow = xcb_generate_id(m_display.get());
  xcb_create_window(m_display.get(), XCB_COPY_FROM_PARENT, m_desktopWindow, screen.root, 0, 0,
                    screen.width_in_pixels, screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                    screen.root_visual, XCB_CW_BACK_PIXMAP, &m_pixmap);
  const xcb_atom_t kind = m_display.atom("_NET_WM_WINDOW_TYPE_DESKTOP");
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, m_desktopWindow,
                      m_display.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &kind);
  xcb_map_window(m_display.get(), m_desktopWindow);
  m_display.roundTrip();
}

void Wallpaper::paint() {
  const int width = m_display.screen().width_in_pixels;
  const int height = m_display.screen().height_in_pixels;
  const xcb_gcontext_t context = xcb_generate_id(m_display.get());
  xcb_create_gc(m_display.get(), context, m_pixmap, 0, nullptr);
  std::vector<std::uint8_t> rows(static_cast<std::size_t>(width * kRowsPerRequest * kBytesPerPixel));
  for (int top = 0; top < height; top += kRowsPerRequest) {
    auto byte = rows.begin();
    for (int y = top; y < top + kRowsPerRequest; ++y) {
      for (int x = 0; x < width; ++x) {
        const Rgb color = colorAt({x, y});
        for (const std::uint8_t component : {color.blue, color.green, color.red, std::uint8_t{0}}) {
          *byte++ = component;
        }
      }
    }
    xcb_put_image(m_display.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_pixmap, context,
                  static_cast<std::uint16_t>(width), kRowsPerRequest, 0, static_cast<std::int16_t>(top), 0,
                  m_display.screen().root_depth, static_cast<std::uint32_t>(rows.size()), rows.data());
  }
  xcb_free_gc(m_display.get(), context);
}

} // namespace orbel::test
