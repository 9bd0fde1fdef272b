// The processes that belong to one test session, known by the private runtime folder in their environment:
// also those that were started by a program under test in a session of their own.
#pragma once

#include <filesystem>
#include <sys/types.h>
#include <vector>

namespace orbel::test {

std::vector<pid_t> processesOfSession(const std::filesystem::path& runtimeFolder);
// Kills them until none is left.
void endProcessesOfSession(const std::filesystem::path& runtimeFolder);

} // namespace orbel::test
