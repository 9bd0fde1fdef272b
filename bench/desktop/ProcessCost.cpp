#include "bench/desktop/ProcessCost.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace orbel::bench {

ProcessCost ProcessCost::of(pid_t process) {
  ProcessCost cost;
  for (const auto& task : std::filesystem::directory_iterator("/proc/" + std::to_string(process) + "/task")) {
    double nanoseconds = 0;
    std::ifstream(task.path() / "schedstat") >> nanoseconds;
    cost.cpuSeconds += nanoseconds * 1e-9;
    std::ifstream status(task.path() / "status");
    for (std::string word; status >> word;) {
      std::int64_t count = 0;
      if (word == "voluntary_ctxt_switches:" && status >> count) cost.wakeUps += count;
    }
  }
  return cost;
}

double proportionalSetSize(pid_t process) {
  std::ifstream rollup("/proc/" + std::to_string(process) + "/smaps_rollup");
  for (std::string word; rollup >> word;) {
    double kilobytes = 0;
    if (word == "Pss:" && rollup >> kilobytes) return kilobytes / 1024;
  }
  return 0;
}

} // namespace orbel::bench
