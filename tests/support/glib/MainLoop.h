// Runs the GLib main loop until something has happened; a test never waits for time to pass.
#pragma once

#include "tests/support/base/Waiting.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orbel::test {

// True as soon as the condition holds, false when it has not come to hold by then.
[[nodiscard]] testing::AssertionResult iterateUntil(const std::function<bool()>& condition,
                                                    const std::string& description = "it holds");
// Runs the loop until nothing is left to do at once.
void iterateWhatIsPending();
// Milliseconds until the main context would wake by itself; -1 for never. Handles what is ready first.
int nextWakeUp();

} // namespace orbel::test
