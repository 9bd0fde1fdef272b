#include "tests/backends/linux/IdleProgram.h"

#include "tests/support/base/Waiting.h"

#include <filesystem>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace orbel::linux {

namespace {

test::Environment ownEnvironment() {
  test::Environment environment;
  for (char** variable = ::environ; *variable; ++variable) {
    const std::string text = *variable;
    const auto split = text.find('=');
    if (split != std::string::npos) environment[text.substr(0, split)] = text.substr(split + 1);
  }
  return environment;
}

test::ProcessDescription idle(std::vector<std::string> command, test::Environment environment) {
  // The program waits for its standard input, to which nothing is ever written.
  return {.command = std::move(command), .environment = std::move(environment), .takesInput = true};
}

} // namespace

void IdleProgram::makeIdleExecutable(const std::string& path) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::filesystem::copy_file("/bin/cat", path, std::filesystem::copy_options::overwrite_existing);
  ::chmod(path.c_str(), 0755);
}

IdleProgram::IdleProgram(const std::string& path, const std::vector<std::string>& environment) {
  makeIdleExecutable(path);
  test::Environment variables = ownEnvironment();
  std::string own; // the names of those with the process's own number
  for (const std::string& variable : environment) {
    const auto split = variable.find('=');
    const std::string name = variable.substr(0, split);
    if (variable.substr(split + 1) == "$PID")
      own += " export " + name + "=$$;";
    else
      variables[name] = variable.substr(split + 1);
  }
  if (own.empty()) {
    m_process.emplace(idle({path}, variables));
    return;
  }
  // Only a process itself knows its number before it has the program's arguments and environment.
  m_process.emplace(idle({"/bin/sh", "-c", own + " exec \"$0\"", path}, variables));
  const std::string link = "/proc/" + std::to_string(processIdentifier()) + "/exe";
  std::error_code ignored;
  const auto hasStarted = [&] { return std::filesystem::read_symlink(link, ignored) == path; };
  if (!test::waitFor(hasStarted, "the program runs")) throw std::runtime_error(path + " does not start");
}

IdleProgram::IdleProgram(const std::vector<std::string>& command) {
  m_process.emplace(idle(command, ownEnvironment()));
}

} // namespace orbel::linux
