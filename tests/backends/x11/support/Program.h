// A program that a test runs. It leads a process group of its own, dies with the test, and its standard
// output is read line by line. Main thread only.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orbel::test {

class Program {
public:
  // The environment is the test's own with these values set.
  Program(std::vector<std::string> command, const std::map<std::string, std::string>& environment);
  ~Program(); // ends the group
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  pid_t processIdentifier() const { return m_process; }
  bool isRunning();
  // Nothing while it runs, and when a signal ended it.
  std::optional<int> exitStatus();
  // For messages: whether it runs, and how it ended.
  std::string state();
  void kill();
  void writeLine(const std::string& line);
  // What it has written so far.
  const std::vector<std::string>& lines();
  bool hasWritten(const std::string& line);

private:
  void lookForEnd(int options);

  pid_t m_process = -1;
  int m_output = -1;
  int m_input = -1;
  bool m_hasEnded = false;
  bool m_isBuried = false;
  std::optional<int> m_exitStatus;
  int m_endSignal = 0;
  std::string m_rest;
  std::vector<std::string> m_lines;
};

} // namespace orbel::test
