// The settings files that the tests' window managers and compositors read, hermetic: nothing of
// the machine's.
#pragma once

#include <filesystem>

namespace orbel::test {

// Writes them into the folder that the managers see as $XDG_CONFIG_HOME.
void writeWindowManagerSettings(const std::filesystem::path& configurationFolder);

} // namespace orbel::test
