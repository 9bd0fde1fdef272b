// A program that a test runs. It leads a process group of its own, dies with the test program however that
// ends, and is ended with its group if it still runs when the object is destroyed.
#pragma once

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orbel::test {

using Environment = std::map<std::string, std::string>;

struct ProcessDescription {
  std::vector<std::string> command; // the program is looked up on the test's own PATH unless it has a slash
  Environment environment = {};     // the whole environment, nothing is inherited
  std::filesystem::path log = {};   // standard error, and standard output unless `output` is set; appended to
  std::filesystem::path output = {}; // standard output alone
  std::filesystem::path folder = {}; // the working folder; empty means the test's own
  int handedDescriptor = -1;         // one descriptor kept open in the child under its own number
  bool takesInput = false;           // standard input is ours to write and open as long as the object exists
};

class ChildProcess {
public:
  // Throws std::runtime_error naming the program and the cause when it cannot be started. To be called on the
  // main thread only: the child's life is tied to the thread that started it.
  explicit ChildProcess(const ProcessDescription& description);
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t pid() const { return m_pid; }
  bool isRunning();
  // True as soon as the process has ended.
  bool waitForExit(std::chrono::milliseconds timeout);
  // The exit status; the negative signal number where a signal ended it; nothing while it runs.
  std::optional<int> exitStatus() const { return m_exitStatus; }

  // To its standard input. Throws std::runtime_error when it has none or has ended.
  void writeLine(const std::string& line);
  void sendSignal(int signal);
  // Asks the group to end, and kills what is left of it once its leader has ended or three seconds are over.
  // Does nothing when the leader has ended by itself: its group may hold programs that it launched.
  void terminate();

private:
  pid_t m_pid = -1;
  int m_pidDescriptor = -1;
  int m_input = -1;
  std::optional<int> m_exitStatus;
};

} // namespace orbel::test
