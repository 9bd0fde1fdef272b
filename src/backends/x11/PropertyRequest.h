// One property of a window, asked for at once and read later, so that many cost one round trip.
// A window that no longer exists, and a property of another type or format than the one read, read as absent.
#pragma once

#include "backends/x11/XcbReply.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class PropertyRequest {
public:
  // `maximumBytes` bounds what is transferred; the rest of a longer property is cut off.
  PropertyRequest(Connection& connection, xcb_window_t window, const char* property,
                  std::uint32_t maximumBytes = 64 * 1024);
  ~PropertyRequest();
  PropertyRequest(PropertyRequest&& other) noexcept;
  PropertyRequest& operator=(PropertyRequest&&) = delete;
  PropertyRequest(const PropertyRequest&) = delete;
  PropertyRequest& operator=(const PropertyRequest&) = delete;

  bool exists();
  // 32-bit items: cardinals, atoms, windows. Valid as long as the request lives.
  std::span<const std::uint32_t> numbers();
  std::optional<std::uint32_t> number();
  // 8-bit items as UTF-8: a STRING is Latin-1 and is converted, broken UTF-8 is mended.
  std::string text();
  // The parts of 8-bit items that are separated by zero bytes.
  std::vector<std::string> texts();

private:
  const xcb_get_property_reply_t* reply();

  Connection* m_connection;
  xcb_get_property_cookie_t m_cookie{};
  bool m_pending = true;
  XcbReply<xcb_get_property_reply_t> m_reply;
};

} // namespace orbel::x11
