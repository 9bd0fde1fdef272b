// Runs the GLib main loop until something has happened; a test never waits for time to pass.
#pragma once

#include <functional>

namespace orbel::test {

// True as soon as the condition holds, false when it has not come to hold within 15 seconds.
[[nodiscard]] bool iterateUntil(const std::function<bool()>& condition);
// Runs the loop until nothing is left to do at once.
void iterateWhatIsPending();

} // namespace orbel::test
