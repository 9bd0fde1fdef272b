// The status icon of the real program, through the interface by which panels draw and click it.
#include "tests/desktop/agent/AgentFixture.h"

#include "tests/desktop/harness/StatusNotifierWatcher.h"

using namespace orbel::test;

namespace {

class StatusItemTest : public AgentFixture {
protected:
  std::string busAddress() const { return m_session.environment().at("DBUS_SESSION_BUS_ADDRESS"); }
  testing::AssertionResult registersWith(StatusNotifierWatcher& watcher) {
    return waitFor([&] { return watcher.items().size() == 1; }, "the item registers");
  }
  testing::AssertionResult clickOpensSettings(StatusNotifierWatcher& watcher) {
    if (!watcher.click(watcher.items().front())) return testing::AssertionFailure() << "the click is refused";
    if (const auto shown = waitForSettings(); !shown) return shown;
    m_input.typeKey(XK_Escape);
    return waitForOwnWindows(0);
  }
};

TEST_F(StatusItemTest, AClickOnItOpensTheSettings) {
  StatusNotifierWatcher watcher(busAddress());
  startAgentAlone();
  ASSERT_TRUE(registersWith(watcher));
  EXPECT_TRUE(clickOpensSettings(watcher));
  EXPECT_EQ(watcher.text(watcher.items().front(), "Title"), "Orbel Menu");
}

TEST_F(StatusItemTest, APanelThatComesLaterAndOneThatReturnsHaveTheItem) {
  startAgentAlone();
  for (int round = 0; round < 2; ++round) {
    StatusNotifierWatcher watcher(busAddress());
    ASSERT_TRUE(registersWith(watcher)) << round;
    EXPECT_TRUE(clickOpensSettings(watcher));
  }
}

TEST_F(StatusItemTest, TheItemEndsWithTheProgram) {
  StatusNotifierWatcher watcher(busAddress());
  startAgentAlone();
  ASSERT_TRUE(registersWith(watcher));
  const std::string item = watcher.items().front();
  quitAgent();
  EXPECT_FALSE(m_session.bus().hasOwner(item));
}

} // namespace
