#include "backends/x11/RawPointer.h"

#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

#include <span>
#include <utility>
#include <xcb/xinput.h>

namespace orbel::x11 {

namespace {

// Announcing 2.0 or 2.1 loses releases, and everything during grabs of other programs.
constexpr std::uint16_t kMajorVersion = 2;
constexpr std::uint16_t kMinorVersion = 2;

constexpr std::uint32_t kFirstWheelButton = 4;
constexpr std::uint32_t kLastWheelButton = 7;

bool isWheel(std::uint32_t button) {
  return button >= kFirstWheelButton && button <= kLastWheelButton;
}

const xcb_input_raw_button_press_event_t& rawButton(const xcb_generic_event_t& event) {
  return reinterpret_cast<const xcb_input_raw_button_press_event_t&>(event);
}

xcb_input_get_device_button_mapping_cookie_t requestMapping(Connection& connection, std::uint16_t device) {
  return xcb_input_get_device_button_mapping(connection.xcb(), static_cast<std::uint8_t>(device));
}

std::uint32_t mapped(Connection& connection, xcb_input_get_device_button_mapping_cookie_t request,
                     std::uint32_t button) {
  const auto mapping =
      ownReply(xcb_input_get_device_button_mapping_reply(connection.xcb(), request, nullptr));
  // No mapping: the device has just been unplugged.
  if (!mapping || button == 0 || button > mapping->map_size) return button;
  return xcb_input_get_device_button_mapping_map(mapping.get())[button - 1];
}

} // namespace

RawPointer::RawPointer(Connection& connection)
    : m_connection(connection), m_presses([this] { select(); }), m_releases([this] { select(); }),
      m_motion([this] { select(); }) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_input_id);
  if (extension && extension->present) {
    const auto version = ownReply(xcb_input_xi_query_version_reply(
        connection.xcb(), xcb_input_xi_query_version(connection.xcb(), kMajorVersion, kMinorVersion),
        nullptr));
    if (version &&
        std::pair(version->major_version, version->minor_version) >= std::pair(kMajorVersion, kMinorVersion))
      m_opcode = extension->major_opcode;
  }
  if (!m_opcode) {
    Log::warning("the X server lacks version 2.2 of the input extension; clicks and movements are not seen");
    return;
  }
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
}

Registration RawPointer::observePresses(ButtonBlock block) {
  return m_presses.add(std::move(block));
}
Registration RawPointer::observeReleases(ButtonBlock block) {
  return m_releases.add(std::move(block));
}
Registration RawPointer::observeMotion(std::function<void()> block) {
  return m_motion.add(std::move(block));
}

void RawPointer::select() {
  if (!m_opcode) return;
  std::uint32_t wanted = 0;
  if (!m_presses.isEmpty()) wanted |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS;
  if (!m_releases.isEmpty()) wanted |= XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
  if (!m_motion.isEmpty()) wanted |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
  if (wanted == m_selected) return;
  m_selected = wanted;

  struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } const selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, wanted};
  xcb_input_xi_select_events(m_connection.xcb(), m_connection.root(), 1, &selection.head);
  m_connection.flush();
}

void RawPointer::handleEvent(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != *m_opcode) return;

  if (generic.event_type == XCB_INPUT_RAW_MOTION) {
    m_motion.notify();
    return;
  }
  const bool isPress = generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS;
  if (!isPress && generic.event_type != XCB_INPUT_RAW_BUTTON_RELEASE) return;
  const auto& raw = rawButton(event);
  if (const auto button = logicalButton(raw)) (isPress ? m_presses : m_releases).notify(*button, raw.time);
}

// Asked at each press rather than remembered: the mappings may change at any time, and people press buttons
// far less often than they turn the wheel, which is left out first. The server maps a button twice: by the
// mouse's own mapping, then by that of the pointer which the mouse moves.
std::optional<std::uint32_t> RawPointer::logicalButton(const xcb_input_raw_button_press_event_t& raw) {
  if (isWheel(raw.detail)) return std::nullopt;
  const auto ofMouse = requestMapping(m_connection, raw.sourceid);
  const auto ofPointer = requestMapping(m_connection, raw.deviceid);
  const std::uint32_t button = mapped(m_connection, ofPointer, mapped(m_connection, ofMouse, raw.detail));
  if (button == 0 || isWheel(button)) return std::nullopt; // 0: the user has switched the button off
  return button;
}

std::set<std::uint32_t> RawPointer::heldButtons() {
  if (!m_opcode) return {};
  xcb_connection_t* xcb = m_connection.xcb();
  const auto devices = ownReply(xcb_input_xi_query_device_reply(
      xcb, xcb_input_xi_query_device(xcb, XCB_INPUT_DEVICE_ALL_MASTER), nullptr));
  if (!devices) return {};
  std::set<std::uint32_t> held;
  for (auto device = xcb_input_xi_query_device_infos_iterator(devices.get()); device.rem > 0;
       xcb_input_xi_device_info_next(&device)) {
    if (device.data->type != XCB_INPUT_DEVICE_TYPE_MASTER_POINTER) continue;
    const auto state = ownReply(xcb_input_xi_query_pointer_reply(
        xcb, xcb_input_xi_query_pointer(xcb, m_connection.root(), device.data->deviceid), nullptr));
    if (!state) continue;
    const std::span words(xcb_input_xi_query_pointer_buttons(state.get()), state->buttons_len);
    for (std::uint32_t button = 1; button < words.size() * 32; ++button)
      if (!isWheel(button) && (words[button / 32] >> (button % 32) & 1U) != 0) held.insert(button);
  }
  return held;
}

xcb_timestamp_t RawPointer::serverTime() {
  return m_connection.serverTime();
}

void RawPointer::drain() {
  m_connection.drain();
}

void RawPointer::peekPresses(const ButtonBlock& block) {
  // Asking for a button's meaning while events are being shown would disturb their order: first the events.
  std::vector<xcb_input_raw_button_press_event_t> presses;
  m_connection.peek([&](const xcb_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (m_opcode && eventType(event) == XCB_GE_GENERIC && generic.extension == *m_opcode &&
        generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
      presses.push_back(rawButton(event));
  });
  for (const auto& press : presses)
    if (const auto button = logicalButton(press)) block(*button, press.time);
}

} // namespace orbel::x11
