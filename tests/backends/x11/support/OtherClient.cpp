#include "tests/backends/x11/support/OtherClient.h"

#include "tests/backends/x11/support/MainLoop.h"

#include <stdexcept>

namespace orbel::test {

namespace {
std::vector<std::string> commandFor(const std::vector<std::string>& options) {
  std::vector<std::string> command = {ORBEL_TEST_CLIENT};
  for (const std::string& option : options)
    command.push_back(option);
  return command;
}
} // namespace

OtherClient::OtherClient(const std::string& display, const std::vector<std::string>& options)
    : m_program(commandFor(options), {{"DISPLAY", display}}) {
  if (!iterateUntil([&] { return m_program.hasWritten("ready") || !m_program.isRunning(); }) ||
      !m_program.hasWritten("ready"))
    throw std::runtime_error("the test client does not start: " + m_program.state());
  for (const std::string& line : m_program.lines())
    if (line.starts_with("window "))
      m_windows.push_back(static_cast<xcb_window_t>(std::stoul(line.substr(7))));
}

} // namespace orbel::test
