#include "backends/x11/SelectionOwnerWatch.h"

#include "backends/x11/Connection.h"
#include "backends/x11/ScreenSelection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

#include <string>
#include <utility>
#include <xcb/xfixes.h>

namespace orbel::x11 {

SelectionOwnerWatch::SelectionOwnerWatch(Connection& connection, std::string_view prefix,
                                         std::string_view service, std::function<void()> changed)
    : m_changed(std::move(changed)), m_selection(ScreenSelection::atom(connection, prefix)) {
  if (select(connection)) {
    m_events = connection.observeEvents([this](const xcb_generic_event_t& event) { handleEvent(event); });
  } else {
    Log::warning("the X server does not tell when " + std::string(service) + " comes or goes");
  }
  // Asked after selecting, so that no change falls between.
  m_owner = ScreenSelection::owner(connection, m_selection);
}

bool SelectionOwnerWatch::select(Connection& connection) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_xfixes_id);
  if (!extension || !extension->present) return false;
  // The server refuses the extension's requests of a client that has not announced its version.
  ownReply(xcb_xfixes_query_version_reply(connection.xcb(), xcb_xfixes_query_version(connection.xcb(), 1, 0),
                                          nullptr));
  m_selectionNotify = static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
  xcb_xfixes_select_selection_input(connection.xcb(), connection.root(), m_selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  return true;
}

void SelectionOwnerWatch::handleEvent(const xcb_generic_event_t& event) {
  if (eventType(event) != m_selectionNotify) return;
  const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
  if (notify.selection != m_selection || notify.owner == m_owner) return;
  m_owner = notify.owner;
  m_changed();
}

} // namespace orbel::x11
