// Gives the focus and the front back to the window that had them at the summon, unless the user has clicked
// another one since. Called by X11TopLevelWindows, which owns it beside everything it refers to.
#pragma once

#include "backends/x11/DelayedCall.h"

#include <cstdint>
#include <optional>
#include <vector>
#include <xcb/xproto.h>

namespace orbel::x11 {

class ActiveWindow;
class ClickWatch;
class ClientList;
class WindowActivation;
class WindowRegistry;

class WindowRestoration {
public:
  WindowRestoration(ClickWatch& clicks, const ClientList& clients, const ActiveWindow& active,
                    WindowActivation& activation, WindowRegistry& registry);

  // The moment of a summon, in milliseconds of the server's clock. Ends what an earlier restoring
  // still watches.
  xcb_timestamp_t mark();
  // False when the window no longer exists, the user has clicked elsewhere since, or has switched to another
  // desktop. Left alone when it is active and nothing has come to cover it since the latest mark.
  bool restore(xcb_window_t window, xcb_timestamp_t summon);
  // Another window is wanted in front now.
  void forget();

private:
  struct Request {
    xcb_window_t window;
    xcb_timestamp_t summon;
    std::optional<xcb_window_t> activeBefore;
  };
  bool isInPlace(xcb_window_t window) const;
  bool isCoveredSinceSummon(xcb_window_t window) const;
  void confirm();

  ClickWatch& m_clicks;
  const ClientList& m_clients;
  const ActiveWindow& m_active;
  WindowActivation& m_activation;
  WindowRegistry& m_registry;
  std::vector<xcb_window_t> m_stackAtSummon; // from bottom to top
  std::optional<Request> m_request;          // until it is confirmed
  DelayedCall m_confirmation;
};

} // namespace orbel::x11
