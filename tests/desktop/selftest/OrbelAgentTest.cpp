#include "tests/desktop/harness/OrbelAgent.h"
#include "tests/desktop/harness/SharedDesktop.h"

#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/Waiting.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace orbel::test;

namespace {

class OrbelAgentTest : public testing::Test {
protected:
  void choose(const std::string& executable) { ::setenv("ORBELMENU_EXECUTABLE", executable.c_str(), 1); }
  void TearDown() override { ::unsetenv("ORBELMENU_EXECUTABLE"); }

  SharedDesktop m_desktop{{.windowManager = WindowManagerKind::none}};
  DesktopSession& m_session = m_desktop.session();
};

TEST_F(OrbelAgentTest, IsReadyWithItsBusNameAndQuitsOverTheBus) {
  choose(TestWindow::clientPath("stand-in-agent").string());
  OrbelAgent agent(m_session);
  EXPECT_TRUE(m_session.bus().hasOwner(OrbelAgent::kBusName));
  EXPECT_TRUE(agent.activate());
  EXPECT_TRUE(waitFor([&] { return agent.logContains("activated"); }, "it was activated"));
  EXPECT_TRUE(agent.menuWindows().empty());
  EXPECT_TRUE(agent.quit());
  EXPECT_FALSE(agent.isRunning());
  EXPECT_FALSE(m_session.bus().hasOwner(OrbelAgent::kBusName));
}

TEST_F(OrbelAgentTest, ReportsAProgramThatEndsAtOnceWithItsLog) {
  const auto program = m_session.home() / "broken";
  choose(program.string());
  ASSERT_EQ(
      m_session.run({"sh", "-c", "printf '#!/bin/sh\\necho no luck\\nexit 1\\n' > broken; chmod +x broken"})
          .exitStatus,
      0);
  try {
    const OrbelAgent agent(m_session);
    FAIL() << "it counts as ready";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "orbelmenu has ended at once:\nno luck\n");
  }
}

TEST_F(OrbelAgentTest, FailsAnActionThatNobodyAnswers) {
  choose(TestWindow::clientPath("stand-in-agent").string());
  OrbelAgent agent(m_session);
  m_session.bus().stop();
  EXPECT_FALSE(agent.activateAction("show"));
}

} // namespace
