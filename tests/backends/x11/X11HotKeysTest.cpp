#include "backends/x11/X11HotKeys.h"

#include "backends/x11/PassiveKeyGrabs.h"
#include "scene/Event.h"
#include "tests/backends/x11/support/X11Test.h"
#include "tests/support/x11/KeyboardGroup.h"

#include <linux/input-event-codes.h>

namespace orbel::test {
namespace {

constexpr std::uint64_t kSpace = 49;
constexpr std::uint64_t kKeyM = 46;
constexpr std::uint32_t kCommand = kHotKeyCommand;
constexpr std::uint32_t kShift = kHotKeyShift;
constexpr std::uint32_t kOption = kHotKeyOption;
constexpr std::uint32_t kControl = kHotKeyControl;

class X11HotKeysTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    m_connection = connect();
    ASSERT_TRUE(m_connection);
    m_grabs = std::make_unique<x11::PassiveKeyGrabs>(*m_connection);
    m_hotKeys = std::make_unique<x11::X11HotKeys>(*m_grabs);
    m_handler =
        m_hotKeys->installHandler([this](HotKeyIdentity identity) { m_pressed.push_back(identity.number); });
  }
  void TearDown() override {
    m_handler.reset();
    m_hotKeys.reset();
    m_grabs.reset();
    m_connection.reset();
    X11Test::TearDown();
  }

  Registration registerSpace(std::uint32_t modifiers, std::uint32_t number) {
    return registerKey(kSpace, modifiers, {0x4D415353, number});
  }
  Registration registerKey(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity) {
    return m_hotKeys->registerHotKey(keyCode, modifiers, identity, [this](const HotKeyAnswer& answer) {
      ++m_answers;
      m_refusal = answer.cause();
    });
  }
  // Everything that was typed so far has been handled.
  void settle() {
    driver().sync();
    m_connection->drain();
    iterateWhatIsPending();
    m_connection->drain(); // the server has dealt with what came of it
  }
  using Numbers = std::vector<std::uint32_t>;

  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::PassiveKeyGrabs> m_grabs;
  std::unique_ptr<x11::X11HotKeys> m_hotKeys;
  Registration m_handler;
  Numbers m_pressed;
  int m_answers = 0;
  std::string m_refusal; // of the last registration; empty when it was bound
};

TEST_F(X11HotKeysTest, EveryModifierIsItsOwnKey) {
  const auto command = registerSpace(kCommand, 1);
  const auto option = registerSpace(kOption, 2);
  const auto control = registerSpace(kControl, 3);
  const auto shift = registerSpace(kShift, 4);
  const auto all = registerSpace(kCommand | kOption | kControl | kShift, 5);
  driver().tapKeys({KEY_LEFTMETA, KEY_SPACE});
  driver().tapKeys({KEY_RIGHTMETA, KEY_SPACE});
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  driver().tapKeys({KEY_RIGHTCTRL, KEY_SPACE});
  driver().tapKeys({KEY_LEFTSHIFT, KEY_SPACE});
  driver().tapKeys({KEY_LEFTMETA, KEY_LEFTALT, KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_SPACE});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1, 1, 2, 3, 4, 5}); }));
}

TEST_F(X11HotKeysTest, FewerOrMoreModifiersAreAnotherCombination) {
  const auto hotKey = registerSpace(kOption | kShift, 1);
  driver().tapKey(KEY_SPACE);
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  driver().tapKeys({KEY_LEFTALT, KEY_LEFTSHIFT, KEY_LEFTCTRL, KEY_SPACE});
  settle();
  EXPECT_EQ(m_pressed, Numbers());
}

TEST_F(X11HotKeysTest, CapsLockAndNumLockMakeNoDifference) {
  const auto hotKey = registerSpace(kOption, 1);
  Numbers expected;
  // Caps Lock, both, Num Lock.
  for (const std::uint16_t lock : std::vector<std::uint16_t>{KEY_CAPSLOCK, KEY_NUMLOCK, KEY_CAPSLOCK}) {
    driver().tapKey(lock);
    driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
    expected.push_back(1);
    EXPECT_TRUE(iterateUntil([&] { return m_pressed == expected; })) << expected.size();
  }
}

TEST_F(X11HotKeysTest, AHeldKeyIsOnePress) {
  const auto hotKey = registerSpace(kOption, 1);
  int presses = 0;
  const auto counting = m_connection->observeEvents(
      [&](const xcb_generic_event_t& event) { presses += (event.response_type & 0x7F) == XCB_KEY_PRESS; });
  driver().pressKey(KEY_LEFTALT);
  driver().pressKey(KEY_SPACE);
  EXPECT_TRUE(iterateUntil([&] { return presses >= 4; })) << "the keyboard does not repeat";
  driver().releaseKey(KEY_SPACE);
  driver().releaseKey(KEY_LEFTALT);
  settle();
  EXPECT_EQ(m_pressed, Numbers({1}));
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1, 1}); }));
}

