#include "tests/support/base/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// glibc 2.36 forgets to say so itself.
extern "C" {
#include <sys/pidfd.h>
}

namespace orbel::test {

namespace {

constexpr std::chrono::seconds kPoliteness{3};
constexpr int kLogMode = 0644;

std::vector<char*> pointers(std::vector<std::string>& texts) {
  std::vector<char*> result;
  for (std::string& text : texts)
    result.push_back(text.data());
  result.push_back(nullptr);
  return result;
}

bool redirect(const char* path, int target) {
  const int descriptor = ::open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, kLogMode);
  return descriptor >= 0 && ::dup2(descriptor, target) >= 0;
}

// Everything the child does between fork and exec, prepared beforehand: the test has threads (the bus
// connection's), so nothing there may allocate.
struct Preparation {
  std::vector<char*> arguments;
  std::vector<char*> environment;
  const char* output;
  const char* log;
  const char* folder;
  int handedDescriptor;
  int input; // -1: none
  pid_t parent;
};

[[noreturn]] void becomeProgram(const Preparation& preparation, int errorReport) {
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::signal(SIGPIPE, SIG_DFL);
  ::setpgid(0, 0);
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // The parent may have died before the line above took effect.
  bool isReady = ::getppid() == preparation.parent;
  isReady = isReady && (preparation.input < 0 ? redirect("/dev/null", STDIN_FILENO)
                                              : ::dup2(preparation.input, STDIN_FILENO) >= 0);
  isReady =
      isReady && redirect(preparation.output, STDOUT_FILENO) && redirect(preparation.log, STDERR_FILENO);
  if (isReady && *preparation.folder) isReady = ::chdir(preparation.folder) == 0;
  if (isReady && preparation.handedDescriptor >= 0) {
    isReady = ::fcntl(preparation.handedDescriptor, F_SETFD, 0) == 0;
  }
  if (isReady)
    ::execvpe(preparation.arguments[0], preparation.arguments.data(), preparation.environment.data());
  const int cause = errno;
  [[maybe_unused]] const ssize_t written = ::write(errorReport, &cause, sizeof cause);
  ::_exit(127);
}

} // namespace

ChildProcess::ChildProcess(const ProcessDescription& description) {
  if (description.command.empty()) throw std::runtime_error("no program given");
  std::vector<std::string> arguments = description.command;
  std::vector<std::string> environment;
  for (const auto& [name, value] : description.environment)
    environment.push_back(name + '=' + value);
  const std::string log = description.log.empty() ? "/dev/null" : description.log.string();
  const std::string output = description.output.empty() ? log : description.output.string();
  const std::string folder = description.folder.string();
  std::array<int, 2> report{};
  std::array<int, 2> input{-1, -1};
  if (::pipe2(report.data(), O_CLOEXEC) != 0) throw std::runtime_error(std::strerror(errno));
  if (description.takesInput && ::pipe2(input.data(), O_CLOEXEC) != 0)
    throw std::runtime_error(std::strerror(errno));
  const Preparation preparation{
      pointers(arguments), pointers(environment),        output.c_str(), log.c_str(),
      folder.c_str(),      description.handedDescriptor, input[0],       ::getpid()};

  m_pid = ::fork();
  if (m_pid == 0) becomeProgram(preparation, report[1]);
  ::close(report[1]);
  if (description.takesInput) ::close(input[0]);
  m_input = input[1];
  if (m_pid < 0) {
    ::close(report[0]);
    throw std::runtime_error("cannot fork for " + arguments[0]);
  }
  int cause = 0;
  // The pipe closes itself on a successful exec.
  const bool failed = ::read(report[0], &cause, sizeof cause) == sizeof cause;
  ::close(report[0]);
  if (failed) {
    ::waitpid(m_pid, nullptr, 0);
    throw std::runtime_error("cannot start " + arguments[0] + ": " + std::strerror(cause));
  }
  m_pidDescriptor = ::pidfd_open(m_pid, 0);
  if (m_pidDescriptor < 0) {
    const std::string reason = std::strerror(errno);
    ::kill(m_pid, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
    throw std::runtime_error("cannot watch " + arguments[0] + ": " + reason);
  }
}

ChildProcess::~ChildProcess() {
  terminate();
  if (m_input >= 0) ::close(m_input);
  ::close(m_pidDescriptor);
}

bool ChildProcess::isRunning() {
  return !waitForExit(std::chrono::milliseconds::zero());
}

bool ChildProcess::waitForExit(std::chrono::milliseconds timeout) {
  if (m_exitStatus) return true;
  pollfd ended{m_pidDescriptor, POLLIN, 0};
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  int found = 0;
  do {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    found = ::poll(&ended, 1, static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0)));
  } while (found < 0 && errno == EINTR);
  if (found <= 0) return false;
  int status = 0;
  if (::waitpid(m_pid, &status, 0) != m_pid) status = 0;
  m_exitStatus = WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  return true;
}

void ChildProcess::writeLine(const std::string& line) {
  const std::string text = line + '\n';
  if (m_input < 0 || ::write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw std::runtime_error("the program does not listen");
}

void ChildProcess::sendSignal(int signal) {
  if (isRunning()) ::kill(m_pid, signal);
}

void ChildProcess::terminate() {
  // A launcher that has done its work may have left running what it was to launch, in its own group.
  if (!isRunning()) return;
  ::kill(-m_pid, SIGTERM);
  waitForExit(kPoliteness);
  ::kill(-m_pid, SIGKILL);
  waitForExit(kPoliteness);
}

} // namespace orbel::test
