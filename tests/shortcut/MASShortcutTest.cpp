#include "shortcut/MASShortcut.h"

#include "foundation/KeyedArchive.h"
#include "foundation/PropertyListCoder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <variant>
#include <vector>

namespace orbel {
namespace {

constexpr std::uint64_t kLetterA = 0;
constexpr std::uint64_t kLetterQ = 12;
constexpr std::uint64_t kLetterW = 13;
constexpr std::uint64_t kF1 = 122;
constexpr std::uint64_t kF5 = 96;
constexpr std::uint64_t kF20 = 90;

class MASShortcutTest : public testing::Test {
protected:
  ~MASShortcutTest() override { MASShortcut::setAllowsAnyHotkeyWithOptionModifier(false); }

  std::string keyText(std::uint64_t keyCode) { return MASShortcut(keyCode, 0).keyCodeString(); }
  std::string equivalent(std::uint64_t keyCode) {
    return MASShortcut(keyCode, 0).keyCodeStringForKeyEquivalent();
  }

  FakePlatform m_platform;
};

TEST_F(MASShortcutTest, FlagsOfCapsLockFunctionAndSingleSidesAreDropped) {
  constexpr std::uint64_t kCapsLock = 0x10000;
  constexpr std::uint64_t kFunction = 0x800000;
  constexpr std::uint64_t kLeftCommand = 0x8;
  MASShortcut shortcut(kLetterA, kShiftFlag | kCommandFlag | kCapsLock | kFunction | kLeftCommand);
  EXPECT_EQ(shortcut.modifierFlags(), 0x120000u);
  shortcut.setModifierFlags(~std::uint64_t{0});
  EXPECT_EQ(shortcut.modifierFlags(), 0x1E0000u);
  EXPECT_EQ(MASShortcut::shortcutWithKeyCode(kLetterA, kCapsLock).modifierFlags(), 0u);
  EXPECT_EQ(MASShortcut::shortcutWithEvent({kLetterA, kFunction | kOptionFlag}).modifierFlags(), 0x80000u);
}

TEST_F(MASShortcutTest, KeyCodesAreKeptAsGiven) {
  EXPECT_EQ(MASShortcut::shortcutWithKeyCode(0x12345678, 0).keyCode(), 0x12345678u);
  MASShortcut shortcut(kLetterA, 0);
  shortcut.setKeyCode(kNoKeyCode);
  EXPECT_EQ(shortcut.keyCode(), kNoKeyCode);
}

TEST_F(MASShortcutTest, OnlyTheLowSixteenBitsOfAnEventsKeyCodeCount) {
  EXPECT_EQ(MASShortcut::shortcutWithEvent({0xABC0031, kControlFlag}), MASShortcut(0x31, kControlFlag));
}

TEST_F(MASShortcutTest, EachModifierHasItsBitOfTheHotKeyInterface) {
  EXPECT_EQ(MASShortcut(kLetterA, kShiftFlag).carbonFlags(), 512u);
  EXPECT_EQ(MASShortcut(kLetterA, kControlFlag).carbonFlags(), 4096u);
  EXPECT_EQ(MASShortcut(kLetterA, kOptionFlag).carbonFlags(), 2048u);
  EXPECT_EQ(MASShortcut(kLetterA, kCommandFlag).carbonFlags(), 256u);
  EXPECT_EQ(MASShortcut(kLetterA, kAllModifierFlags).carbonFlags(), 6912u);
  EXPECT_EQ(MASShortcut(kLetterA, 0).carbonFlags(), 0u);
}

TEST_F(MASShortcutTest, NoKeyIsKeyCodeZeroForTheHotKeyInterface) {
  EXPECT_EQ(MASShortcut(kNoKeyCode, kCommandFlag).carbonKeyCode(), 0u);
  EXPECT_EQ(MASShortcut(kF5, 0).carbonKeyCode(), kF5);
}

TEST_F(MASShortcutTest, ModifierGlyphsComeInTheOrderControlOptionShiftCommand) {
  EXPECT_EQ(MASShortcut(kLetterA, 0).modifierFlagsString(), "");
  EXPECT_EQ(MASShortcut(kLetterA, kShiftFlag).modifierFlagsString(), "\u21E7");
  EXPECT_EQ(MASShortcut(kLetterA, kControlFlag).modifierFlagsString(), "\u2303");
  EXPECT_EQ(MASShortcut(kLetterA, kOptionFlag).modifierFlagsString(), "\u2325");
  EXPECT_EQ(MASShortcut(kLetterA, kCommandFlag).modifierFlagsString(), "\u2318");
  EXPECT_EQ(MASShortcut(kLetterA, kAllModifierFlags).modifierFlagsString(), "\u2303\u2325\u21E7\u2318");
}

TEST_F(MASShortcutTest, TheDescriptionIsTheGlyphsFollowedByTheKey) {
  EXPECT_EQ(MASShortcut(kF1, kAllModifierFlags).description(), "\u2303\u2325\u21E7\u2318F1");
  EXPECT_EQ(MASShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag).description(), "\u2325\u2318Space");
  EXPECT_EQ(MASShortcut(kNoKeyCode, kOptionFlag).description(), "\u2325");
}

TEST_F(MASShortcutTest, SpaceIsShownInTheUsersLanguage) {
  m_platform.text.translations["Space"] = "Leertaste";
  EXPECT_EQ(keyText(kSpaceKeyCode), "Leertaste");
}

TEST_F(MASShortcutTest, FixedTextsDoNotAskTheKeyboardLayout) {
  m_platform.keyboardLayout.texts[78] = "-";
  EXPECT_EQ(keyText(78), "\u2013");
}

TEST_F(MASShortcutTest, OtherKeysShowWhatTheLayoutYieldsUpperCased) {
  m_platform.keyboardLayout.texts[27] = "-";
  m_platform.keyboardLayout.texts[kF20] = "x";
  EXPECT_EQ(keyText(kLetterA), "A");
  EXPECT_EQ(keyText(27), "-");
  EXPECT_EQ(keyText(kF20), "X");
}

TEST_F(MASShortcutTest, AKeyIsWithoutTextWhenTheLayoutYieldsNothingOrWhatCannotBeShown) {
  m_platform.keyboardLayout.texts[40] = "";
  m_platform.keyboardLayout.texts[41] = "\x1b";
  m_platform.keyboardLayout.texts[42] = "a ";
  EXPECT_EQ(keyText(39), "");
  EXPECT_EQ(keyText(40), "");
  EXPECT_EQ(keyText(41), "");
  EXPECT_EQ(keyText(42), "");
  EXPECT_EQ(keyText(kNoKeyCode), "");
}

TEST_F(MASShortcutTest, ASingleCharacterIsAKeyEquivalentInLowerCase) {
  m_platform.keyboardLayout.texts[50] = "\u00E9";
  EXPECT_EQ(equivalent(kLetterA), "a");
  EXPECT_EQ(equivalent(50), "\u00E9");
  EXPECT_EQ(equivalent(123), "\u2190");
  EXPECT_EQ(equivalent(89), "7");
}

TEST_F(MASShortcutTest, SpaceAndTheFunctionKeysHaveKeyEquivalentsOfTheirOwn) {
  EXPECT_EQ(equivalent(kSpaceKeyCode), " ");
  EXPECT_EQ(equivalent(kF1), "\uF704");
  EXPECT_EQ(equivalent(120), "\uF705");
  EXPECT_EQ(equivalent(80), "\uF716");
}

TEST_F(MASShortcutTest, LongerTextsOfOtherKeysAndNoTextAreNoKeyEquivalent) {
  m_platform.keyboardLayout.texts[50] = "fn";
  EXPECT_EQ(equivalent(50), "");
  EXPECT_EQ(equivalent(39), "");
  EXPECT_EQ(equivalent(kNoKeyCode), "");
}

TEST_F(MASShortcutTest, FunctionKeysAreValidWithAnyModifiersAndWithNone) {
  for (const std::uint64_t key : {122u, 120u, 99u,  118u, 96u,  97u,  98u, 100u, 101u, 109u,
                                  103u, 111u, 105u, 107u, 113u, 106u, 64u, 79u,  80u,  90u}) {
    EXPECT_TRUE(MASShortcut(key, 0).isValid()) << key;
    EXPECT_TRUE(MASShortcut(key, kShiftFlag).isValid()) << key;
    EXPECT_TRUE(MASShortcut(key, kOptionFlag).isValid()) << key;
  }
}

TEST_F(MASShortcutTest, OtherKeysAreInvalidWithoutModifiersAndWithShiftAlone) {
  for (const std::uint64_t key : {kLetterA, kSpaceKeyCode, kEscapeKeyCode, kNoKeyCode}) {
    EXPECT_FALSE(MASShortcut(key, 0).isValid());
    EXPECT_FALSE(MASShortcut(key, kShiftFlag).isValid());
  }
}

TEST_F(MASShortcutTest, CommandOrControlMakesAnyKeyValid) {
  EXPECT_TRUE(MASShortcut(kLetterA, kCommandFlag).isValid());
  EXPECT_TRUE(MASShortcut(kLetterA, kControlFlag).isValid());
  EXPECT_TRUE(MASShortcut(kLetterA, kControlFlag | kShiftFlag | kOptionFlag).isValid());
}

TEST_F(MASShortcutTest, OptionAloneIsValidForSpaceAndEscapeOnly) {
  EXPECT_TRUE(MASShortcut(kSpaceKeyCode, kOptionFlag).isValid());
  EXPECT_TRUE(MASShortcut(kEscapeKeyCode, kOptionFlag).isValid());
  EXPECT_TRUE(MASShortcut(kSpaceKeyCode, kOptionFlag | kShiftFlag).isValid());
  EXPECT_FALSE(MASShortcut(kLetterA, kOptionFlag).isValid());
  EXPECT_FALSE(MASShortcut(kLetterA, kOptionFlag | kShiftFlag).isValid());
}

TEST_F(MASShortcutTest, OptionAloneIsValidForAnyKeyWhereThatIsAllowed) {
  EXPECT_FALSE(MASShortcut::allowsAnyHotkeyWithOptionModifier());
  MASShortcut::setAllowsAnyHotkeyWithOptionModifier(true);
  EXPECT_TRUE(MASShortcut::allowsAnyHotkeyWithOptionModifier());
  EXPECT_TRUE(MASShortcut(kLetterA, kOptionFlag).isValid());
  EXPECT_TRUE(MASShortcut(kLetterA, kOptionFlag | kShiftFlag).isValid());
  EXPECT_FALSE(MASShortcut(kLetterA, kShiftFlag).isValid());
  EXPECT_FALSE(MASShortcut(kLetterA, 0).isValid());
}

TEST_F(MASShortcutTest, OnlyCommandWithWOrQIsLetThrough) {
  EXPECT_TRUE(MASShortcut(kLetterW, kCommandFlag).shouldBypass());
  EXPECT_TRUE(MASShortcut(kLetterQ, kCommandFlag).shouldBypass());
  EXPECT_FALSE(MASShortcut(kLetterA, kCommandFlag).shouldBypass());
  EXPECT_FALSE(MASShortcut(kLetterQ, kCommandFlag | kShiftFlag).shouldBypass());
  EXPECT_FALSE(MASShortcut(kLetterQ, kControlFlag).shouldBypass());
  EXPECT_FALSE(MASShortcut(kLetterQ, 0).shouldBypass());
}

TEST_F(MASShortcutTest, TheLettersThatAreLetThroughFollowTheKeyboardLayout) {
  m_platform.keyboardLayout.texts[6] = "w"; // as on a layout that exchanges W and Z
  m_platform.keyboardLayout.texts[kLetterW] = "z";
  EXPECT_TRUE(MASShortcut(6, kCommandFlag).shouldBypass());
  EXPECT_FALSE(MASShortcut(kLetterW, kCommandFlag).shouldBypass());
}

TEST_F(MASShortcutTest, AnArchiveHoldsKeyCodeAndModifierFlags) {
  const auto object = KeyedArchive::unarchive(MASShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag).data());
  ASSERT_TRUE(object);
  EXPECT_EQ(*object, (KeyedArchive::Object{"MASShortcut", {{"KeyCode", 49}, {"ModifierFlags", 0x180000}}}));
}

