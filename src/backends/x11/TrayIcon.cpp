#include "backends/x11/TrayIcon.h"

#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orbel::x11 {

namespace {
constexpr std::uint8_t kTransparentDepth = 32;
constexpr std::uint32_t kEmbedVersion = 0;
constexpr std::uint32_t kEmbedMapped = 1; // the tray shows the window when it has taken it
constexpr std::uint32_t kRequestDock = 0;
constexpr int kFirstSide = 24; // pixels; the tray decides
constexpr std::uint32_t kSmallestSide = 16;
constexpr std::uint32_t kHasSmallestSize = 1U << 4; // of the size hints
constexpr std::uint32_t kAllPlanes = ~0U;
constexpr xcb_button_t kPrimary = 1, kSecondary = 3;

// One channel of premultiplied source over opaque destination.
std::uint32_t over(std::uint32_t source, std::uint32_t destination, int shift) {
  const std::uint32_t rest = 255 - (source >> 24);
  const std::uint32_t behind = ((destination >> shift & 255) * rest + 127) / 255;
  return std::min(255U, (source >> shift & 255) + behind) << shift;
}
} // namespace

TrayIcon::TrayIcon(Connection& connection, xcb_window_t tray, Contents contents)
    : m_connection(connection), m_tray(tray), m_contents(std::move(contents)) {
  const auto wish = ownReply(xcb_get_property_reply(
      connection.xcb(),
      xcb_get_property(connection.xcb(), 0, tray, connection.atom("_NET_SYSTEM_TRAY_VISUAL"),
                       XCB_ATOM_VISUALID, 0, 1),
      nullptr));
  const bool hasWish = wish && wish->format == 32 && wish->value_len == 1;
  makeWindow(hasWish ? *static_cast<const xcb_visualid_t*>(xcb_get_property_value(wish.get())) : XCB_NONE);
  describeWindow(m_contents.title);
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
  askForPlace();
}

TrayIcon::~TrayIcon() {
  xcb_free_gc(m_connection.xcb(), m_graphics);
  xcb_destroy_window(m_connection.xcb(), m_window);
  if (m_colormap != XCB_NONE) xcb_free_colormap(m_connection.xcb(), m_colormap);
  m_connection.flush();
}

void TrayIcon::makeWindow(xcb_visualid_t visual) {
  xcb_connection_t* xcb = m_connection.xcb();
  const xcb_screen_t& screen = m_connection.screen();
  m_depth = screen.root_depth;
  xcb_visualid_t used = screen.root_visual;
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
    if (depth.data->depth != kTransparentDepth) continue;
    for (auto offered = xcb_depth_visuals_iterator(depth.data); offered.rem > 0;
         xcb_visualtype_next(&offered)) {
      if (offered.data->visual_id == visual) m_depth = kTransparentDepth, used = visual;
    }
  }
  m_window = xcb_generate_id(xcb);
  const std::uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                               XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE;
  if (m_depth == kTransparentDepth) {
    m_colormap = xcb_generate_id(xcb);
    xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, m_colormap, screen.root, used);
    const std::uint32_t values[] = {0, 0, events, m_colormap};
    xcb_create_window(xcb, m_depth, m_window, screen.root, 0, 0, kFirstSide, kFirstSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, used,
                      XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP, values);
  } else {
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_PARENT_RELATIVE, events};
    xcb_create_window(xcb, m_depth, m_window, screen.root, 0, 0, kFirstSide, kFirstSide, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, used, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);
  }
  m_graphics = xcb_generate_id(xcb);
  xcb_create_gc(xcb, m_graphics, m_window, 0, nullptr);
}

