#include "tests/support/base/Waiting.h"

#include <poll.h>

namespace orbel::test {

namespace {

using Clock = std::chrono::steady_clock;

// Short beside anything a person notices, long enough to leave the processor to the programs under test.
constexpr int kIntervalInMilliseconds = 4;

} // namespace

void pauseBetweenLooks() {
  ::poll(nullptr, 0, kIntervalInMilliseconds);
}

testing::AssertionResult waitForResult(const std::function<testing::AssertionResult()>& condition,
                                       std::chrono::milliseconds timeout, const std::string& description,
                                       const std::function<void()>& pause) {
  const auto deadline = Clock::now() + timeout;
  for (;;) {
    const bool isLastLook = Clock::now() >= deadline;
    const testing::AssertionResult result = condition();
    if (result) return testing::AssertionSuccess();
    if (isLastLook) {
      return testing::AssertionFailure()
             << "waited " << timeout.count() << " ms in vain until " << description
             << (*result.message() ? "; last seen: " : "") << result.message();
    }
    pause();
  }
}

testing::AssertionResult watchResult(const std::function<testing::AssertionResult()>& condition,
                                     std::chrono::milliseconds duration, const std::string& description) {
  const auto begin = Clock::now();
  for (;;) {
    const bool isLastLook = Clock::now() >= begin + duration;
    const testing::AssertionResult result = condition();
    if (!result) {
      const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
      return testing::AssertionFailure()
             << "no longer true after " << elapsed.count() << " ms: " << description
             << (*result.message() ? "; " : "") << result.message();
    }
    if (isLastLook) return testing::AssertionSuccess();
    pauseBetweenLooks();
  }
}

} // namespace orbel::test
