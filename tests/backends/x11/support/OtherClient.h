// The test client program with its windows: another program as far as the desktop is concerned.
#pragma once

#include "tests/backends/x11/support/Program.h"

#include <cstdint>
#include <xcb/xcb.h>

namespace orbel::test {

class OtherClient {
public:
  // `options` as the client's source tells. Waits until the client is ready.
  OtherClient(const std::string& display, const std::vector<std::string>& options);

  Program& program() { return m_program; }
  std::int32_t processIdentifier() const { return m_program.processIdentifier(); }
  // In the order in which they were made.
  const std::vector<xcb_window_t>& windows() const { return m_windows; }
  xcb_window_t window() const { return m_windows.at(0); }

private:
  Program m_program;
  std::vector<xcb_window_t> m_windows;
};

} // namespace orbel::test
