#include "tests/backends/x11/support/Driver.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/XcbReply.h"
#include <algorithm>
#include <xcb/xinput.h>

namespace orbel::test {

namespace {
std::uint8_t keyCode(std::uint16_t evdevCode) {
  return static_cast<std::uint8_t>(evdevCode + common::VirtualKeyCodes::kXKeyCodeOffset);
}
} // namespace

Driver::Driver(const std::string& display) : m_display(display) {}

void Driver::pressKey(std::uint16_t evdevCode) {
  m_input.pressKeyCode(keyCode(evdevCode));
}
void Driver::releaseKey(std::uint16_t evdevCode) {
  m_input.releaseKeyCode(keyCode(evdevCode));
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
  m_input.press(static_cast<PointerButton>(button));
}
void Driver::releaseButton(std::uint8_t button) {
  m_input.release(static_cast<PointerButton>(button));
}

void Driver::click(std::uint8_t button) {
  pressButton(button);
  releaseButton(button);
}

void Driver::moveTo(int x, int y) {
  m_input.movePointer({x, y});
}

void Driver::clickAt(int x, int y) {
  moveTo(x, y);
  click(1);
}

bool Driver::grabKey(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  const auto cookie = xcb_grab_key_checked(m_display.get(), 0, root(), modifierMask, keyCode(evdevCode),
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  return !x11::ownReply(xcb_request_check(m_display.get(), cookie));
}

bool Driver::grabKeyByExtension(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  x11::ownReply(xcb_input_xi_query_version_reply(m_display.get(),
                                                 xcb_input_xi_query_version(m_display.get(), 2, 2), nullptr));
  const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
  const std::uint32_t modifiers = modifierMask;
  const auto cookie = xcb_input_xi_passive_grab_device(
      m_display.get(), XCB_CURRENT_TIME, root(), XCB_NONE, keyCode(evdevCode), XCB_INPUT_DEVICE_ALL_MASTER, 1,
      1, XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
      XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &modifiers);
  const auto reply = x11::ownReply(xcb_input_xi_passive_grab_device_reply(m_display.get(), cookie, nullptr));
  return reply && reply->num_modifiers == 0;
}

void Driver::ungrabKey(std::uint16_t evdevCode, std::uint16_t modifierMask) {
  xcb_ungrab_key(m_display.get(), keyCode(evdevCode), root(), modifierMask);
  sync();
}

void Driver::setText(xcb_window_t window, const char* property, const char* type, const std::string& text) {
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 8,
                      static_cast<std::uint32_t>(text.size()), text.data());
  sync();
}

void Driver::setNumbers(xcb_window_t window, const char* property, const char* type,
                        const std::vector<std::uint32_t>& numbers) {
  xcb_change_property(m_display.get(), XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                      static_cast<std::uint32_t>(numbers.size()), numbers.data());
  sync();
}

std::vector<std::uint32_t> Driver::numbers(xcb_window_t window, const char* property) {
  return m_display.values(window, property).value_or(std::vector<std::uint32_t>{});
}

void Driver::askManager(xcb_window_t window, const char* type, const std::vector<std::uint32_t>& data) {
  m_display.sendToWindowManager(window, type, data);
  sync();
}

xcb_window_t Driver::focus() {
  const auto reply = x11::ownReply(
      xcb_get_input_focus_reply(m_display.get(), xcb_get_input_focus(m_display.get()), nullptr));
  return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

int Driver::stackingPlace(xcb_window_t window) {
  for (;;) {
    const auto tree = x11::ownReply(
        xcb_query_tree_reply(m_display.get(), xcb_query_tree(m_display.get(), window), nullptr));
    if (!tree) return -1;
    if (tree->parent == root()) break;
    window = tree->parent;
  }
  const auto tree =
      x11::ownReply(xcb_query_tree_reply(m_display.get(), xcb_query_tree(m_display.get(), root()), nullptr));
  const xcb_window_t* first = xcb_query_tree_children(tree.get());
  const xcb_window_t* last = first + xcb_query_tree_children_length(tree.get());
  return static_cast<int>(std::find(first, last, window) - first);
}

void Driver::raise(xcb_window_t window) {
  const std::uint32_t above = XCB_STACK_MODE_ABOVE;
  xcb_configure_window(m_display.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
  sync();
}

} // namespace orbel::test
