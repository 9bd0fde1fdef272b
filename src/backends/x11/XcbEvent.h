// What every event that xcb hands out has in common.
#pragma once

#include <cstdint>
#include <xcb/xcb.h>

namespace orbel::x11 {

// The server's number of the kind of event, without the bit that marks what another program has sent.
inline std::uint8_t eventType(const xcb_generic_event_t& event) {
  return static_cast<std::uint8_t>(event.response_type & 0x7FU);
}

} // namespace orbel::x11
