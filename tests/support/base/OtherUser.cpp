#include "tests/support/base/OtherUser.h"

#include <gtest/gtest.h>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace orbel::test {

namespace {
constexpr uid_t kNobody = 65534;
}

bool passesAsOtherUser(const std::function<void()>& body) {
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    // An ordinary user's tests are bound by permissions as they are.
    if (::getuid() == 0 &&
        (::setgroups(0, nullptr) != 0 || ::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
      std::perror("cannot become another user");
      ::_exit(2);
    }
    body();
    std::fflush(nullptr);
    ::_exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace orbel::test