TEST_F(MASShortcutTest, ShortcutsComeBackFromTheirData) {
  for (const MASShortcut& shortcut : {MASShortcut(kF5, 0), MASShortcut(kLetterA, kAllModifierFlags),
                                      MASShortcut(kNoKeyCode, kShiftFlag), MASShortcut(kNoKeyCode - 1, 0)}) {
    const PropertyList::Data data = shortcut.data();
    EXPECT_EQ(MASShortcut::shortcutWithData(&data), shortcut);
  }
}

TEST_F(MASShortcutTest, NoKeyIsArchivedAsMinusOneAndReadBackAsNoKey) {
  const PropertyList::Data data = MASShortcut(kNoKeyCode, kCommandFlag).data();
  const auto object = KeyedArchive::unarchive(data);
  ASSERT_TRUE(object && *object);
  EXPECT_EQ((*object)->fields.at("KeyCode"), -1);
  EXPECT_EQ(MASShortcut::shortcutWithData(&data)->keyCode(), kNoKeyCode);
}

TEST_F(MASShortcutTest, AnyNegativeKeyCodeIsReadAsNoKey) {
  const auto data = KeyedArchive::archive(KeyedArchive::Object{
      "MASShortcut", {{"KeyCode", std::numeric_limits<std::int64_t>::min()}, {"ModifierFlags", 0}}});
  EXPECT_EQ(MASShortcut::shortcutWithData(&data), MASShortcut(kNoKeyCode, 0));
}

