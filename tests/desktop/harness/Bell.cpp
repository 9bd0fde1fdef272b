#include "tests/desktop/harness/Bell.h"

#include "tests/support/x11/XcbReply.h"

#include <stdexcept>
// The C header has a member of this name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace orbel::test {

Bell::Bell(const std::string& display) : m_display(display) {
  const auto* extension = xcb_get_extension_data(m_display.get(), &xcb_xkb_id);
  const XcbReply<xcb_xkb_use_extension_reply_t> use(
      xcb_xkb_use_extension_reply(m_display.get(), xcb_xkb_use_extension(m_display.get(), 1, 0), nullptr));
  if (!extension || !extension->present || !use)
    throw std::runtime_error("the server does not tell of its bell");
  m_event = extension->first_event;
  constexpr std::uint16_t bells = XCB_XKB_EVENT_TYPE_BELL_NOTIFY;
  xcb_xkb_select_events(m_display.get(), XCB_XKB_ID_USE_CORE_KBD, bells, 0, bells, 0, 0, nullptr);
  m_display.roundTrip();
}

int Bell::rings() {
  m_display.roundTrip();
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_display.get())}) {
    if ((event->response_type & 0x7F) == m_event && event->pad0 == XCB_XKB_BELL_NOTIFY) ++m_rings;
  }
  return m_rings;
}

} // namespace orbel::test
