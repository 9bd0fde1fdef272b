#include "backends/x11/ScreenSelection.h"

#include "backends/x11/Connection.h"

#include <string>

namespace orbel::x11 {

xcb_atom_t ScreenSelection::atom(Connection& connection, std::string_view prefix) {
  int number = 0;
  for (auto screen = xcb_setup_roots_iterator(&connection.setup()); screen.rem > 0;
       xcb_screen_next(&screen)) {
    if (screen.data->root == connection.root()) break;
    ++number;
  }
  return connection.atom(std::string(prefix) + std::to_string(number));
}

xcb_window_t ScreenSelection::owner(Connection& connection, xcb_atom_t selection) {
  const auto reply = ownReply(xcb_get_selection_owner_reply(
      connection.xcb(), xcb_get_selection_owner(connection.xcb(), selection), nullptr));
  return reply ? reply->owner : XCB_NONE;
}

} // namespace orbel::x11