void TrayIcon::describeWindow(const std::string& title) {
  xcb_connection_t* xcb = m_connection.xcb();
  const xcb_atom_t embedInfo = m_connection.atom("_XEMBED_INFO");
  const std::uint32_t embed[] = {kEmbedVersion, kEmbedMapped};
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, embedInfo, embedInfo, 32, 2, embed);
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, m_connection.atom("_NET_WM_NAME"),
                      m_connection.atom("UTF8_STRING"), 8, static_cast<std::uint32_t>(title.size()),
                      title.data());
  // Some trays hide an icon that asks for no size.
  const std::uint32_t hints[18] = {kHasSmallestSize, 0, 0, 0, 0, kSmallestSide, kSmallestSide};
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS,
                      32, 18, hints);
  constexpr char classes[] = "orbelmenu\0orbelmenu";
  xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                      sizeof classes, classes);
}

void TrayIcon::askForPlace() {
  xcb_client_message_event_t request{};
  request.response_type = XCB_CLIENT_MESSAGE;
  request.format = 32;
  request.window = m_tray;
  request.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
  request.data.data32[0] = XCB_CURRENT_TIME;
  request.data.data32[1] = kRequestDock;
  request.data.data32[2] = m_window;
  xcb_send_event(m_connection.xcb(), 0, m_tray, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&request));
  m_connection.flush();
}

void TrayIcon::handleEvent(const xcb_generic_event_t& event) {
  switch (eventType(event)) {
  case XCB_CONFIGURE_NOTIFY: {
    const auto& changed = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
    if (changed.window != m_window) return;
    const bool isNewSize = changed.width != m_width || changed.height != m_height;
    m_width = changed.width;
    m_height = changed.height;
    if (isNewSize) redraw();
    return;
  }
  case XCB_EXPOSE: {
    const auto& exposed = reinterpret_cast<const xcb_expose_event_t&>(event);
    if (exposed.window == m_window && exposed.count == 0) redraw();
    return;
  }
  case XCB_BUTTON_RELEASE: {
    const auto& released = reinterpret_cast<const xcb_button_release_event_t&>(event);
    if (released.event != m_window || (released.detail != kPrimary && released.detail != kSecondary)) return;
    // A copy: the click may end the icon.
    if (const auto clicked = m_contents.clicked) clicked();
    return;
  }
  default:
    return;
  }
}

void TrayIcon::redraw() {
  const int side = std::min(m_width, m_height);
  if (side <= 0) return;
  Bitmap picture = m_contents.picture(side);
  if (picture.isEmpty()) return;
  const int x = (m_width - picture.width) / 2, y = (m_height - picture.height) / 2;
  xcb_clear_area(m_connection.xcb(), 0, m_window, 0, 0, 0, 0);
  if (m_depth != kTransparentDepth) drawOver(picture, x, y);
  xcb_put_image(m_connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_graphics,
                static_cast<std::uint16_t>(picture.width), static_cast<std::uint16_t>(picture.height),
                static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0, m_depth,
                static_cast<std::uint32_t>(picture.pixels.size() * sizeof(std::uint32_t)),
                reinterpret_cast<const std::uint8_t*>(picture.pixels.data()));
  m_connection.flush();
}

void TrayIcon::drawOver(Bitmap& picture, int x, int y) const {
  const auto behind = ownReply(xcb_get_image_reply(
      m_connection.xcb(),
      xcb_get_image(m_connection.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, static_cast<std::int16_t>(x),
                    static_cast<std::int16_t>(y), static_cast<std::uint16_t>(picture.width),
                    static_cast<std::uint16_t>(picture.height), kAllPlanes),
      nullptr));
  // Not on the screen yet; it will be exposed.
  const std::size_t bytes = picture.pixels.size() * sizeof(std::uint32_t);
  if (!behind || static_cast<std::size_t>(xcb_get_image_data_length(behind.get())) < bytes) return;
  const auto* pixels = reinterpret_cast<const std::uint32_t*>(xcb_get_image_data(behind.get()));
  for (std::size_t index = 0; index < picture.pixels.size(); ++index) {
    const std::uint32_t source = picture.pixels[index];
    picture.pixels[index] =
        over(source, pixels[index], 16) | over(source, pixels[index], 8) | over(source, pixels[index], 0);
  }
}

} // namespace orbel::x11
