// Waiting for something to become true. A test never waits for time to pass: it names the condition, and a
// deadline turns a hang into a readable failure. While this waits no loop of events runs; for what needs one
// there is tests/support/glib/MainLoop.h.
//
//   ASSERT_TRUE(waitFor([&] { return windows.isViewable(menu); }, "the menu is shown"));
//
// A condition returns a bool, or a testing::AssertionResult whose message is part of the failure.
#pragma once

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <utility>

namespace orbel::test {

// Far beyond what anything here takes, so that a busy machine fails no test.
inline constexpr std::chrono::milliseconds kPatience{30000};

// Leaves the processor to the programs under test for a few milliseconds.
void pauseBetweenLooks();

// `pause` is called between two looks at the condition and returns soon.
[[nodiscard]] testing::AssertionResult
waitForResult(const std::function<testing::AssertionResult()>& condition, std::chrono::milliseconds timeout,
              const std::string& description, const std::function<void()>& pause = pauseBetweenLooks);

// True as soon as the condition holds; it is asked every few milliseconds and once more after the deadline.
template <class Condition>
[[nodiscard]] testing::AssertionResult waitFor(Condition condition, std::chrono::milliseconds timeout,
                                               const std::string& description) {
  return waitForResult([&] { return testing::AssertionResult(condition()); }, timeout, description);
}

template <class Condition>
[[nodiscard]] testing::AssertionResult waitFor(Condition condition, const std::string& description) {
  return waitFor(std::move(condition), kPatience, description);
}

[[nodiscard]] testing::AssertionResult watchResult(const std::function<testing::AssertionResult()>& condition,
                                                   std::chrono::milliseconds duration,
                                                   const std::string& description);

// Fails as soon as the condition stops holding within the duration. Only for what must NOT happen, where no
// event shows that it did not; prefer an event that can only come afterwards.
template <class Condition>
[[nodiscard]] testing::AssertionResult holdsFor(Condition condition, std::chrono::milliseconds duration,
                                                const std::string& description) {
  return watchResult([&] { return testing::AssertionResult(condition()); }, duration, description);
}

} // namespace orbel::test
