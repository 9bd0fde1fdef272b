// A private X server without a screen (Xvfb) on a free display number.
#pragma once

#include "tests/support/base/ChildProcess.h"

#include <filesystem>
#include <optional>
#include <string>

namespace orbel::test {

// Through TCP a program can be one of another machine.
enum class DisplayReach { thisMachine, network };

class VirtualDisplay {
public:
  static constexpr int kWidth = 1280;
  static constexpr int kHeight = 1024;

  // Returns when the server accepts connections; throws std::runtime_error with what it said when it
  // does not.
  VirtualDisplay(const Environment& environment, const std::filesystem::path& log,
                 DisplayReach reach = DisplayReach::thisMachine);

  // Such as ":12".
  const std::string& name() const { return m_name; }
  ChildProcess& server() { return *m_server; }

private:
  std::optional<ChildProcess> m_server;
  std::string m_name;
};

} // namespace orbel::test