TEST_F(X11HotKeysTest, AKeyWhoseReleaseWentElsewhereTriggersTheNextTime) {
  const auto space = registerSpace(kOption, 1);
  const auto letter = registerKey(kKeyM, kOption, {0, 2});
  driver().pressKey(KEY_LEFTALT);
  driver().pressKey(KEY_SPACE);
  driver().pressKey(KEY_M);
  driver().releaseKey(KEY_SPACE); // ends the grab: the release of M is not ours any more
  driver().releaseKey(KEY_M);
  settle();
  EXPECT_EQ(m_pressed, Numbers({1, 2}));
  driver().tapKey(KEY_M);
  driver().releaseKey(KEY_LEFTALT);
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1, 2, 2}); }));
}

TEST_F(X11HotKeysTest, AnEndedRegistrationIsSilentAndFreesTheCombination) {
  auto hotKey = registerSpace(kOption, 1);
  EXPECT_FALSE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1));
  hotKey.reset();
  settle();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  settle();
  EXPECT_EQ(m_pressed, Numbers());
  for (const unsigned locks : {0U, 2U, 16U, 18U})
    EXPECT_TRUE(driver().grabKey(KEY_SPACE, static_cast<std::uint16_t>(XCB_MOD_MASK_1 | locks))) << locks;
}

TEST_F(X11HotKeysTest, EveryAnswerIsGivenWithinTheCall) {
  const auto hotKey = registerSpace(kOption, 1);
  EXPECT_EQ(m_answers, 1);
  EXPECT_EQ(m_refusal, "");
  settle();
  EXPECT_EQ(m_answers, 1);
}

TEST_F(X11HotKeysTest, ACombinationOfAnotherProgramIsRefusedWithItsCause) {
  ASSERT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1));
  EXPECT_EQ(m_hotKeys->isTakenByAnotherProgram(kSpace, kOption), true);
  EXPECT_FALSE(registerSpace(kOption, 1));
  EXPECT_EQ(m_answers, 1);
  EXPECT_EQ(m_refusal, "another program holds Alt+key 57");
  EXPECT_TRUE(log().empty());
}

TEST_F(X11HotKeysTest, OneRefusedLockVariantUndoesTheOthers) {
  ASSERT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1 | XCB_MOD_MASK_LOCK));
  EXPECT_FALSE(registerSpace(kOption, 1));
  settle();
  EXPECT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1));
  EXPECT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1 | XCB_MOD_MASK_2));
}

TEST_F(X11HotKeysTest, ACombinationThatADesktopHoldsByTheInputExtensionIsTakenToo) {
  ASSERT_TRUE(driver().grabKeyByExtension(KEY_SPACE, XCB_MOD_MASK_1));
  EXPECT_EQ(m_hotKeys->isTakenByAnotherProgram(kSpace, kOption), true);
  EXPECT_EQ(m_hotKeys->isTakenByAnotherProgram(kSpace, kControl), false);
  EXPECT_TRUE(driver().grabKeyByExtension(KEY_SPACE, XCB_MOD_MASK_CONTROL)) << "asking has kept it";
}

TEST_F(X11HotKeysTest, ACombinationThatADesktopHoldsByTheInputExtensionIsNotRegistered) {
  ASSERT_TRUE(driver().grabKeyByExtension(KEY_SPACE, XCB_MOD_MASK_1));
  EXPECT_FALSE(registerSpace(kOption, 1));
  EXPECT_EQ(m_refusal, "another program holds Alt+key 57 by the input extension");
  driver().sync();
  EXPECT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1)) << "trying has kept it";
  EXPECT_TRUE(registerSpace(kControl, 2));
}

TEST_F(X11HotKeysTest, ARegisteredCombinationHearsThePressesFromTheBeginning) {
  for (std::uint32_t number = 1; number <= 20; ++number) {
    const auto hotKey = registerSpace(kOption, number);
    driver().tapKeys({KEY_LEFTALT, KEY_SPACE}); // at once: the trial grab of the registration must have ended
    ASSERT_TRUE(iterateUntil([&] { return m_pressed.size() == number; })) << number;
  }
}

TEST_F(X11HotKeysTest, ReplacingARegistrationByTheSameCombinationKeepsIt) {
  auto earlier = registerSpace(kOption, 1);
  const auto later = registerSpace(kOption, 2);
  ASSERT_TRUE(later);
  earlier.reset();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({2}); }));
}

