// What other programs and a second start can ask the running program for.
#include "tests/desktop/menu/MenuFixture.h"

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};

class CommandsTest : public MenuFixture {
protected:
  RunResult askFor(const std::string& action) {
    return m_session.run({"gapplication", "action", OrbelAgent::kBusName, action});
  }
};

TEST_F(CommandsTest, ADesktopsKeyCanShowAndHideTheMenuAndQuitTheProgram) {
  startAgent();
  m_input.movePointer(kPlace);
  EXPECT_EQ(askFor("show").exitStatus, 0);
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  EXPECT_EQ(askFor("hide").exitStatus, 0);
  ASSERT_TRUE(waitUntilMenuHidden());
  // With the pointer over it the same key hides the menu again, as the shortcut does.
  EXPECT_EQ(askFor("show").exitStatus, 0);
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  EXPECT_EQ(askFor("show").exitStatus, 0);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_NE(askFor("dance").exitStatus, 0);

  EXPECT_EQ(askFor("show").exitStatus, 0);
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  EXPECT_EQ(askFor("quit").exitStatus, 0);
  EXPECT_TRUE(agent().process().waitForExit(kPatience));
  EXPECT_EQ(agent().process().exitStatus(), 0);
  EXPECT_FALSE(m_session.bus().hasOwner(OrbelAgent::kBusName));
  startAgentAlone();
}

TEST_F(CommandsTest, ASecondStartEndsInOrderAndLeavesTheFirstAlone) {
  startAgent();
  const RunResult second = m_session.run({OrbelAgent::executable()});
  EXPECT_EQ(second.exitStatus, 0) << second.errors;
  EXPECT_NE(second.errors.find("running already"), std::string::npos) << second.errors;
  EXPECT_EQ(m_session.bus().processOf(OrbelAgent::kBusName), agent().pid());
  EXPECT_TRUE(summonAt(kPlace));
}

} // namespace
