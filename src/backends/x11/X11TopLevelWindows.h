// The programs' windows on an X11 desktop, kept up to date by the server's notifications; nothing is asked
// while nothing changes. Works under every window manager of the EWMH standard, through a restart of it, and
// without one. Called by the workspace.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "backends/x11/ActiveWindow.h"
#include "backends/x11/ClientList.h"
#include "backends/x11/DelayedCall.h"
#include "backends/x11/WindowActivation.h"
#include "backends/x11/WindowRestoration.h"
#include "foundation/Observers.h"

#include <memory>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class ClickWatch;
class Connection;
class WindowRegistry;

class X11TopLevelWindows : public common::TopLevelWindows {
public:
  X11TopLevelWindows(Connection& connection, ClickWatch& clicks);
  ~X11TopLevelWindows() override;

  // As of the latest turn of the main loop, which is also when observers were notified.
  std::vector<common::TopLevelWindow> windows() const override;
  Registration observeChanges(std::function<void()> block) override;
  // Our own windows too.
  std::optional<std::uint64_t> activeWindow() const override;
  bool activate(std::uint64_t window) override;
  bool restore(std::uint64_t window, std::uint64_t summon) override;
  // Milliseconds of the server's clock.
  std::uint64_t summonMark() override;
  Bitmap icon(std::uint64_t window, int pixelSize) const override;
  std::string makeStartupId(const std::string& entryName) override;

private:
  void handleEvent(const xcb_generic_event_t& event);
  void handleProperty(const xcb_property_notify_event_t& notification);
  void followWindowManager();
  void refresh();

  Connection& m_connection;
  ClientList m_clients;
  ActiveWindow m_active;
  WindowActivation m_activation;
  std::unique_ptr<WindowRegistry> m_registry;
  WindowRestoration m_restoration;
  xcb_window_t m_windowManager = XCB_NONE; // the window that names itself the window manager's
  Observers<> m_observers;
  DelayedCall m_refresh;
  Registration m_events;
  int m_startupCount = 0;
};

} // namespace orbel::x11