TEST_F(MASShortcutTest, ArchivedFlagsAreMaskedWhateverTheyAre) {
  const auto data =
      KeyedArchive::archive(KeyedArchive::Object{"MASShortcut", {{"KeyCode", 49}, {"ModifierFlags", -1}}});
  EXPECT_EQ(MASShortcut::shortcutWithData(&data), MASShortcut(49, kAllModifierFlags));
  const auto withoutFlags = KeyedArchive::archive(KeyedArchive::Object{"MASShortcut", {{"KeyCode", 96}}});
  EXPECT_EQ(MASShortcut::shortcutWithData(&withoutFlags), MASShortcut(kF5, 0));
}

TEST_F(MASShortcutTest, NoDataAndAnArchiveOfNothingAreNoShortcut) {
  EXPECT_EQ(MASShortcut::shortcutWithData(nullptr), std::nullopt);
  const PropertyList::Data nothing = MASShortcut::dataOfNothing();
  const auto object = KeyedArchive::unarchive(nothing);
  ASSERT_TRUE(object);
  EXPECT_EQ(*object, std::nullopt);
  EXPECT_EQ(MASShortcut::shortcutWithData(&nothing), std::nullopt);
  EXPECT_TRUE(m_platform.logged.empty());
}

TEST_F(MASShortcutTest, DataThatIsNoArchivedShortcutIsRefusedWithALogLine) {
  const PropertyList::Dictionary plain = {{"KeyCode", 49}, {"ModifierFlags", 0}};
  const std::vector<PropertyList::Data> refused = {
      {},
      {std::byte{0x62}, std::byte{0x70}, std::byte{0x6c}},
      PropertyList::Data(5000, std::byte{0xFF}),
      PropertyListCoder::write(plain, PropertyListCoder::Format::binary),
      KeyedArchive::archive(KeyedArchive::Object{"NSColor", {{"KeyCode", 49}}}),
      KeyedArchive::archive(KeyedArchive::Object{"MASShortcut", {{"ModifierFlags", 0x100000}}}),
  };
  for (std::size_t index = 0; index < refused.size(); ++index) {
    EXPECT_EQ(MASShortcut::shortcutWithData(&refused[index]), std::nullopt) << index;
    EXPECT_EQ(m_platform.logged.size(), index + 1) << index;
  }
}

} // namespace
} // namespace orbel
