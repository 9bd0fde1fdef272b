// Pinches on a touchpad as the X server recognises them, for whoever has to know that the fingers are not at
// rest. Selects from the server only while there are observers. It sees no pinch over a window that listens
// to gestures itself, and a server may have one listener only: what it reports is additional evidence.
#pragma once

#include "foundation/Observers.h"
#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

enum class PinchPhase { began, changed, ended };

class PinchGestures {
public:
  explicit PinchGestures(Connection& connection);

  // False when the server is older than version 2.4 of the input extension; nothing is ever reported then.
  bool isAvailable() const { return m_opcode.has_value(); }
  Registration observe(std::function<void(PinchPhase)> block);

private:
  void select();
  void handleEvent(const xcb_generic_event_t& event);

  Connection& m_connection;
  std::optional<std::uint8_t> m_opcode; // of the input extension
  Observers<PinchPhase> m_observers;
  Registration m_events;
};

} // namespace orbel::x11
