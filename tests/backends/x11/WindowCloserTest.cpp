#include "backends/x11/WindowCloser.h"

#include "tests/backends/x11/support/WindowsTest.h"
#include "tests/support/x11/WindowManagers.h"

namespace orbel::test {
namespace {

class WindowCloserTest : public WindowsTest, public testing::WithParamInterface<WindowManagerKind> {
protected:
  WindowCloserTest() : WindowsTest(GetParam()) {}
  void SetUp() override {
    WindowsTest::SetUp();
    ASSERT_TRUE(iterateUntil([this] { return ids().empty(); }));
  }
};

INSTANTIATE_TEST_SUITE_P(WindowManagers, WindowCloserTest,
                         testing::Values(WindowManagerKind::none, WindowManagerKind::openbox),
                         nameOfInstance);

TEST_P(WindowCloserTest, AllWindowsOfTheProcessAreAskedAndNoOthers) {
  const auto two = otherClient({"--at", "10", "50", "--window", "--at", "300", "50", "--window"});
  const auto other = programAt(600, 50);
  ASSERT_TRUE(iterateUntil([&] { return ids().size() == 3; }));
  EXPECT_EQ(x11::WindowCloser(connection()).closeWindows(two->processIdentifier()), 2);
  EXPECT_TRUE(iterateUntil([&] { return !two->program().isRunning(); }));
  EXPECT_EQ(two->program().exitStatus(), 0) << "it closed its windows itself";
  EXPECT_TRUE(driver().exists(other->window()));
}

TEST_P(WindowCloserTest, AWindowThatTakesNoRequestIsNotAskedAndItsProgramLives) {
  const auto stubborn = otherClient({"--ignores-close", "--window"});
  ASSERT_TRUE(iterateUntil([&] { return isListed(stubborn->window()); }));
  EXPECT_EQ(x11::WindowCloser(connection()).closeWindows(stubborn->processIdentifier()), 0);
  const auto later = programAt(300, 50); // everything asked before has been dealt with
  EXPECT_TRUE(stubborn->program().isRunning());
  EXPECT_TRUE(driver().exists(stubborn->window()));
}

TEST_P(WindowCloserTest, AProcessWithoutWindowsIsLeftAlone) {
  const auto program = programAt(10, 50);
  EXPECT_EQ(x11::WindowCloser(connection()).closeWindows(server().pid()), 0);
  EXPECT_EQ(x11::WindowCloser(connection()).closeWindows(0), 0);
  EXPECT_EQ(x11::WindowCloser(connection()).closeWindows(-1), 0);
  EXPECT_TRUE(program->program().isRunning());
}

} // namespace
} // namespace orbel::test
