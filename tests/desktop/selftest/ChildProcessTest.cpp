#include "tests/support/base/ChildProcess.h"

#include "tests/support/base/TemporaryDirectory.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace orbel::test;

namespace {

class ChildProcessTest : public testing::Test {
protected:
  ProcessDescription shell(const std::string& script) const {
    return {.command = {"sh", "-c", script},
            .environment = {{"PATH", "/usr/bin:/bin"}, {"GREETING", "hello"}},
            .log = m_folder.path() / "log",
            .folder = m_folder.path()};
  }
  std::string log() const { return readFile(m_folder.path() / "log"); }

  TemporaryDirectory m_folder{"orbel-child"};
};

TEST_F(ChildProcessTest, WritesBothStreamsToTheLogAndReportsTheExitStatus) {
  ChildProcess process(shell("echo $GREETING; echo trouble >&2; exit 7"));
  ASSERT_TRUE(process.waitForExit(kPatience));
  EXPECT_EQ(process.exitStatus(), 7);
  EXPECT_EQ(log(), "hello\ntrouble\n");
}

TEST_F(ChildProcessTest, GivesTheProgramOnlyTheStatedEnvironmentAndFolder) {
  ::setenv("ORBEL_TEST_INTRUDER", "1", 1);
  ChildProcess process(shell("echo \"[$ORBEL_TEST_INTRUDER]\"; pwd"));
  ASSERT_TRUE(process.waitForExit(kPatience));
  EXPECT_EQ(log(), "[]\n" + m_folder.path().string() + "\n");
}

TEST_F(ChildProcessTest, ReportsADeathBySignalAsANegativeStatus) {
  ChildProcess process(shell("kill -USR1 $$"));
  ASSERT_TRUE(process.waitForExit(kPatience));
  EXPECT_EQ(process.exitStatus(), -SIGUSR1);
}

TEST_F(ChildProcessTest, NamesTheProgramThatCannotBeStarted) {
  ProcessDescription description = shell("");
  description.command = {"no-such-program"};
  try {
    const ChildProcess process(description);
    FAIL() << "it was started";
  } catch (const std::runtime_error& error) {
    EXPECT_NE(std::string(error.what()).find("no-such-program: No such file"), std::string::npos)
        << error.what();
  }
}

TEST_F(ChildProcessTest, EndsTheWholeGroupAlsoWhenItIgnoresThePoliteRequest) {
  pid_t grandchild = 0;
  {
    ChildProcess process(shell("trap '' TERM; sleep 1000 & echo $!; wait; wait"));
    ASSERT_TRUE(waitFor([this] { return log().ends_with('\n'); }, "the grandchild has started"));
    grandchild = std::stoi(log());
    ASSERT_EQ(::kill(grandchild, 0), 0);
  }
  // Whoever inherits the orphan reaps it: it no longer exists, or is a zombie without a command line.
  const auto isGone = [grandchild] {
    return readFile("/proc/" + std::to_string(grandchild) + "/cmdline").empty();
  };
  EXPECT_TRUE(waitFor(isGone, "the grandchild has ended"));
}

TEST_F(ChildProcessTest, DoesNotWaitLongerThanTold) {
  ChildProcess process(shell("exec sleep 1000"));
  EXPECT_FALSE(process.waitForExit(std::chrono::milliseconds(1)));
  EXPECT_TRUE(process.isRunning());
  EXPECT_EQ(process.exitStatus(), std::nullopt);
  process.terminate();
  EXPECT_EQ(process.exitStatus(), -SIGTERM);
}

TEST(WaitingTest, FailsWithTheDescriptionAndWhatWasSeenLast) {
  const auto result = waitFor([] { return testing::AssertionFailure() << "three windows"; },
                              std::chrono::milliseconds(1), "two windows are open");
  EXPECT_FALSE(result);
  EXPECT_STREQ(result.message(), "waited 1 ms in vain until two windows are open; last seen: three windows");
}

TEST(WaitingTest, AsksOnceMoreWhenTheTimeIsOver) {
  int asked = 0;
  EXPECT_TRUE(waitFor([&] { return ++asked == 1; }, std::chrono::milliseconds::zero(), "asked"));
}

TEST(WaitingTest, NoticesThatAConditionStopsHolding) {
  int asked = 0;
  EXPECT_FALSE(holdsFor([&] { return ++asked < 3; }, kPatience, "it stays"));
  EXPECT_TRUE(holdsFor([] { return true; }, std::chrono::milliseconds(1), "it stays"));
}

} // namespace
