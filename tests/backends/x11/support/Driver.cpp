#include "tests/backends/x11/support/Driver.h"

#include "backends/common/VirtualKeyCodes.h"

#include <algorithm>
#include <stdexcept>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

namespace orbel::test {

namespace {
std::uint8_t keyCode(std::uint16_t evdevCode) {
  return static_cast<std::uint8_t>(evdevCode + common::VirtualKeyCodes::kXKeyCodeOffset);
}
} // namespace

Driver::Driver(const std::string& display) : m_connection(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(m_connection) != 0) throw std::runtime_error("no display " + display);
  m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
}

Driver::~Driver() {
  xcb_disconnect(m_connection);
}

void Driver::fake(std::uint8_t type, std::uint8_t detail, std::int16_t x, std::int16_t y) {
  xcb_test_fake_input(m_connection, type, detail, XCB_CURRENT_TIME, XCB_NONE, x, y, 0);
  sync();
}

void Driver::sync() {
  x11::ownReply(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

void Driver::pressKey(std::uint16_t evdevCode) {
  fake(XCB_KEY_PRESS, keyCode(evdevCode));
}
void Driver::releaseKey(std::uint16_t evdevCode) {
  fake(XCB_KEY_RELEASE, keyCode(evdevCode));
}

void Driver::tapKey(std::uint16_t evdevCode) {
  tapKeys({evdevCode});
}

void Driver::tapKeys(const std::vector<std::uint16_t>& evdevCodes) {
  for (const std::uint16_t code : evdevCodes)
    pressKey(code);
  for (auto code = evdevCodes.rbegin(); code != evdevCodes.rend(); ++code)
    releaseKey(*code);
}

void Driver::pressButton(std::uint8_t button) {
  fake(XCB_BUTTON_PRESS, button);
}
void Driver::releaseButton(std::uint8_t button) {
  fake(XCB_BUTTON_RELEASE, button);
}

void Driver::click(std::uint8_t button) {
  pressButton(button);
  releaseButton(button);
}

void Driver::moveTo(int x, int y) {
  fake(XCB_MOTION_NOTIFY, 0, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y));
}

void Driver::clickAt(int x, int y) {
  moveTo(x, y);
  click(1);
}

bool Driver::grabKey(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  const auto cookie = xcb_grab_key_checked(m_connection, 0, root(), modifierMask, keyCode(evdevCode),
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  return !x11::ownReply(xcb_request_check(m_connection, cookie));
}

bool Driver::grabKeyByExtension(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  x11::ownReply(xcb_input_xi_query_version_reply(m_connection, xcb_input_xi_query_version(m_connection, 2, 2),
                                                 nullptr));
  const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
  const std::uint32_t modifiers = modifierMask;
  const auto cookie = xcb_input_xi_passive_grab_device(
      m_connection, XCB_CURRENT_TIME, root(), XCB_NONE, keyCode(evdevCode), XCB_INPUT_DEVICE_ALL_MASTER, 1, 1,
      XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &modifiers);
  const auto reply = x11::ownReply(xcb_input_xi_passive_grab_device_reply(m_connection, cookie, nullptr));
  return reply && reply->num_modifiers == 0;
}

void Driver::ungrabKey(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  xcb_ungrab_key(m_connection, keyCode(evdevCode), root(), modifierMask);
  sync();
}

xcb_atom_t Driver::atom(const std::string& name) {
  const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const auto reply = x11::ownReply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
  return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

void Driver::setText(xcb_window_t window, const char* property, const char* type, const std::string& text) {
  xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
  sync();
}

void Driver::setNumbers(xcb_window_t window, const char* property, const char* type,
                        const std::vector<std::uint32_t>& numbers) {
  xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                      static_cast<std::uint32_t>(numbers.size()), numbers.data());
  sync();
}

std::vector<std::uint32_t> Driver::numbers(xcb_window_t window, const char* property) {
  const auto cookie =
      xcb_get_property(m_connection, 0, window, atom(property), XCB_GET_PROPERTY_TYPE_ANY, 0, 4096);
  const auto reply = x11::ownReply(xcb_get_property_reply(m_connection, cookie, nullptr));
  if (!reply || reply->format != 32) return {};
  const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
  return {first, first + reply->value_len};
}

void Driver::askManager(xcb_window_t window, const char* type, const std::vector<std::uint32_t>& data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom(type);
  std::copy(data.begin(), data.end(), message.data.data32);
  xcb_send_event(m_connection, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
  sync();
}

bool Driver::exists(xcb_window_t window) {
  return x11::ownReply(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window),
                                              nullptr)) != nullptr;
}

bool Driver::isViewable(xcb_window_t window) {
  const auto attributes = x11::ownReply(xcb_get_window_attributes_reply(
      m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
  return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

xcb_window_t Driver::focus() {
  const auto reply =
      x11::ownReply(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

int Driver::stackingPlace(xcb_window_t window) {
  for (;;) {
    const auto tree =
        x11::ownReply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!tree) return -1;
    if (tree->parent == root()) break;
    window = tree->parent;
  }
  const auto tree =
      x11::ownReply(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, root()), nullptr));
  const xcb_window_t* first = xcb_query_tree_children(tree.get());
  const xcb_window_t* last = first + xcb_query_tree_children_length(tree.get());
  return static_cast<int>(std::find(first, last, window) - first);
}

void Driver::raise(xcb_window_t window) {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  sync();
}

} // namespace orbel::test
