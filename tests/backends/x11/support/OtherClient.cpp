#include "tests/backends/x11/support/OtherClient.h"

#include "tests/support/base/TextFile.h"
#include "tests/support/glib/MainLoop.h"

#include <algorithm>
#include <stdexcept>

namespace orbel::test {

OtherClient::OtherClient(const std::string& display, const std::vector<std::string>& options) {
  std::vector<std::string> command = {ORBEL_TEST_CLIENT};
  command.insert(command.end(), options.begin(), options.end());
  m_program.emplace(ProcessDescription{.command = command,
                                       .environment = {{"DISPLAY", display}},
                                       .log = m_folder.path() / "errors",
                                       .output = m_folder.path() / "output",
                                       .takesInput = true});
  // The code under test continues to run meanwhile.
  if (!iterateUntil([this] { return hasWritten("ready") || !m_program->isRunning(); }) ||
      !hasWritten("ready"))
    throw std::runtime_error("the test client does not start: " + readFile(m_folder.path() / "errors"));
  for (const std::string& line : lines())
    if (line.starts_with("window "))
      m_windows.push_back(static_cast<xcb_window_t>(std::stoul(line.substr(7))));
}

std::vector<std::string> OtherClient::lines() const {
  return readLines(m_folder.path() / "output");
}

bool OtherClient::hasWritten(const std::string& line) const {
  const auto all = lines();
  return std::find(all.begin(), all.end(), line) != all.end();
}

} // namespace orbel::test
