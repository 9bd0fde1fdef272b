// What a person sees when the program is started: for the first time, again, and a second time while it runs.
#include "tests/desktop/agent/AgentFixture.h"

#include "tests/support/base/TextFile.h"

using namespace orbel::test;

namespace {

class LaunchTest : public AgentFixture, public testing::WithParamInterface<WindowManagerKind> {
protected:
  LaunchTest() : AgentFixture({.windowManager = GetParam()}) {}
};

class FirstLaunchTest : public AgentFixture {
protected:
  explicit FirstLaunchTest(const DesktopSessionOptions& options = {}) : AgentFixture(options) {
    std::filesystem::remove(m_session.preferences().path());
  }
  void expectCentred() {
    const ScreenPoint middle = settingsFrame().center();
    const ScreenPoint expected = m_session.screen().bounds().center();
    EXPECT_NEAR(middle.x, expected.x, 2);
    EXPECT_NEAR(middle.y, expected.y, 2);
  }
};

TEST_F(FirstLaunchTest, OnAFreshHomeTheSettingsAreShownCentredAndTheStoreIsMarked) {
  startAgentAlone();
  ASSERT_TRUE(waitForSettings());
  expectCentred();
  savePicture("first launch");
  EXPECT_TRUE(waitFor([&] { return m_session.preferences().boolean("launchedBefore") == true; }, "the mark"));
  quitAgent();

  startAgentAlone();
  // A request that comes after the start is answered after everything that the start shows.
  ASSERT_TRUE(agent().activateAction("show"));
  ASSERT_TRUE(waitFor([&] { return menuWindow().has_value(); }, "the menu answers"));
  EXPECT_TRUE(ownWindows().empty());
}

TEST_F(FirstLaunchTest, QuittingAtOnceLeavesTheMarkOnTheDisk) {
  startAgentAlone();
  EXPECT_TRUE(agent().quit());
  EXPECT_EQ(m_session.preferences().boolean("launchedBefore"), true);
  startAgentAlone();
}

class NoBusFirstLaunchTest : public FirstLaunchTest {
protected:
  NoBusFirstLaunchTest()
      : FirstLaunchTest({.windowManager = WindowManagerKind::openbox, .bus = BusPresence::absent}) {}
};

TEST_F(NoBusFirstLaunchTest, WithoutASessionBusTheSettingsAreShownAllTheSame) {
  startAgentAlone({.readyText = "There is no session bus"});
  ASSERT_TRUE(waitForSettings());
  expectCentred();
  EXPECT_TRUE(waitFor([&] { return m_session.preferences().boolean("launchedBefore") == true; }, "the mark"));
}

TEST_P(LaunchTest, StartingItASecondTimeShowsTheSettingsOfTheRunningOne) {
  const TestWindow window(m_session, {.frame = {60, 60, 300, 200}});
  startAgentAlone();
  EXPECT_TRUE(ownWindows().empty());
  m_input.clickAt(window.frame().center());
  ASSERT_TRUE(waitUntilActive(window));
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(m_session.run({OrbelAgent::executable()}).exitStatus, 0);
    ASSERT_TRUE(waitForSettings()) << round;
    m_input.typeKey(XK_Escape);
    ASSERT_TRUE(waitForOwnWindows(0));
  }
}

INSTANTIATE_TEST_SUITE_P(Managers, LaunchTest,
                         testing::Values(WindowManagerKind::openbox, WindowManagerKind::xfwm4,
                                         WindowManagerKind::kwin),
                         [](const auto& manager) {
                           std::string name(nameOf(manager.param));
                           std::erase_if(name, [](char letter) { return !std::isalnum(letter); });
                           return name;
                         });

} // namespace
