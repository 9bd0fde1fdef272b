#include "backends/x11/RootSnapshot.h"

#include "backends/x11/Connection.h"
#include "backends/x11/SharedPixels.h"
#include "foundation/Log.h"

#include <algorithm>
#include <bit>
#include <utility>
#include <xcb/shm.h>

namespace orbel::x11 {

namespace {
constexpr std::uint32_t kOpaque = 0xff000000;

std::size_t area(const common::DeviceRect& rect) {
  return static_cast<std::size_t>(rect.width) * static_cast<std::size_t>(rect.height);
}

// Spreads the pixels of a part, packed without padding, over the whole, repeating those at its edges.
void spread(const std::uint32_t* packed, const common::DeviceRect& part, std::uint32_t* pixels,
            const common::DeviceRect& whole) {
  for (int y = 0; y < whole.height; ++y) {
    const int sourceY = std::clamp(whole.y + y, part.y, part.bottom() - 1) - part.y;
    const std::uint32_t* source = packed + static_cast<std::ptrdiff_t>(sourceY) * part.width;
    std::uint32_t* row = pixels + static_cast<std::ptrdiff_t>(y) * whole.width;
    const int left = part.x - whole.x;
    std::fill_n(row, left, source[0]);
    std::copy_n(source, part.width, row + left);
    std::fill(row + left + part.width, row + whole.width, source[part.width - 1]);
  }
}
} // namespace

RootSnapshot::RootSnapshot(Connection& connection, SharedPixelsStore& sharedPixels)
    : m_connection(connection), m_sharedPixels(sharedPixels) {}

RootSnapshot::~RootSnapshot() {
  release();
}

bool RootSnapshot::capture(const common::DeviceRect& rect) {
  const xcb_screen_t& screen = m_connection.screen();
  const common::DeviceRect part = rect.intersected({0, 0, screen.width_in_pixels, screen.height_in_pixels});
  release();
  if (part.isEmpty()) return false; // nothing of it can be seen
  if (!hasKnownPixels()) {
    Log::warning("the screen's pixels have a form that cannot be read; the menu has a plain background");
    return false;
  }
  m_rect = rect;
  // The part lies behind the whole, so that it can be spread over it.
  const std::size_t total = area(rect) + (part == rect ? 0 : area(part));
  const std::size_t offset = part == rect ? 0 : area(rect);
  std::uint32_t* memory = nullptr;
  m_shared = m_sharedPixels.take(total);
  if (m_shared && readShared(part, offset)) {
    memory = m_shared->pixels();
  } else {
    release();
    m_copied = std::make_unique<std::uint32_t[]>(total);
    if (!readCopied(part, m_copied.get() + offset)) {
      release();
      Log::warning("the screen's pixels cannot be read; the menu has a plain background");
      return false;
    }
    memory = m_copied.get();
  }
  for (std::size_t i = offset; i < offset + area(part); ++i)
    memory[i] |= kOpaque;
  if (offset > 0) spread(memory + offset, part, memory, rect);
  m_pixels = memory;
  return true;
}

void RootSnapshot::patchFrom(const common::ScreenPicture& older) {
  if (isEmpty() || older.isEmpty()) return;
  const common::DeviceRect shared = m_rect.intersected(older.rect());
  if (shared.isEmpty()) return;
  for (int y = shared.y; y < shared.bottom(); ++y) {
    const auto at = [&](const common::DeviceRect& rect) {
      return static_cast<std::ptrdiff_t>(y - rect.y) * rect.width + (shared.x - rect.x);
    };
    std::copy_n(older.pixels() + at(older.rect()), shared.width, m_pixels + at(m_rect));
  }
}

void RootSnapshot::release() {
  m_sharedPixels.giveBack(std::move(m_shared));
  m_copied.reset();
  m_pixels = nullptr;
}

bool RootSnapshot::hasKnownPixels() const {
  const xcb_screen_t& screen = m_connection.screen();
  const bool littleEndianServer = m_connection.setup().image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
  if (littleEndianServer != (std::endian::native == std::endian::little)) return false;
  for (auto format = xcb_setup_pixmap_formats_iterator(&m_connection.setup()); format.rem > 0;
       xcb_format_next(&format)) {
    if (format.data->depth == screen.root_depth && format.data->bits_per_pixel != 32) return false;
  }
  for (auto depth = xcb_screen_allowed_depths_iterator(&screen); depth.rem > 0; xcb_depth_next(&depth)) {
    for (auto visual = xcb_depth_visuals_iterator(depth.data); visual.rem > 0; xcb_visualtype_next(&visual)) {
      if (visual.data->visual_id != screen.root_visual) continue;
      return visual.data->red_mask == 0xff0000 && visual.data->green_mask == 0xff00 &&
             visual.data->blue_mask == 0xff;
    }
  }
  return false;
}

bool RootSnapshot::readShared(const common::DeviceRect& part, std::size_t offset) {
  xcb_connection_t* xcb = m_connection.xcb();
  const auto cookie =
      xcb_shm_get_image(xcb, m_connection.root(), static_cast<std::int16_t>(part.x),
                        static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
                        static_cast<std::uint16_t>(part.height), ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP,
                        m_shared->segment(), static_cast<std::uint32_t>(offset * sizeof(std::uint32_t)));
  xcb_generic_error_t* error = nullptr;
  const auto reply = ownReply(xcb_shm_get_image_reply(xcb, cookie, &error));
  const auto owned = ownReply(error);
  return reply != nullptr;
}

bool RootSnapshot::readCopied(const common::DeviceRect& part, std::uint32_t* destination) {
  xcb_connection_t* xcb = m_connection.xcb();
  const auto cookie =
      xcb_get_image(xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.root(), static_cast<std::int16_t>(part.x),
                    static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
                    static_cast<std::uint16_t>(part.height), ~0u);
  xcb_generic_error_t* error = nullptr;
  const auto reply = ownReply(xcb_get_image_reply(xcb, cookie, &error));
  const auto owned = ownReply(error);
  if (!reply ||
      static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != area(part) * sizeof(*destination)) {
    return false;
  }
  std::copy_n(xcb_get_image_data(reply.get()), area(part) * sizeof(*destination),
              reinterpret_cast<std::uint8_t*>(destination));
  return true;
}

} // namespace orbel::x11
