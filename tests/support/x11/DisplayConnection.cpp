#include "tests/support/x11/DisplayConnection.h"

#include "tests/support/x11/XcbReply.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace orbel::test {

namespace {

constexpr std::uint32_t kLongestProperty = 1U << 20; // in four-byte units

XcbReply<xcb_get_property_reply_t> property(xcb_connection_t* connection, xcb_window_t window,
                                            xcb_atom_t name) {
  const auto cookie =
      xcb_get_property(connection, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, kLongestProperty);
  XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
  if (reply && reply->type == XCB_NONE) reply.reset();
  return reply;
}

} // namespace

DisplayConnection::DisplayConnection(const std::string& displayName) {
  int screenNumber = 0;
  m_connection = xcb_connect(displayName.empty() ? nullptr : displayName.c_str(), &screenNumber);
  if (xcb_connection_has_error(m_connection)) {
    xcb_disconnect(m_connection);
    throw std::runtime_error("cannot connect to display '" + displayName + "'");
  }
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
  for (; screenNumber > 0 && screens.rem > 1; --screenNumber)
    xcb_screen_next(&screens);
  m_screen = screens.data;
}

DisplayConnection::~DisplayConnection() {
  xcb_disconnect(m_connection);
}

xcb_atom_t DisplayConnection::atom(std::string_view name) {
  if (const auto known = m_atoms.find(name); known != m_atoms.end()) return known->second;
  const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server does not answer");
  return m_atoms.emplace(name, reply->atom).first->second;
}

std::optional<std::vector<std::uint32_t>> DisplayConnection::values(xcb_window_t window,
                                                                    std::string_view propertyName) {
  const auto reply = property(m_connection, window, atom(propertyName));
  if (!reply || reply->format != 32) return std::nullopt;
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return std::vector<std::uint32_t>(first, first + reply->value_len);
}

std::optional<std::uint32_t> DisplayConnection::value(xcb_window_t window, std::string_view propertyName) {
  const auto all = values(window, propertyName);
  if (!all || all->empty()) return std::nullopt;
  return all->front();
}

std::optional<std::string> DisplayConnection::text(xcb_window_t window, std::string_view propertyName) {
  const auto reply = property(m_connection, window, atom(propertyName));
  if (!reply || reply->format != 8) return std::nullopt;
  return std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), reply->value_len);
}

xcb_window_t DisplayConnection::selectionOwner(std::string_view selection) {
  const auto cookie = xcb_get_selection_owner(m_connection, atom(selection));
  const XcbReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(m_connection, cookie, nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

void DisplayConnection::sendToWindowManager(xcb_window_t window, std::string_view message,
                                            const std::vector<std::uint32_t>& data) {
  xcb_client_message_event_t event{};
  event.response_type = XCB_CLIENT_MESSAGE;
  event.format = 32;
  event.window = window;
  event.type = atom(message);
  std::copy_n(data.begin(), std::min(data.size(), std::size(event.data.data32)), event.data.data32);
  xcb_send_event(m_connection, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&event));
  roundTrip();
}

void DisplayConnection::roundTrip() {
  const auto cookie = xcb_get_input_focus(m_connection);
  const XcbReply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(m_connection, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server is gone");
}

} // namespace orbel::test
