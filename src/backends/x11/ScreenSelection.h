// The selections by which a desktop's services hold an X screen: the compositor, the settings manager. Their
// names end in the screen's number.
#pragma once

#include <string_view>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class ScreenSelection {
public:
  // The atom of a name such as "_NET_WM_CM_S" followed by the number of the connection's screen.
  static xcb_atom_t atom(Connection& connection, std::string_view prefix);
  // Asked of the server now; XCB_NONE when it is unowned.
  static xcb_window_t owner(Connection& connection, xcb_atom_t selection);
};

} // namespace orbel::x11
