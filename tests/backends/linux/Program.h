// A real process of the test's own, from an executable file of any name: it does nothing until it is ended.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace orbel::linux {

class Program {
public:
  // Copies an idle program to the path and starts it there, its environment added to ours.
  explicit Program(const std::string& path, const std::vector<std::string>& environment = {});
  // Starts a command as it is.
  explicit Program(const std::vector<std::string>& command);
  ~Program() { end(); }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  pid_t processIdentifier() const { return m_process; }
  void kill(); // its remains stay until end()
  void end();
  // An executable that waits for ever when it is started without arguments.
  static void makeIdleExecutable(const std::string& path);

private:
  void start(std::vector<std::string> command, const std::vector<std::string>& environment);
  pid_t m_process = -1;
};

} // namespace orbel::linux
