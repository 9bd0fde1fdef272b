// Runs the GLib main loop until something has happened; a test never waits for time to pass.
#pragma once

#include <chrono>
#include <functional>

namespace orbel::test {

// Far beyond what anything here takes, so that a busy machine fails no test.
inline constexpr std::chrono::milliseconds kPatience{30000};

// True as soon as the condition holds, false when it has not come to hold by then.
[[nodiscard]] bool iterateUntil(const std::function<bool()>& condition,
                                std::chrono::milliseconds patience = kPatience);
// The same for what other programs do, with the loop standing still: nothing is dispatched meanwhile.
[[nodiscard]] bool waitUntil(const std::function<bool()>& condition);
// Runs the loop until nothing is left to do at once.
void iterateWhatIsPending();

} // namespace orbel::test