TEST_F(X11HotKeysTest, AKeyThatNoKeyboardHasIsRefused) {
  EXPECT_FALSE(registerKey(52, kOption, {0, 1}));
  EXPECT_NE(m_refusal.find("virtual key code 52"), std::string::npos);
  EXPECT_FALSE(registerKey(kNoKeyCode, kOption, {0, 1}));
  EXPECT_EQ(m_hotKeys->isTakenByAnotherProgram(52, kOption), false);
}

TEST_F(X11HotKeysTest, AnotherLayoutKeepsTheKeysWhereTheyAre) {
  const auto hotKey = registerKey(6, kOption, {0, 1}); // the key Z of an American keyboard
  session().setKeyboardLayout({"de"});
  iterateWhatIsPending();
  driver().tapKeys({KEY_LEFTALT, KEY_Z});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1}); }));
  session().setKeyboardLayout({"us"});
  iterateWhatIsPending();
  driver().tapKeys({KEY_LEFTALT, KEY_Z});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1, 1}); }));
}

TEST_F(X11HotKeysTest, TheSecondGroupOfALayoutMakesNoDifference) {
  session().setKeyboardLayout({"-layout", "us,ru"});
  const auto hotKey = registerSpace(kOption, 1);
  lockKeyboardGroup(driver().xcb(), 1);
  driver().sync();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1}); }));
}

TEST_F(X11HotKeysTest, GrabsFollowAModifierThatMovesToAnotherBit) {
  session().markSpent();
  const auto hotKey = registerSpace(kCommand, 1);
  ASSERT_FALSE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_4));
  // Super moves from Mod4 to Mod3 and Num Lock from Mod2 to Mod4.
  const std::uint8_t superLeft = 133, numLock = 77, altLeft = 64, shiftLeft = 50, capsLock = 66,
                     controlLeft = 37;
  const std::uint8_t keys[8] = {shiftLeft, capsLock, controlLeft, altLeft, 0, superLeft, numLock, 0};
  const auto reply = x11::ownReply(xcb_set_modifier_mapping_reply(
      driver().xcb(), xcb_set_modifier_mapping(driver().xcb(), 1, keys), nullptr));
  ASSERT_TRUE(reply && reply->status == XCB_MAPPING_STATUS_SUCCESS);

  settle();
  EXPECT_FALSE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_3)) << "the grab has not moved";
  EXPECT_FALSE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_3 | XCB_MOD_MASK_4))
      << "no variant for the new Num Lock";
  EXPECT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_2)) << "nothing of ours is left behind";
}

TEST_F(X11HotKeysTest, AGrabThatCannotFollowIsLoggedAndComesBack) {
  session().markSpent();
  const auto hotKey = registerSpace(kCommand, 1);
  ASSERT_TRUE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_3));
  const auto setSuper = [&](std::size_t modifier) {
    std::uint8_t keys[8] = {50, 66, 37, 64, 77, 0, 0, 0};
    keys[modifier] = 133;
    x11::ownReply(xcb_set_modifier_mapping_reply(driver().xcb(),
                                                 xcb_set_modifier_mapping(driver().xcb(), 1, keys), nullptr));
  };
  setSuper(5);
  settle();
  EXPECT_TRUE(hasLogged("after a change of the keyboard layout another program holds Super+key 57"));
  setSuper(6);
  settle();
  EXPECT_FALSE(driver().grabKey(KEY_SPACE, XCB_MOD_MASK_4));
}

TEST_F(X11HotKeysTest, AnotherProgramsKeyboardGrabKeepsHotKeysSilentAndNothingBreaks) {
  const auto hotKey = registerSpace(kOption, 1);
  auto other = otherClient({"--window", "--grab-keyboard"});
  ASSERT_TRUE(other->hasWritten("keyboard grabbed"));
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  settle();
  EXPECT_EQ(m_pressed, Numbers());
  other.reset();
  driver().sync();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  EXPECT_TRUE(iterateUntil([&] { return m_pressed == Numbers({1}); }));
}

TEST_F(X11HotKeysTest, WhenTheGrabsGoEverythingIsFreeAndLateRegistrationsAreHarmless) {
  auto hotKey = registerSpace(kOption, 1);
  m_handler.reset();
  m_hotKeys.reset();
  m_grabs.reset();
  driver().sync();
  EXPECT_TRUE(iterateUntil([&] { return driver().grabKey(KEY_SPACE, XCB_MOD_MASK_1); }));
  hotKey.reset();
}

} // namespace
} // namespace orbel::test
