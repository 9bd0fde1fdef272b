// What the kernel reports about one process of the user. Read once when a process is first seen.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {

struct ProcessRecord {
  std::int32_t processIdentifier = 0;
  // In the kernel's ticks since boot; with the identifier it names a process for good
  std::uint64_t startTime = 0;
  std::optional<std::string> executablePath;
  std::vector<std::string> arguments;      // the program's own name first; may be empty
  std::optional<std::string> appImagePath; // of the AppImage that this program is the content of
  // Of the desktop entry that started this very process, if that was passed on
  std::optional<std::string> launchedEntryPath;

  // None when there is no such process any more.
  static std::optional<ProcessRecord> read(std::int32_t processIdentifier);
  // None when there is no such process, or only a zombie that its parent has not collected.
  static std::optional<std::uint64_t> startTimeOf(std::int32_t processIdentifier);
};

} // namespace orbel::linux
