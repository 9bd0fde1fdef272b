// A test of the programs' windows, with everything that they need.
#pragma once

#include "backends/x11/ClickWatch.h"
#include "backends/x11/RawPointer.h"
#include "backends/x11/X11TopLevelWindows.h"
#include "tests/backends/x11/support/X11Test.h"

#include <memory>
#include <optional>
#include <string>

namespace orbel::test {

class WindowsTest : public X11Test {
protected:
  using X11Test::X11Test;
  void SetUp() override;
  void TearDown() override;

  // Made anew: as a program that starts now.
  void makeWindows();
  x11::X11TopLevelWindows& windows() { return *m_windows; }
  x11::Connection& connection() { return *m_connection; }
  x11::RawPointer& pointer() { return *m_pointer; }
  x11::Connection& pointerConnection() { return *m_pointerConnection; }

  std::vector<std::uint64_t> ids();
  std::optional<common::TopLevelWindow> window(std::uint64_t id);
  bool isListed(std::uint64_t id) { return window(id).has_value(); }
  bool isActive(std::uint64_t id) { return windows().activeWindow() == id; }
  // A program with one window of 200 by 150 pixels there, which is listed, and active where a window manager
  // does that.
  std::unique_ptr<OtherClient> programAt(int x, int y);
  // The window takes the focus as if its own program had asked for it.
  void raiseItself(xcb_window_t window);

private:
  std::unique_ptr<x11::Connection> m_connection, m_pointerConnection;
  std::unique_ptr<x11::RawPointer> m_pointer;
  std::unique_ptr<x11::ClickWatch> m_clicks;
  std::unique_ptr<x11::X11TopLevelWindows> m_windows;
};

} // namespace orbel::test
