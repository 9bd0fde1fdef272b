// Preferences files that are broken, hostile, out of reach or half understood: the menu works all the same,
// the log says what happened, and nothing of the user's is lost.
#include "tests/desktop/menu/MenuFixture.h"

#include "tests/support/base/TextFile.h"

#include <cstdlib>
#include <functional>
#include <ostream>
#include <unistd.h>

#include <X11/keysym.h>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};

struct BadFile {
  std::string name;
  std::function<std::string()> bytes;

  friend std::ostream& operator<<(std::ostream& stream, const BadFile& file) { return stream << file.name; }
};

std::string goodFile() {
  return PropertyListNode::dictionary()
      .with("GlobalShortcut", PropertyListNode::data(kControlAltSpace.archived()))
      .with("menuItems", StoredItem::list(builtInItems()))
      .serialized(PropertyListFormat::xml);
}

std::string repeated(const std::string& text, int count) {
  std::string result;
  for (int index = 0; index < count; ++index)
    result += text;
  return result;
}

// A list of two references to a list of two references, and so on: small to store, endless to read.
std::string doublingReferences() {
  constexpr char kLevels = 60;
  std::string bytes = "bplist00";
  std::string offsets;
  for (char level = 0; level < kLevels; ++level) {
    offsets += static_cast<char>(bytes.size());
    const char next = static_cast<char>(level + 1);
    bytes += {'\xA2', next, next};
  }
  offsets += static_cast<char>(bytes.size());
  bytes += '\x08'; // false
  const char table = static_cast<char>(bytes.size());
  bytes += offsets;
  bytes += std::string(6, '\0') + '\x01' + '\x01';
  bytes += std::string(7, '\0') + static_cast<char>(kLevels + 1);
  bytes += std::string(8, '\0');
  bytes += std::string(7, '\0') + table;
  return bytes;
}

const std::vector<BadFile>& badFiles() {
  static const std::vector<BadFile> files{
      {"empty", [] { return std::string(); }},
      {"truncated", [] { return goodFile().substr(0, goodFile().size() / 2); }},
      {"no_property_list", [] { return std::string("[menu]\nitems = 6\n"); }},
      {"no_dictionary", [] { return PropertyListNode::string("menu").serialized(PropertyListFormat::xml); }},
      {"a_million_levels_deep",
       [] { return "<plist version=\"1.0\">" + repeated("<array>", 1'000'000) + "</plist>"; }},
      {"doubling_references", doublingReferences},
  };
  return files;
}

class PreferencesTest : public MenuFixture {
protected:
  // Without the shortcut, as the settings of a desktop would call it.
  testing::AssertionResult showByAction() {
    m_input.movePointer(kPlace);
    if (const auto result = agent().activateAction("show"); !result) return result;
    return waitUntilMenuShown(kPlace);
  }
  std::filesystem::path file() { return m_session.preferences().path(); }
  testing::AssertionResult closeSettings() {
    const auto hasFocus = [&] {
      const auto focused = m_windows.focusWindow();
      return focused && m_windows.processOf(*focused) == agent().pid();
    };
    if (const auto shown = waitFor(hasFocus, "the settings are shown"); !shown) return shown;
    m_input.typeKey(XK_Escape);
    return waitFor([&] { return !hasFocus(); }, "the settings are closed");
  }
};

class BadPreferencesTest : public PreferencesTest, public testing::WithParamInterface<BadFile> {};

TEST_P(BadPreferencesTest, AreKeptAsideAndTheMenuStartsAfresh) {
  const std::string bad = GetParam().bytes();
  m_session.preferences().writeBytes(bad);
  startAgentAlone();
  EXPECT_TRUE(waitForLog("cannot be read"));
  const auto aside = filesBeside(file(), "preferences.plist.unreadable-");
  ASSERT_EQ(aside.size(), 1U);
  EXPECT_EQ(readFile(aside.front()), bad);
  ASSERT_TRUE(closeSettings()); // with nothing left of the store this is a first launch

  m_session.preferences().setShortcut(kControlAltSpace);
  m_input.movePointer(kPlace);
  const auto pressed = [&] {
    if (!menuWindow()) pressShortcut();
    return menuWindow().has_value();
  };
  ASSERT_TRUE(waitFor(pressed, "the shortcut works"));
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  // The six default items are there: no slot of a ring of six shows the disc alone.
  const auto menu = menuFrame().value();
  const Rgb disc = m_session.screen().pixel({menu.center().x + 40, menu.center().y});
  for (int index = 0; index < 6; ++index) {
    const Rgb icon = m_session.screen().pixel(itemCenter(menu, index, 6));
    EXPECT_GT(difference(icon, disc), 20) << "item " << index;
  }
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
}

