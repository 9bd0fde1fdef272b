#include "tests/support/x11/KeyboardGroup.h"

#include "tests/support/x11/XcbReply.h"

// The C header has a member of this name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace orbel::test {

namespace {

void useExtension(xcb_connection_t* connection) {
  const XcbReply<xcb_xkb_use_extension_reply_t> reply(
      xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
}

} // namespace

void lockKeyboardGroup(xcb_connection_t* connection, std::uint8_t group) {
  useExtension(connection);
  xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
  xcb_flush(connection);
}

void unlockKeyboard(xcb_connection_t* connection) {
  constexpr std::uint8_t kAllModifiers = 0xFF;
  useExtension(connection);
  // Latches stay alone: xcb leaves the byte that would say which ones as it finds it.
  xcb_xkb_latch_lock_state(connection, XCB_XKB_ID_USE_CORE_KBD, kAllModifiers, 0, 1, 0, 0, 0, 0);
  xcb_flush(connection);
}

} // namespace orbel::test
