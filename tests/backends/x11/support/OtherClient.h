// The test client program with its windows: another program as far as the desktop is concerned. What it says
// on its standard output is read line by line.
#pragma once

#include "tests/support/base/ChildProcess.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::test {

class OtherClient {
public:
  // `options` as described in the client's source. Waits until the client is ready.
  OtherClient(const std::string& display, const std::vector<std::string>& options);

  ChildProcess& program() { return *m_program; }
  std::int32_t processIdentifier() const { return m_program->pid(); }
  // What it has said so far.
  std::vector<std::string> lines() const;
  bool hasWritten(const std::string& line) const;
  // In the order in which they were made.
  const std::vector<xcb_window_t>& windows() const { return m_windows; }
  xcb_window_t window() const { return m_windows.at(0); }

private:
  TemporaryDirectory m_folder{"orbel-client"};
  std::optional<ChildProcess> m_program;
  std::vector<xcb_window_t> m_windows;
};

} // namespace orbel::test
