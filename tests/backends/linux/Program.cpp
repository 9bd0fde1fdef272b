#include "tests/backends/linux/Program.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>

namespace orbel::linux {

void Program::makeIdleExecutable(const std::string& path) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::filesystem::copy_file("/bin/cat", path, std::filesystem::copy_options::overwrite_existing);
  ::chmod(path.c_str(), 0755);
}

Program::Program(const std::string& path, const std::vector<std::string>& environment) {
  makeIdleExecutable(path);
  start({path}, environment);
}

Program::Program(const std::vector<std::string>& command) {
  start(command, {});
}

void Program::start(std::vector<std::string> command, const std::vector<std::string>& environment) {
  int input[2];   // never written to, so that the program waits on it
  int started[2]; // closes when the program has taken the place of ours
  if (::pipe2(input, O_CLOEXEC) != 0 || ::pipe2(started, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  std::vector<char*> words;
  for (auto& word : command)
    words.push_back(word.data());
  words.push_back(nullptr);
  m_process = ::fork();
  if (m_process == 0) {
    ::dup2(input[0], 0);
    ::fcntl(input[1], F_SETFD, 0); // held by the program itself: it never sees the end of its input
    for (const auto& variable : environment) {
      const auto split = variable.find('=');
      const std::string value = variable.substr(split + 1);
      ::setenv(variable.substr(0, split).c_str(),
               value == "$PID" ? std::to_string(::getpid()).c_str() : value.c_str(), 1);
    }
    ::execv(words[0], words.data());
    ::_exit(127);
  }
  ::close(input[0]);
  ::close(input[1]);
  ::close(started[1]);
  char end = 0;
  while (::read(started[0], &end, 1) < 0 && errno == EINTR) {
  }
  ::close(started[0]);
}

void Program::kill() {
  if (m_process > 0) ::kill(m_process, SIGKILL);
}

void Program::end() {
  if (m_process <= 0) return;
  kill();
  ::waitpid(m_process, nullptr, 0);
  m_process = -1;
}

} // namespace orbel::linux
