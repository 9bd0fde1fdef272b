#include "tests/backends/x11/support/Program.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orbel::test {

Program::Program(std::vector<std::string> command, const std::map<std::string, std::string>& environment) {
  int output[2], input[2];
  if (pipe2(output, O_CLOEXEC) != 0 || pipe2(input, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  m_process = fork();
  if (m_process < 0) throw std::runtime_error("no process");
  if (m_process == 0) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(output[1], STDOUT_FILENO);
    dup2(input[0], STDIN_FILENO);
    for (const auto& [name, value] : environment)
      setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> words;
    for (std::string& word : command)
      words.push_back(word.data());
    words.push_back(nullptr);
    execvp(words.front(), words.data());
    _exit(127);
  }
  setpgid(m_process, m_process); // whichever of the two comes first
  close(output[1]);
  close(input[0]);
  m_output = output[0];
  m_input = input[1];
  fcntl(m_output, F_SETFL, O_NONBLOCK);
}

Program::~Program() {
  kill();
  close(m_output);
  close(m_input);
}

bool Program::isRunning() {
  lookForEnd(WNOHANG);
  return !m_hasEnded;
}

std::optional<int> Program::exitStatus() {
  lookForEnd(WNOHANG);
  return m_exitStatus;
}

std::string Program::state() {
  if (isRunning()) return "it runs";
  return m_exitStatus ? "it ended with status " + std::to_string(*m_exitStatus)
                      : "signal " + std::to_string(m_endSignal) + " ended it";
}

void Program::kill() {
  if (m_isBuried) return;
  ::kill(-m_process, SIGKILL); // also what it left behind
  lookForEnd(0);
  waitpid(m_process, nullptr, 0);
  m_isBuried = true;
}

// Leaves the ended process unburied: its number, which is the group's, then goes to no other process.
void Program::lookForEnd(int options) {
  siginfo_t end{};
  if (m_hasEnded || waitid(P_PID, static_cast<id_t>(m_process), &end, WEXITED | WNOWAIT | options) != 0)
    return;
  if (end.si_pid != m_process) return; // still running
  m_hasEnded = true;
  if (end.si_code == CLD_EXITED)
    m_exitStatus = end.si_status;
  else
    m_endSignal = end.si_status;
}

void Program::writeLine(const std::string& line) {
  const std::string text = line + '\n';
  if (write(m_input, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw std::runtime_error("the program does not listen");
}

const std::vector<std::string>& Program::lines() {
  std::array<char, 4096> part{};
  ssize_t length = 0;
  while ((length = read(m_output, part.data(), part.size())) > 0)
    m_rest.append(part.data(), static_cast<std::size_t>(length));
  for (std::size_t end = m_rest.find('\n'); end != std::string::npos; end = m_rest.find('\n')) {
    m_lines.push_back(m_rest.substr(0, end));
    m_rest.erase(0, end + 1);
  }
  return m_lines;
}

bool Program::hasWritten(const std::string& line) {
  const std::vector<std::string>& all = lines(); // once: reading on moves the lines
  return std::ranges::find(all, line) != all.end();
}

} // namespace orbel::test
