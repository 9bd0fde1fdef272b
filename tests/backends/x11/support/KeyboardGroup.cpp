#include "tests/backends/x11/support/KeyboardGroup.h"

#include "backends/x11/XcbReply.h"

// The C header has a member of this name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace orbel::test {

void lockKeyboardGroup(xcb_connection_t* connection, std::uint8_t group) {
  x11::ownReply(xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
  xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
  xcb_flush(connection);
}

} // namespace orbel::test
