#include "shortcut/MASShortcutUserDefaultsHotKey.h"

#include "foundation/KeyedArchive.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace orbel {
namespace {

const std::string kKey = "GlobalShortcut";
const MASShortcut kShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag);
const MASShortcut kOther(96, 0);

class MASShortcutUserDefaultsHotKeyTest : public testing::Test {
protected:
  void bind(const std::string& key = kKey) {
    MASShortcut::registerGlobalShortcutWithUserDefaultsKey(key, [this] { ++m_presses; });
  }
  void press(const MASShortcut& shortcut) {
    m_platform.hotKeys.press(shortcut.carbonKeyCode(), shortcut.carbonFlags());
  }
  std::vector<FakeHotKeys::Entry> registered() const { return m_platform.hotKeys.registered(); }
  static const MASShortcutUserDefaultsHotKey& binding(const std::string& key = kKey) {
    return *MASShortcut::registeredUserDefaultsHotKeys().at(key);
  }

  FakePlatform m_platform;
  int m_presses = 0;
};

TEST_F(MASShortcutUserDefaultsHotKeyTest, TheStoredShortcutIsRegisteredAtOnce) {
  m_platform.preferences.setObject(kKey, kShortcut.data());
  bind();
  EXPECT_EQ(binding().userDefaultsKey(), kKey);
  ASSERT_TRUE(binding().monitor());
  EXPECT_EQ(*binding().monitor(), kShortcut.description());
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, NothingStoredRegistersNothing) {
  bind();
  EXPECT_FALSE(binding().monitor());
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  EXPECT_TRUE(m_platform.logged.empty());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AChangedShortcutReplacesTheOldOneAtOnce) {
  m_platform.preferences.setObject(kKey, kShortcut.data());
  bind();
  MASShortcut::setGlobalShortcut(kOther, kKey);
  ASSERT_EQ(registered().size(), 1u);
  EXPECT_EQ(registered().front().keyCode, kOther.keyCode());
  press(kShortcut);
  EXPECT_EQ(m_presses, 0);
  press(kOther);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AShortcutStoredLaterIsRegistered) {
  bind();
  m_platform.preferences.changeFromOutside({{kKey, kShortcut.data()}});
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, RemovingTheStoredShortcutRemovesTheHotKey) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  MASShortcut::setGlobalShortcut(std::nullopt, kKey);
  EXPECT_EQ(m_platform.preferences.object(kKey), nullptr);
  EXPECT_TRUE(registered().empty());
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AnArchiveOfNothingRemovesTheHotKey) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  m_platform.preferences.setObject(kKey, MASShortcut::dataOfNothing());
  EXPECT_TRUE(registered().empty());
  EXPECT_FALSE(binding().monitor());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ChangesOfOtherKeysAndRewritingTheSameShortcutRegisterNothingAnew) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  ASSERT_EQ(registered().size(), 1u);
  const auto identity = registered().front().identity;
  m_platform.preferences.setObject("swiftMode", true);
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  m_platform.preferences.changeFromOutside({{kKey, kShortcut.data()}, {"menuItems", PropertyList::List{}}});
  ASSERT_EQ(registered().size(), 1u);
  EXPECT_EQ(registered().front().identity, identity);
  EXPECT_EQ(m_platform.hotKeys.handlerInstallations, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, OfTwoKeysWithTheSameShortcutTheFirstGetsTheMonitor) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  MASShortcut::setGlobalShortcut(kShortcut, "Second");
  bind();
  bind("Second");
  EXPECT_TRUE(binding().monitor());
  EXPECT_FALSE(binding("Second").monitor());
  EXPECT_EQ(registered().size(), 1u);
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey("Second");
  EXPECT_EQ(registered().size(), 1u) << "the binding without a monitor must not take the other's away";
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ARefusedShortcutLeavesTheBindingWithoutAMonitor) {
  m_platform.hotKeys.takenByOthers.insert({kShortcut.carbonKeyCode(), kShortcut.carbonFlags()});
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  EXPECT_FALSE(binding().monitor());
  MASShortcut::setGlobalShortcut(kOther, kKey);
  EXPECT_TRUE(binding().monitor());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ARefusedShortcutStoredAgainOnceItIsFreeIsRegistered) {
  m_platform.hotKeys.takenByOthers.insert({kShortcut.carbonKeyCode(), kShortcut.carbonFlags()});
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  EXPECT_FALSE(binding().monitor()) << "it is still taken";
  EXPECT_EQ(m_platform.hotKeys.asked.size(), 2u);
  m_platform.hotKeys.takenByOthers.clear();
  m_platform.preferences.setObject("swiftMode", true);
  EXPECT_EQ(m_platform.hotKeys.asked.size(), 2u) << "no other setting asks, and logs a refusal, again";
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  EXPECT_TRUE(binding().monitor());
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ARefusedShortcutIsAskedForOnceWhenItReplacesAnother) {
  MASShortcut::setGlobalShortcut(kOther, kKey);
  bind();
  m_platform.hotKeys.takenByOthers.insert({kShortcut.carbonKeyCode(), kShortcut.carbonFlags()});
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  EXPECT_EQ(m_platform.hotKeys.asked.size(), 2u) << "one for each shortcut";
  EXPECT_EQ(m_platform.logged.size(), 1u);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, TheAnswerToTheStoredShortcutIsKnown) {
  EXPECT_FALSE(MASShortcut::hotKeyAnswer(kKey)) << "not bound";
  bind();
  EXPECT_FALSE(MASShortcut::hotKeyAnswer(kKey)) << "nothing stored";
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  ASSERT_TRUE(MASShortcut::hotKeyAnswer(kKey));
  EXPECT_EQ(MASShortcut::hotKeyAnswer(kKey)->value().state, HotKeyStatus::State::bound);
  m_platform.hotKeys.takenByOthers.insert({kOther.carbonKeyCode(), kOther.carbonFlags()});
  MASShortcut::setGlobalShortcut(kOther, kKey);
  ASSERT_TRUE(MASShortcut::hotKeyAnswer(kKey));
  EXPECT_FALSE(MASShortcut::hotKeyAnswer(kKey)->cause().empty());
  m_platform.preferences.setObject(kKey, MASShortcut::dataOfNothing());
  EXPECT_FALSE(MASShortcut::hotKeyAnswer(kKey));
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ALaterRefusalLeavesTheBindingWithoutAMonitorAndMayBeTriedAgain) {
  m_platform.hotKeys.answersLater = true;
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  EXPECT_TRUE(binding().monitor());
  EXPECT_EQ(MASShortcut::hotKeyAnswer(kKey)->value().state, HotKeyStatus::State::pending);
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"the user said no"});
  EXPECT_FALSE(binding().monitor());
  EXPECT_EQ(MASShortcut::hotKeyAnswer(kKey)->cause(), "the user said no");
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  EXPECT_EQ(MASShortcut::hotKeyAnswer(kKey)->value().state, HotKeyStatus::State::pending);
  m_platform.hotKeys.answerAll();
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, WhatTheDesktopHasChosenIsKnownInItsOwnWords) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(),
                            HotKeyStatus{HotKeyStatus::State::boundByDesktop, "Super+F1"});
  const auto answer = MASShortcut::hotKeyAnswer(kKey);
  ASSERT_TRUE(answer && *answer);
  EXPECT_EQ(answer->value().state, HotKeyStatus::State::boundByDesktop);
  EXPECT_EQ(answer->value().combination, "Super+F1");
  EXPECT_TRUE(binding().monitor());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AnAnswerToAShortcutThatWasReplacedMeanwhileIsNotTaken) {
  m_platform.hotKeys.answersLater = true;
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  MASShortcut::setGlobalShortcut(kOther, kKey);
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"taken"});
  EXPECT_EQ(MASShortcut::hotKeyAnswer(kKey)->value().state, HotKeyStatus::State::pending);
  EXPECT_TRUE(binding().monitor());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, OfASecondBindingOfTheShortcutTheAnswerSaysWhyItHasNoMonitor) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  MASShortcut::setGlobalShortcut(kShortcut, "Second");
  bind();
  bind("Second");
  EXPECT_EQ(MASShortcut::hotKeyAnswer("Second")->cause(), kShortcut.description() + " is registered already");
  EXPECT_TRUE(m_platform.logged.empty());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, ObserversAreNotifiedOfEveryChangeOfAnAnswer) {
  using State = HotKeyStatus::State;
  m_platform.hotKeys.answersLater = true;
  std::vector<std::string> seen;
  auto observer = MASShortcut::observeHotKeyAnswers([&] {
    const auto answer = MASShortcut::hotKeyAnswer(kKey);
    if (!answer) {
      seen.emplace_back("none");
    } else if (!*answer) {
      seen.emplace_back("refused");
    } else {
      seen.emplace_back(answer->value().state == State::pending ? "pending" : "bound");
    }
  });
  bind();
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  m_platform.hotKeys.answerAll();
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"taken"});
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kKey);
  EXPECT_EQ(seen, (std::vector<std::string>{"none", "pending", "bound", "refused", "pending", "none"}));
  observer.reset();
  bind();
  EXPECT_EQ(seen.size(), 6u);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, UnregisteringEndsTheBindingAndItsHotKey) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kKey);
  EXPECT_TRUE(MASShortcut::registeredUserDefaultsHotKeys().empty());
  EXPECT_TRUE(registered().empty());
  MASShortcut::setGlobalShortcut(kOther, kKey);
  EXPECT_TRUE(registered().empty());
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kKey);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest,
       BindingAKeyAgainWithoutUnregisteringLeavesAnUnchangedShortcutUnregistered) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  bind();
  bind();
  EXPECT_FALSE(binding().monitor());
  EXPECT_TRUE(registered().empty());
  MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kKey);
  bind();
  EXPECT_TRUE(binding().monitor());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AHandlerMayEndItsOwnBindingAndMayChangeItsShortcut) {
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  MASShortcut::registerGlobalShortcutWithUserDefaultsKey(kKey, [this] {
    ++m_presses;
    MASShortcut::setGlobalShortcut(kOther, kKey);
    MASShortcut::unregisterGlobalShortcutWithUserDefaultsKey(kKey);
  });
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
  EXPECT_TRUE(registered().empty());
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AStoredValueOfAnotherTypeRegistersNothingAndIsLogged) {
  const std::vector<PropertyList> values = {true,
                                            49,
                                            2.5,
                                            "\u2318A",
                                            PropertyList::Date{0},
                                            PropertyList::List{},
                                            PropertyList::Dictionary{{"KeyCode", 49}}};
  bind();
  for (std::size_t index = 0; index < values.size(); ++index) {
    m_platform.preferences.setObject(kKey, values[index]);
    EXPECT_FALSE(binding().monitor()) << index;
    ASSERT_EQ(m_platform.logged.size(), index + 1) << index;
    EXPECT_NE(m_platform.logged.back().find(kKey), std::string::npos);
  }
  EXPECT_TRUE(registered().empty());
  MASShortcut::setGlobalShortcut(kShortcut, kKey);
  EXPECT_TRUE(binding().monitor()) << "a good value is taken again";
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, GarbageDataRegistersNothingAndIsLoggedOnce) {
  m_platform.preferences.setObject(kKey, PropertyList::Data(64, std::byte{0xA5}));
  bind();
  m_platform.preferences.setObject("swiftMode", true);
  EXPECT_FALSE(binding().monitor());
  EXPECT_EQ(m_platform.logged.size(), 1u);
}

TEST_F(MASShortcutUserDefaultsHotKeyTest, AHugeKeyCodeIsHandedOnUnchanged) {
  constexpr auto kHuge = std::numeric_limits<std::int64_t>::max() - 1;
  m_platform.preferences.setObject(
      kKey, KeyedArchive::archive(KeyedArchive::Object{
                "MASShortcut", {{"KeyCode", kHuge}, {"ModifierFlags", 0x7FFFFFFFFFFFFFFF}}}));
  bind();
  const auto& asked = m_platform.hotKeys.asked;
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked.front().keyCode, static_cast<std::uint64_t>(kHuge));
  EXPECT_EQ(asked.front().modifiers, 6912u);
  EXPECT_FALSE(binding().monitor()) << "no keyboard has that key";
}

} // namespace
} // namespace orbel
