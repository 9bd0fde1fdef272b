// The program that asks others to quit, run as the desktop runs it: whom it asks, and whom it refuses.
#include "tests/desktop/harness/SharedDesktop.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/ChildProcess.h"
#include "tests/support/base/TemporaryDirectory.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <unistd.h>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr int kDone = 0;
constexpr int kProcessRefused = 1;
constexpr int kUrlRefused = 2;
constexpr const char* kNobody = "65534";

class CompanionTest : public testing::Test {
protected:
  RunResult open(const std::string& url) { return m_session.run({ORBELMENU_TOOLKIT, url}); }
  RunResult quit(pid_t process) { return open("orbelmenu-toolkit:terminate/" + std::to_string(process)); }

  // Refused with a reason on standard error and nothing on standard output.
  static testing::AssertionResult isRefused(const RunResult& result, int status) {
    const bool hasReason =
        result.errors.starts_with("orbelmenu-toolkit: refused: ") && result.errors.size() > 30;
    if (result.exitStatus == status && hasReason && result.output.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "status " << result.exitStatus << ": " << result.errors;
  }

  SharedDesktop m_desktop{{.windowManager = WindowManagerKind::openbox}};
  DesktopSession& m_session = m_desktop.session();
};

TEST_F(CompanionTest, APlainProgramClosesAndOneWithAnUnsavedDocumentGetsToAsk) {
  TestWindow plain(m_session, {.title = "Plain"});
  TestWindow unsaved(m_session, {.title = "Unsaved", .asksBeforeClosing = true});
  TestWindow other(m_session, {.title = "Other"});
  EXPECT_EQ(quit(plain.pid()).exitStatus, kDone);
  EXPECT_TRUE(plain.process().waitForExit(kPatience));
  EXPECT_EQ(plain.process().exitStatus(), 0) << "it closed by itself";

  const RunResult asked = quit(unsaved.pid());
  EXPECT_EQ(asked.exitStatus, kDone) << asked.errors;
  EXPECT_TRUE(waitFor([&] { return m_session.windows().findByTitle("Save the changes?").has_value(); },
                      "it asks whether to save"));
  EXPECT_TRUE(unsaved.process().isRunning());
  EXPECT_TRUE(m_session.windows().isViewable(unsaved.id()));
  EXPECT_FALSE(other.log().contains("delete-window"));
}

TEST_F(CompanionTest, UrlsThatAreNotExactlyAProcessAreRefused) {
  TestWindow window(m_session, {.title = "Window"});
  const std::string number = std::to_string(window.pid());
  const std::string prefix = "orbelmenu-toolkit:terminate/";
  const std::string beyond = std::to_string(std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1);
  // Its number again, a whole turn of 32 bits later.
  const std::string wrapped = std::to_string((std::int64_t{1} << 32) + window.pid());
  for (const std::string& url : {prefix + "0",
                                 prefix + "1",
                                 prefix + "-1",
                                 prefix + '-' + number,
                                 prefix,
                                 prefix + beyond,
                                 prefix + wrapped,
                                 prefix + "99999999999999999999",
                                 prefix + number + " ",
                                 prefix + number + "/",
                                 prefix + number + "x",
                                 prefix + number + "?force",
                                 prefix + ' ' + number,
                                 prefix + '+' + number,
                                 prefix + "0x10",
                                 prefix + "1e3",
                                 "orbelmenu-toolkit:terminate" + number,
                                 "orbelmenu-toolkit:kill/" + number,
                                 "orbelmenu-toolkit:Terminate/" + number,
                                 "orbelmenu-toolkit://terminate/" + number,
                                 "file:terminate/" + number,
                                 number,
                                 std::string()}) {
    EXPECT_TRUE(isRefused(open(url), kUrlRefused)) << '"' << url << '"';
  }
  EXPECT_TRUE(isRefused(m_session.run({ORBELMENU_TOOLKIT}), kUrlRefused));
  EXPECT_TRUE(isRefused(m_session.run({ORBELMENU_TOOLKIT, prefix + number, prefix + number}), kUrlRefused));
  EXPECT_TRUE(window.process().isRunning());
  EXPECT_FALSE(window.log().contains("delete-window"));
}

TEST_F(CompanionTest, TheUrlsThatStartAndEndItLeaveEverythingAlone) {
  TestWindow window(m_session, {.title = "Window"});
  for (const char* url : {"orbelmenu-toolkit:", "orbelmenu-toolkit:terminate"}) {
    const RunResult result = open(url);
    EXPECT_EQ(result.exitStatus, kDone) << url;
    EXPECT_EQ(result.errors, "") << url;
  }
  EXPECT_TRUE(window.process().isRunning());
  EXPECT_FALSE(window.log().contains("delete-window"));
}

TEST_F(CompanionTest, ItselfAndAProcessWithoutAWindowAndOneThatIsNotThereAreRefused) {
  const RunResult itself = m_session.run(
      {"/bin/sh", "-c", std::string("exec ") + ORBELMENU_TOOLKIT + " orbelmenu-toolkit:terminate/$$"});
  EXPECT_TRUE(isRefused(itself, kProcessRefused));
  EXPECT_NE(itself.errors.find("this very process"), std::string::npos) << itself.errors;

  const auto windowless = m_session.start("windowless", {"/bin/sleep", "600"});
  const RunResult refused = quit(windowless->pid());
  EXPECT_TRUE(isRefused(refused, kProcessRefused));
  EXPECT_NE(refused.errors.find("no window"), std::string::npos) << refused.errors;
  EXPECT_TRUE(windowless->isRunning());

  const pid_t ended = windowless->pid();
  windowless->sendSignal(SIGKILL);
  ASSERT_TRUE(windowless->waitForExit(kPatience));
  EXPECT_TRUE(isRefused(quit(ended), kProcessRefused));
}

TEST_F(CompanionTest, WithoutADisplayItRefusesWithAReason) {
  TestWindow window(m_session, {.title = "Window"});
  const RunResult result =
      m_session.run({ORBELMENU_TOOLKIT, "orbelmenu-toolkit:terminate/" + std::to_string(window.pid())},
                    {{"DISPLAY", ":4711"}});
  EXPECT_EQ(result.exitStatus, kProcessRefused);
  EXPECT_NE(result.errors.find("display"), std::string::npos) << result.errors;
}

// Both ways, where we may become another user; an ordinary user has the system's processes for it.
TEST_F(CompanionTest, ProcessesOfAnotherUserAreRefused) {
  if (::geteuid() != 0) {
    const RunResult result = quit(2);
    EXPECT_TRUE(isRefused(result, kProcessRefused));
    EXPECT_NE(result.errors.find("you have no process"), std::string::npos) << result.errors;
    return;
  }
  // Where the other user can reach them.
  const TemporaryDirectory folder("orbel-other-user");
  std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
  const auto client = folder.path() / "test-window";
  const auto toolkit = folder.path() / "orbelmenu-toolkit";
  std::filesystem::copy_file(TestWindow::clientPath("test-window"), client);
  std::filesystem::copy_file(ORBELMENU_TOOLKIT, toolkit);
  const auto asNobody = [](std::vector<std::string> command) {
    command.insert(command.begin(), {"setpriv", std::string("--reuid=") + kNobody,
                                     std::string("--regid=") + kNobody, "--clear-groups"});
    return command;
  };

  const auto theirs = m_session.start("theirs", asNobody({client.string(), "--title", "Theirs"}));
  const ClientLog log(m_session.logFile("theirs"));
  ASSERT_TRUE(waitFor([&] { return m_session.windows().findByTitle("Theirs").has_value(); },
                      "the other user's window is open"));
  const RunResult ofTheirs = quit(theirs->pid());
  EXPECT_TRUE(isRefused(ofTheirs, kProcessRefused));
  EXPECT_NE(ofTheirs.errors.find("you have no process"), std::string::npos) << ofTheirs.errors;

  TestWindow ours(m_session, {.title = "Ours"});
  const RunResult ofOurs = m_session.run(
      asNobody({toolkit.string(), "orbelmenu-toolkit:terminate/" + std::to_string(ours.pid())}));
  EXPECT_TRUE(isRefused(ofOurs, kProcessRefused));
  // And that user may close what is theirs, so it was not for want of a display.
  EXPECT_TRUE(ours.process().isRunning());
  EXPECT_TRUE(theirs->isRunning());
  EXPECT_FALSE(log.contains("delete-window"));
  const RunResult ofTheirOwn = m_session.run(
      asNobody({toolkit.string(), "orbelmenu-toolkit:terminate/" + std::to_string(theirs->pid())}));
  EXPECT_EQ(ofTheirOwn.exitStatus, kDone) << ofTheirOwn.errors;
  EXPECT_TRUE(theirs->waitForExit(kPatience));
  EXPECT_FALSE(ours.log().contains("delete-window"));
}

} // namespace
