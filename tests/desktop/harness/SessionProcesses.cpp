#include "tests/desktop/harness/SessionProcesses.h"

#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <algorithm>
#include <cctype>
#include <csignal>
#include <string>
#include <system_error>

namespace orbel::test {

namespace {

bool isNumber(const std::string& text) {
  return std::all_of(text.begin(), text.end(),
                     [](unsigned char character) { return std::isdigit(character); });
}

} // namespace

std::vector<pid_t> processesOfSession(const std::filesystem::path& runtimeFolder) {
  const std::string mark = std::string(1, '\0') + "XDG_RUNTIME_DIR=" + runtimeFolder.string() + '\0';
  std::vector<pid_t> processes;
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator("/proc", error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename().string();
    if (!isNumber(name)) continue;
    // A zombie has an empty environment, so it does not count.
    const std::string environment = '\0' + readFile(entry->path() / "environ");
    if (environment.find(mark) != std::string::npos) processes.push_back(std::stoi(name));
  }
  return processes;
}

void endProcessesOfSession(const std::filesystem::path& runtimeFolder) {
  const auto isEmptyAfterKilling = [&] {
    const auto processes = processesOfSession(runtimeFolder);
    for (const pid_t process : processes)
      ::kill(process, SIGKILL);
    return processes.empty();
  };
  if (const auto result = waitFor(isEmptyAfterKilling, "the session's processes have ended"); !result) {
    ADD_FAILURE() << result.message();
  }
}

} // namespace orbel::test
