// What a process has cost so far, from the kernel's own accounts of all its threads.
#pragma once

#include <cstdint>
#include <sys/types.h>

namespace orbel::bench {

struct ProcessCost {
  double cpuSeconds = 0;
  std::int64_t wakeUps = 0; // times a thread gave the processor up by itself, and so was woken again later

  static ProcessCost of(pid_t process);
};

// Proportional set size, in MB: memory shared with other processes counts by its share.
double proportionalSetSize(pid_t process);

} // namespace orbel::bench
