// A real process of the test's own, from an executable file of any name: it does nothing until it is ended.
#pragma once

#include "tests/support/base/ChildProcess.h"

#include <csignal>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orbel::linux {

class IdleProgram {
public:
  // Copies an idle program to the path and starts it there. The environment ("NAME=value") is added to ours;
  // the value "$PID" is the process's own number.
  explicit IdleProgram(const std::string& path, const std::vector<std::string>& environment = {});
  // Starts a command as it is.
  explicit IdleProgram(const std::vector<std::string>& command);

  pid_t processIdentifier() const { return m_process->pid(); }
  void kill() { m_process->sendSignal(SIGKILL); } // its remains stay until end()
  void end() { m_process->terminate(); }
  // An executable that waits for ever when it is started without arguments.
  static void makeIdleExecutable(const std::string& path);

private:
  std::optional<test::ChildProcess> m_process;
};

} // namespace orbel::linux
