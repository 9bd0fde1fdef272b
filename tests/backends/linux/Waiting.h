// Waiting for a condition while the main context runs, never for time alone.
#pragma once

#include <functional>

namespace orbel::linux {

// True as soon as the condition holds; false when it does not within a deadline far beyond what it can take.
bool waitUntil(const std::function<bool()>& condition);

// Handles what is ready now.
void runReadySources();

// Milliseconds until the main context would wake by itself; -1 for never. Handles what is ready first.
int nextWakeUp();

} // namespace orbel::linux
