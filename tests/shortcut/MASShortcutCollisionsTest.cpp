#include "shortcut/MASShortcut.h"

#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel {
namespace {

constexpr std::uint64_t kLetterA = 0;
constexpr std::uint64_t kLetterQ = 12;
constexpr std::uint64_t kCapsLock = 0x10000;

class MASShortcutCollisionsTest : public testing::Test {
protected:
  static bool isTaken(const ShortcutMenu& menu, std::string_view key, std::uint64_t flags) {
    return MASShortcut::isKeyEquivalentTakenInMenu(key, flags, menu).has_value();
  }

  FakePlatform m_platform;
};

TEST_F(MASShortcutCollisionsTest, AFreeCombinationIsNotTaken) {
  EXPECT_EQ(MASShortcut(kLetterA, kCommandFlag).isTaken(), std::nullopt);
}

TEST_F(MASShortcutCollisionsTest, ACombinationOfAnotherProgramIsTakenWithTheSystemsReason) {
  m_platform.hotKeys.takenByOthers.insert({kLetterA, kHotKeyCommand});
  EXPECT_EQ(MASShortcut(kLetterA, kCommandFlag).isTaken(),
            "This combination cannot be used because it is already used by a system-wide keyboard shortcut.\n"
            "If you really want to use this key combination, most shortcuts can be changed in the Keyboard & "
            "Mouse panel in System Preferences.");
}

TEST_F(MASShortcutCollisionsTest, WhereTheSystemDoesNotTellACombinationIsNotTaken) {
  m_platform.hotKeys.takenByOthers.insert({kLetterA, kHotKeyCommand});
  m_platform.hotKeys.tellsWhatIsTaken = false;
  EXPECT_EQ(MASShortcut(kLetterA, kCommandFlag).isTaken(), std::nullopt);
}

TEST_F(MASShortcutCollisionsTest, TheSystemsCombinationMustHaveTheSameKeyAndTheSameModifiers) {
  m_platform.hotKeys.takenByOthers.insert({kLetterA, kHotKeyCommand});
  EXPECT_FALSE(MASShortcut(kLetterA, kCommandFlag | kShiftFlag).isTaken());
  EXPECT_FALSE(MASShortcut(kLetterQ, kCommandFlag).isTaken());
}

TEST_F(MASShortcutCollisionsTest, ACombinationOfTheProgramsMenuIsTakenWithTheItemsTitle) {
  MASShortcut::setMainMenu({{"Quit", "q", kCommandFlag, {}}});
  EXPECT_EQ(MASShortcut(kLetterQ, kCommandFlag).isTaken(),
            "This shortcut cannot be used because it is already used by the menu item \u2018Quit\u2019.");
  EXPECT_FALSE(MASShortcut(kLetterA, kCommandFlag).isTaken());
}

TEST_F(MASShortcutCollisionsTest, TheSystemIsAskedBeforeTheMenu) {
  MASShortcut::setMainMenu({{"Quit", "q", kCommandFlag, {}}});
  m_platform.hotKeys.takenByOthers.insert({kLetterQ, kHotKeyCommand});
  const auto reason = MASShortcut(kLetterQ, kCommandFlag).isTaken();
  ASSERT_TRUE(reason);
  EXPECT_NE(reason->find("system-wide"), std::string::npos);
}

TEST_F(MASShortcutCollisionsTest, SpaceAndFunctionKeysCollideThroughTheirKeyEquivalents) {
  MASShortcut::setMainMenu({{"Preview", " ", kOptionFlag, {}}, {"Help", "\uF704", 0, {}}});
  EXPECT_TRUE(MASShortcut(kSpaceKeyCode, kOptionFlag).isTaken());
  EXPECT_TRUE(MASShortcut(122, 0).isTaken());
  EXPECT_FALSE(MASShortcut(120, 0).isTaken());
}

TEST_F(MASShortcutCollisionsTest, ALowerCaseKeyEquivalentCollidesWithExactlyItsModifiers) {
  const ShortcutMenu menu = {{"Quit", "q", kCommandFlag, {}}};
  EXPECT_TRUE(isTaken(menu, "q", kCommandFlag));
  EXPECT_FALSE(isTaken(menu, "q", kCommandFlag | kShiftFlag));
  EXPECT_FALSE(isTaken(menu, "q", 0));
  EXPECT_FALSE(isTaken(menu, "w", kCommandFlag));
}

TEST_F(MASShortcutCollisionsTest, AnUpperCaseKeyEquivalentImpliesShift) {
  const ShortcutMenu menu = {{"Quit", "Q", kCommandFlag, {}}};
  EXPECT_TRUE(isTaken(menu, "q", kCommandFlag | kShiftFlag));
  EXPECT_FALSE(isTaken(menu, "q", kCommandFlag));
  const ShortcutMenu withShift = {{"Quit", "Q", kCommandFlag | kShiftFlag, {}}};
  EXPECT_TRUE(isTaken(withShift, "q", kCommandFlag | kShiftFlag));
}

TEST_F(MASShortcutCollisionsTest, OtherBitsOfAMenuItemsMaskDoNotCount) {
  EXPECT_TRUE(isTaken({{"Quit", "q", kCommandFlag | kCapsLock, {}}}, "q", kCommandFlag));
  EXPECT_TRUE(isTaken({{"Quit", "Q", kCommandFlag | kCapsLock, {}}}, "q", kCommandFlag | kShiftFlag));
}

TEST_F(MASShortcutCollisionsTest, SubmenusAreSearchedAtAnyDepthAndBeforeTheirItem) {
  const ShortcutMenu menu = {
      {"File",
       "n",
       kCommandFlag,
       {{"New", "", 0, {{"Window", "n", kCommandFlag, {}}}}, {"Tab", "n", kCommandFlag, {}}}},
      {"Last", "n", kCommandFlag, {}}};
  const auto reason = MASShortcut::isKeyEquivalentTakenInMenu("n", kCommandFlag, menu);
  ASSERT_TRUE(reason);
  EXPECT_NE(reason->find("\u2018Window\u2019"), std::string::npos) << *reason;
}

TEST_F(MASShortcutCollisionsTest, AnItemIsStillComparedWhenItsSubmenuHoldsNoCollision) {
  const ShortcutMenu menu = {{"File", "n", kCommandFlag, {{"Open", "o", kCommandFlag, {}}}}};
  const auto reason = MASShortcut::isKeyEquivalentTakenInMenu("n", kCommandFlag, menu);
  ASSERT_TRUE(reason);
  EXPECT_NE(reason->find("\u2018File\u2019"), std::string::npos) << *reason;
}

TEST_F(MASShortcutCollisionsTest, AnEmptyMenuTakesNothing) {
  EXPECT_FALSE(isTaken({}, "q", kCommandFlag));
}

TEST_F(MASShortcutCollisionsTest, TheReasonsAreToldInTheUsersLanguage) {
  m_platform.text.translations
      ["This shortcut cannot be used because it is already used by the menu item \u2018%@\u2019."] =
      "Belegt durch %@!";
  EXPECT_EQ(MASShortcut::isKeyEquivalentTakenInMenu("q", 0, {{"100 %@", "q", 0, {}}}),
            "Belegt durch 100 %@!");
}

} // namespace
} // namespace orbel
