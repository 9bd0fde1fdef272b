#include "backends/x11/ClientMessage.h"

#include "backends/x11/Connection.h"

#include <algorithm>

namespace orbel::x11 {

namespace {

void send(Connection& connection, xcb_window_t destination, std::uint32_t eventMask, xcb_window_t window,
          const char* type, const ClientMessage::Data& data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = connection.atom(type);
  std::ranges::copy(data, message.data.data32);
  xcb_send_event(connection.xcb(), 0, destination, eventMask, reinterpret_cast<const char*>(&message));
  connection.flush();
}

} // namespace

void ClientMessage::sendToManager(Connection& connection, xcb_window_t window, const char* type, Data data) {
  send(connection, connection.root(),
       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, window, type, data);
}

void ClientMessage::sendToProgram(Connection& connection, xcb_window_t window, const char* type, Data data) {
  // No event mask: the message is sent to the client that created the window.
  send(connection, window, XCB_EVENT_MASK_NO_EVENT, window, type, data);
}

} // namespace orbel::x11
