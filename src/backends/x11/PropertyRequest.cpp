#include "backends/x11/PropertyRequest.h"

#include "backends/x11/Connection.h"

#include <glib.h>
#include <string_view>
#include <utility>

namespace orbel::x11 {

namespace {

struct GlibDeleter {
  void operator()(char* text) const { g_free(text); }
};

std::string fromGlib(char* text) {
  const std::unique_ptr<char, GlibDeleter> owned(text);
  return owned ? std::string(owned.get()) : std::string();
}

std::string utf8(std::string_view bytes, bool isLatin1) {
  const auto length = static_cast<gssize>(bytes.size());
  if (isLatin1)
    return fromGlib(g_convert(bytes.data(), length, "UTF-8", "ISO-8859-1", nullptr, nullptr, nullptr));
  return fromGlib(g_utf8_make_valid(bytes.data(), length));
}

} // namespace

PropertyRequest::PropertyRequest(Connection& connection, xcb_window_t window, const char* property,
                                 std::uint32_t maximumBytes)
    : m_connection(&connection),
      m_cookie(xcb_get_property(connection.xcb(), 0, window, connection.atom(property),
                                XCB_GET_PROPERTY_TYPE_ANY, 0, maximumBytes / 4)) {}

PropertyRequest::~PropertyRequest() {
  if (m_pending) xcb_discard_reply(m_connection->xcb(), m_cookie.sequence);
}

PropertyRequest::PropertyRequest(PropertyRequest&& other) noexcept
    : m_connection(other.m_connection), m_cookie(other.m_cookie),
      m_pending(std::exchange(other.m_pending, false)), m_reply(std::move(other.m_reply)) {}

const xcb_get_property_reply_t* PropertyRequest::reply() {
  if (std::exchange(m_pending, false))
    m_reply.reset(xcb_get_property_reply(m_connection->xcb(), m_cookie, nullptr));
  return m_reply.get();
}

bool PropertyRequest::exists() {
  return reply() && reply()->type != XCB_ATOM_NONE;
}

std::span<const std::uint32_t> PropertyRequest::numbers() {
  const auto* property = reply();
  if (!property || property->format != 32) return {};
  return {static_cast<const std::uint32_t*>(xcb_get_property_value(property)), property->value_len};
}

std::optional<std::uint32_t> PropertyRequest::number() {
  const auto all = numbers();
  if (all.empty()) return std::nullopt;
  return all.front();
}

std::string PropertyRequest::text() {
  const auto all = texts();
  return all.empty() ? std::string() : all.front();
}

std::vector<std::string> PropertyRequest::texts() {
  const auto* property = reply();
  if (!property || property->format != 8) return {};
  std::string_view rest(static_cast<const char*>(xcb_get_property_value(property)), property->value_len);
  const bool isLatin1 = property->type == XCB_ATOM_STRING;
  std::vector<std::string> parts;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\0');
    parts.push_back(utf8(rest.substr(0, end), isLatin1));
    if (end == std::string_view::npos) break;
    rest.remove_prefix(end + 1);
  }
  return parts;
}

} // namespace orbel::x11
