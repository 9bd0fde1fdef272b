#include "backends/x11/PinchGestures.h"

#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

#include <utility>
#include <xcb/xinput.h>

namespace orbel::x11 {

namespace {

constexpr std::uint16_t kMajorVersion = 2;
constexpr std::uint16_t kMinorVersion = 4;
// The server takes these three together or not at all.
constexpr std::uint32_t kPinchEvents = 1U << XCB_INPUT_GESTURE_PINCH_BEGIN |
                                       1U << XCB_INPUT_GESTURE_PINCH_UPDATE |
                                       1U << XCB_INPUT_GESTURE_PINCH_END;

} // namespace

PinchGestures::PinchGestures(Connection& connection)
    : m_connection(connection), m_observers([this] { select(); }) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_input_id);
  if (!extension || !extension->present) return;
  const auto version = ownReply(xcb_input_xi_query_version_reply(
      connection.xcb(), xcb_input_xi_query_version(connection.xcb(), kMajorVersion, kMinorVersion), nullptr));
  if (!version ||
      std::pair(version->major_version, version->minor_version) < std::pair(kMajorVersion, kMinorVersion))
    return;
  m_opcode = extension->major_opcode;
  m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
}

Registration PinchGestures::observe(std::function<void(PinchPhase)> block) {
  return m_observers.add(std::move(block));
}

void PinchGestures::select() {
  if (!m_opcode) return;
  struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } const selection = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, m_observers.isEmpty() ? 0 : kPinchEvents};
  const auto request =
      xcb_input_xi_select_events_checked(m_connection.xcb(), m_connection.root(), 1, &selection.head);
  if (ownReply(xcb_request_check(m_connection.xcb(), request)))
    Log::information(
        "another program listens to the touchpad's pinches; they are told from the fingers alone");
}

void PinchGestures::handleEvent(const xcb_generic_event_t& event) {
  if (eventType(event) != XCB_GE_GENERIC) return;
  const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
  if (generic.extension != *m_opcode) return;
  switch (generic.event_type) {
  case XCB_INPUT_GESTURE_PINCH_BEGIN:
    m_observers.notify(PinchPhase::began);
    break;
  case XCB_INPUT_GESTURE_PINCH_UPDATE:
    m_observers.notify(PinchPhase::changed);
    break;
  case XCB_INPUT_GESTURE_PINCH_END:
    m_observers.notify(PinchPhase::ended);
    break;
  default:
    break;
  }
}

} // namespace orbel::x11
