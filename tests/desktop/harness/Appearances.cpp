#include "tests/desktop/harness/Appearances.h"

#include "tests/support/x11/XcbReply.h"

#include <algorithm>
#include <iterator>

namespace orbel::test {

namespace {
template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}
} // namespace

Appearances::Appearances(const std::string& displayName) : m_display(displayName) {
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
  xcb_change_window_attributes(m_display.get(), m_display.root(), XCB_CW_EVENT_MASK, &events);
  m_display.roundTrip();
}

std::vector<ScreenRect> Appearances::ofSquares(int smallestSide) {
  m_display.roundTrip();
  while (const XcbReply<xcb_generic_event_t> event{xcb_poll_for_event(m_display.get())})
    take(*event);
  std::vector<ScreenRect> squares;
  std::copy_if(m_places.begin(), m_places.end(), std::back_inserter(squares), [&](const ScreenRect& place) {
    return place.width == place.height && place.width >= smallestSide;
  });
  return squares;
}

void Appearances::take(const xcb_generic_event_t& event) {
  switch (event.response_type & ~0x80) {
  case XCB_CREATE_NOTIFY: {
    const auto& created = as<xcb_create_notify_event_t>(event);
    m_frames[created.window] = {created.x, created.y, created.width, created.height};
    break;
  }
  case XCB_CONFIGURE_NOTIFY: {
    const auto& configured = as<xcb_configure_notify_event_t>(event);
    const ScreenRect frame{configured.x, configured.y, configured.width, configured.height};
    // Restacking is reported by the same event.
    const bool hasMoved = m_frames[configured.window] != frame;
    m_frames[configured.window] = frame;
    if (hasMoved && m_mapped.contains(configured.window)) m_places.push_back(frame);
    break;
  }
  case XCB_MAP_NOTIFY: {
    const auto& mapped = as<xcb_map_notify_event_t>(event);
    if (!mapped.override_redirect) break;
    m_mapped.insert(mapped.window);
    m_places.push_back(m_frames[mapped.window]);
    break;
  }
  case XCB_UNMAP_NOTIFY:
    m_mapped.erase(as<xcb_unmap_notify_event_t>(event).window);
    break;
  case XCB_DESTROY_NOTIFY:
    m_mapped.erase(as<xcb_destroy_notify_event_t>(event).window);
    m_frames.erase(as<xcb_destroy_notify_event_t>(event).window);
    break;
  default:
    break;
  }
}

} // namespace orbel::test
