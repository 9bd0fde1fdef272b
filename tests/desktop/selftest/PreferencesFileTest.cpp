#include "tests/desktop/harness/PreferencesFile.h"

#include "tests/support/base/TemporaryDirectory.h"

#include <gtest/gtest.h>

using namespace orbel::test;

namespace {

class PreferencesFileTest : public testing::Test {
protected:
  TemporaryDirectory m_folder{"orbel-preferences"};
  PreferencesFile m_file{m_folder.path() / "orbelmenu/preferences.plist"};
};

TEST_F(PreferencesFileTest, ReadsBackValuesOfEveryTypeAndKeepsTheOthersOnAChange) {
  m_file.setInteger("menuSizeSettings", 3);
  m_file.setInteger("negative", -1);
  m_file.setBoolean("swiftMode", true);
  m_file.setString("text", "Ünï & <cödé>");
  m_file.setData("bytes", std::string("a\0b", 3));
  EXPECT_EQ(m_file.integer("menuSizeSettings"), 3);
  EXPECT_EQ(m_file.integer("negative"), -1);
  EXPECT_EQ(m_file.boolean("swiftMode"), true);
  EXPECT_EQ(m_file.string("text"), "Ünï & <cödé>");
  EXPECT_EQ(m_file.data("bytes"), std::string("a\0b", 3));
  EXPECT_TRUE(m_file.bytes().starts_with("<?xml"));

  m_file.remove("swiftMode");
  EXPECT_FALSE(m_file.contains("swiftMode"));
  EXPECT_EQ(m_file.integer("menuSizeSettings"), 3);
}

TEST_F(PreferencesFileTest, YieldsNothingForAbsentKeysOtherTypesAndABrokenFile) {
  EXPECT_EQ(m_file.integer("menuSizeSettings"), std::nullopt);
  m_file.setString("menuSizeSettings", "3");
  EXPECT_EQ(m_file.integer("menuSizeSettings"), std::nullopt);
  m_file.writeBytes("<plist><dict>");
  EXPECT_EQ(m_file.string("menuSizeSettings"), std::nullopt);
  EXPECT_EQ(m_file.menuItems(), std::nullopt);
  EXPECT_THROW(m_file.setInteger("menuSizeSettings", 1), std::runtime_error);
}

TEST_F(PreferencesFileTest, StoresAShortcutAsAKeyedArchive) {
  const StoredShortcut shortcut{kSpaceKeyCode, kControlFlag | kOptionFlag};
  m_file.setShortcut(shortcut);
  EXPECT_EQ(m_file.shortcut(), shortcut);

  const PropertyListNode archive = PropertyListNode::parse(m_file.data("GlobalShortcut").value_or(""));
  EXPECT_TRUE(m_file.data("GlobalShortcut")->starts_with("bplist00"));
  EXPECT_EQ(stringIn(valueIn(archive.get(), "$archiver")), "NSKeyedArchiver");
  EXPECT_EQ(integerIn(valueIn(archive.get(), "$version")), 100000);
  EXPECT_EQ(stringIn(elementIn(valueIn(archive.get(), "$objects"), 0)), "$null");

  m_file.setData("GlobalShortcut", StoredShortcut::archivedNothing());
  EXPECT_EQ(m_file.shortcut(), std::nullopt);
}

TEST_F(PreferencesFileTest, StoresItemsWithBookmarksAndMembers) {
  const std::vector<StoredItem> items{
      StoredItem::core("Finder"), StoredItem::file("Notes", "/home/a/notes.txt"),
      StoredItem::collection("Tools", {StoredItem::application("Edit", "/x/edit.desktop")})};
  m_file.setMenuItems(items);
  EXPECT_EQ(m_file.menuItems(), items);
}

} // namespace