INSTANTIATE_TEST_SUITE_P(Files, BadPreferencesTest, testing::ValuesIn(badFiles()),
                         [](const auto& instance) { return instance.param.name; });

TEST_F(PreferencesTest, TheLastGoodCopyStandsInForAFileThatWentBadWhileTheProgramWasAway) {
  startAgent({StoredItem::core("Mail")});
  quitAgent();
  m_session.preferences().writeBytes(goodFile().substr(0, 100));
  startAgentAlone();
  EXPECT_TRUE(waitForLog("start from their last good copy"));
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_EQ(m_session.preferences().menuItems(), std::vector{StoredItem::core("Mail")});
}

TEST_F(PreferencesTest, AFileThatGoesBadUnderTheRunningProgramLosesNothing) {
  startAgent({StoredItem::core("Mail")});
  m_session.preferences().writeBytes("nonsense");
  EXPECT_TRUE(waitForLog("cannot be read"));
  EXPECT_TRUE(
      waitFor([&] { return m_session.preferences().bytes() != "nonsense"; }, "the file is good again"));
  EXPECT_EQ(m_session.preferences().menuItems(), std::vector{StoredItem::core("Mail")});
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_EQ(filesBeside(file(), "preferences.plist.unreadable-").size(), 1U);
  EXPECT_TRUE(summonAt(kPlace));
}

TEST_F(PreferencesTest, ItemsThatCannotBeReadAreDroppedOnlyAfterACopyOfTheFileIsKept) {
  const StoredItem unknown{"HologramMenuItem", "Dream", {}, {}};
  startAgent({StoredItem::core("Mail"), unknown, StoredItem::core("Safari")});
  const std::string before = m_session.preferences().bytes();
  ASSERT_TRUE(summonAt(kPlace));
  const std::vector expected{StoredItem::core("Mail"), StoredItem::core("Safari")};
  EXPECT_TRUE(
      waitFor([&] { return m_session.preferences().menuItems() == expected; }, "the list is rewritten"));
  const auto copies = filesBeside(file(), "preferences-");
  ASSERT_EQ(copies.size(), 1U);
  EXPECT_EQ(readFile(copies.front()), before);
}

// Root may read and write everything, so there the program runs without that privilege.
class PermissionTest : public PreferencesTest {
protected:
  void SetUp() override {
    std::filesystem::create_directories(file().parent_path());
    if (::geteuid() != 0) return;
    m_executable = OrbelAgent::executable();
    const auto wrapper = m_session.home() / "unprivileged";
    writeFile(wrapper, "#!/bin/sh\nexec setpriv --bounding-set=-dac_override,-dac_read_search '" +
                           OrbelAgent::executable() + "'\n");
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    ::setenv("ORBELMENU_EXECUTABLE", wrapper.c_str(), 1);
  }
  void TearDown() override {
    std::filesystem::permissions(file().parent_path(), std::filesystem::perms::owner_all);
    PreferencesTest::TearDown();
    if (m_executable) ::setenv("ORBELMENU_EXECUTABLE", m_executable->c_str(), 1);
  }

private:
  std::optional<std::string> m_executable;
};

TEST_F(PermissionTest, AFileThatMayNotBeReadIsLeftAloneAndReadOnceItMay) {
  m_session.preferences().setShortcut(kControlAltSpace);
  m_session.preferences().setMenuItems({StoredItem::core("Mail")});
  const std::string before = m_session.preferences().bytes();
  std::filesystem::permissions(file(), std::filesystem::perms::none);
  startAgentAlone();
  EXPECT_TRUE(waitForLog("cannot be read"));
  ASSERT_TRUE(showByAction());
  ASSERT_TRUE(agent().activateAction("hide"));
  ASSERT_TRUE(waitUntilMenuHidden());

  std::filesystem::permissions(file(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_EQ(m_session.preferences().bytes(), before);
  const auto pressed = [&] {
    if (!menuWindow()) pressShortcut();
    return menuWindow().has_value();
  };
  EXPECT_TRUE(waitFor(pressed, "the shortcut works"));
  // What the program has set meanwhile is saved with it, after a while and in an order of its own.
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_EQ(m_session.preferences().menuItems(), std::vector<StoredItem>{StoredItem::core("Mail")});
}

TEST_F(PermissionTest, AFolderThatMayNotBeWrittenKeepsTheFileAndTheMenuWorks) {
  m_session.preferences().setShortcut(kControlAltSpace);
  m_session.preferences().setMenuItems({StoredItem::core("Mail"), {"HologramMenuItem", "Dream", {}, {}}});
  const std::string before = m_session.preferences().bytes();
  std::filesystem::permissions(file().parent_path(),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
  startAgentAlone();
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForLog("could not be saved"));
  EXPECT_EQ(m_session.preferences().bytes(), before);
}

} // namespace
