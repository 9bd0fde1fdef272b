// Switches between the layouts that are set, as a layout key would.
#pragma once

#include <cstdint>
#include <xcb/xcb.h>

namespace orbel::test {

// 0 is the first.
void lockKeyboardGroup(xcb_connection_t* connection, std::uint8_t group);

} // namespace orbel::test
