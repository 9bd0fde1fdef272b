// What the keyboard has locked: the layout among those that are set, as a layout key would, and the lock keys.
#pragma once

#include <cstdint>
#include <xcb/xcb.h>

namespace orbel::test {

// 0 is the first.
void lockKeyboardGroup(xcb_connection_t* connection, std::uint8_t group);
// The first layout, with no lock key on.
void unlockKeyboard(xcb_connection_t* connection);

} // namespace orbel::test
