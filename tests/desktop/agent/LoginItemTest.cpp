// "Launch at login" of the real program and the entry in the autostart folder.
#include "tests/desktop/agent/AgentFixture.h"

#include "tests/support/base/TextFile.h"

using namespace orbel::test;

namespace {

class LoginItemTest : public AgentFixture {
protected:
  std::filesystem::path folder() const { return m_session.configurationFolder() / "autostart"; }
  std::filesystem::path entry() const { return folder() / "org.orbelmenu.OrbelMenu.desktop"; }
  void toggle() { m_input.typeCombination({XK_Alt_L, XK_l}); }
  testing::AssertionResult waitUntilStored(bool launch) {
    return waitFor([&] { return m_session.preferences().boolean("launchAtLogin") == launch; },
                   "the setting is stored");
  }
};

TEST_F(LoginItemTest, TheCheckBoxWritesAndRemovesTheEntry) {
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  toggle();
  ASSERT_TRUE(waitUntilStored(true));
  const std::string text = readFile(entry());
  EXPECT_NE(text.find("Exec=" + OrbelAgent::executable() + "\n"), std::string::npos) << text;
  toggle();
  ASSERT_TRUE(waitUntilStored(false));
  EXPECT_FALSE(std::filesystem::exists(entry()));
}

TEST_F(LoginItemTest, WhereTheFolderCannotBeWrittenTheSettingIsOffAndTheAlertShows) {
  writeFile(folder(), "a file where the folder belongs");
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  toggle();
  ASSERT_TRUE(waitForOwnWindows(2));
  EXPECT_TRUE(waitForLog("cannot be started at login"));
  EXPECT_NE(m_session.preferences().boolean("launchAtLogin"), true);
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForSettings());
  EXPECT_EQ(readFile(folder()), "a file where the folder belongs");
  // The box is off again: the next try asks for the same once more.
  toggle();
  EXPECT_TRUE(waitForOwnWindows(2));
  m_input.typeKey(XK_Return);
  EXPECT_TRUE(waitForSettings());
}

TEST_F(LoginItemTest, AnEntryThatIsRemovedFromOutsideTurnsTheSettingOff) {
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  toggle();
  ASSERT_TRUE(waitUntilStored(true));
  std::filesystem::remove(entry());
  EXPECT_TRUE(waitUntilStored(false));
}

TEST_F(LoginItemTest, AnEntryThatIsRemovedBetweenTwoStartsTurnsTheSettingOff) {
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  toggle();
  ASSERT_TRUE(waitUntilStored(true));
  quitAgent();
  std::filesystem::remove(entry());
  startAgentAlone();
  EXPECT_TRUE(waitUntilStored(false));
  EXPECT_FALSE(std::filesystem::exists(entry()));
}

TEST_F(LoginItemTest, PreferencesFromAnotherMachineRegisterTheProgramHere) {
  m_session.preferences().setBoolean("launchAtLogin", true);
  startAgentAlone();
  EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(entry()); }, "the entry is written"));
  EXPECT_EQ(m_session.preferences().boolean("launchAtLogin"), true);
}

TEST_F(LoginItemTest, AnEntryThatIsAddedFromOutsideTurnsTheSettingOnThoughTheFolderWasMissing) {
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  ASSERT_FALSE(std::filesystem::exists(folder()));
  std::filesystem::create_directories(folder());
  writeFile(entry(), "[Desktop Entry]\nType=Application\nName=Menu\nExec=" + OrbelAgent::executable() + "\n");
  EXPECT_TRUE(waitUntilStored(true));
}

TEST_F(LoginItemTest, AnEntryThatTheDesktopSwitchedOffBetweenTwoStartsTurnsTheSettingOff) {
  startAgentAlone();
  ASSERT_TRUE(openSettings());
  toggle();
  ASSERT_TRUE(waitUntilStored(true));
  quitAgent();
  writeFile(entry(), readFile(entry()) + "Hidden=true\n");
  startAgentAlone();
  EXPECT_TRUE(waitUntilStored(false));
  EXPECT_TRUE(std::filesystem::exists(entry())) << "what the desktop wrote stays";
}

} // namespace
