// Presses, releases and movements of the pointer wherever they happen: over windows of other programs and
// during their grabs. Only listens. Selects from the server what is observed and nothing else. Buttons are
// logical (1 is the primary button, whichever hand the user has set); turning the wheel is left out. Needs a
// connection of its own, so that draining it handles nothing else.
#pragma once

#include "foundation/Observers.h"
#include "foundation/Registration.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <vector>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace orbel::x11 {

class Connection;

class RawPointer {
public:
  using ButtonBlock = std::function<void(std::uint32_t button, xcb_timestamp_t time)>;

  explicit RawPointer(Connection& connection);

  // False, and logged, when the server lacks the input extension; nothing is ever reported then.
  bool isAvailable() const { return m_opcode.has_value(); }

  Registration observePresses(ButtonBlock block);
  Registration observeReleases(ButtonBlock block);
  Registration observeMotion(std::function<void()> block);

  // The server's time now, in milliseconds (one round trip); what is observed by now is reported from
  // then on.
  xcb_timestamp_t serverTime();
  // The logical buttons held now, without the wheel (two round trips).
  std::set<std::uint32_t> heldButtons();
  // Reports what happened before this call. The server reports a release to us no later than to the window
  // under the pointer, but over another connection: the receiver of the release calls this first, so that the
  // observers are notified before it acts.
  void drain();
  // Shows the presses that happened before this call and are not reported yet; they are reported in
  // their turn.
  void peekPresses(const ButtonBlock& block);

private:
  void handleEvent(const xcb_generic_event_t& event);
  void select();
  std::optional<std::uint32_t> logicalButton(const xcb_input_raw_button_press_event_t& raw);

  Connection& m_connection;
  std::optional<std::uint8_t> m_opcode; // of the input extension
  std::uint32_t m_selected = 0;
  Observers<std::uint32_t, xcb_timestamp_t> m_presses;
  Observers<std::uint32_t, xcb_timestamp_t> m_releases;
  Observers<> m_motion;
  Registration m_events;
};

} // namespace orbel::x11
