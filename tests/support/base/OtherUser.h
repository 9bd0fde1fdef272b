// Runs a test's body as a user without rights, because the rules on permissions do not bind root.
#pragma once

#include <functional>

namespace orbel::test {

// The body runs in a process of its own; true when none of its expectations failed there.
bool passesAsOtherUser(const std::function<void()>& body);

} // namespace orbel::test
