// Asks windows to close as their close button would; the program may ask the user or decline. Never ends a
// process. Used by the companion program.
#pragma once

#include <cstdint>

namespace orbel::x11 {

class Connection;

class WindowCloser {
public:
  explicit WindowCloser(Connection& connection);

  // How many of the process's windows were asked: those that take the request. 0 when it owns no such window.
  int closeWindows(std::int32_t processIdentifier);

private:
  Connection& m_connection;
};

} // namespace orbel::x11
