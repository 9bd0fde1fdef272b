#include "shortcut/MASShortcutMonitor.h"

#include "foundation/SharedObjects.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>

namespace orbel {
namespace {

const MASShortcut kShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag);
const MASShortcut kOther(96, 0);

class MASShortcutMonitorTest : public testing::Test {
protected:
  MASShortcut::MonitorToken add(const MASShortcut& shortcut) {
    return MASShortcut::addGlobalHotkeyMonitorWithShortcut(shortcut, [this] { ++m_presses; });
  }
  void press(const MASShortcut& shortcut) {
    m_platform.hotKeys.press(shortcut.carbonKeyCode(), shortcut.carbonFlags());
  }

  FakePlatform m_platform;
  int m_presses = 0;
};

TEST_F(MASShortcutMonitorTest, ThePressedShortcutRunsItsHandlerAndNoOther) {
  int otherPresses = 0;
  add(kShortcut);
  MASShortcut::addGlobalHotkeyMonitorWithShortcut(kOther, [&] { ++otherPresses; });
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
  EXPECT_EQ(otherPresses, 0);
  press(kOther);
  EXPECT_EQ(m_presses, 1);
  EXPECT_EQ(otherPresses, 1);
}

TEST_F(MASShortcutMonitorTest, TheTokenIsTheShortcutsDescription) {
  const auto token = add(kShortcut);
  ASSERT_TRUE(token);
  EXPECT_EQ(*token, kShortcut.description());
}

TEST_F(MASShortcutMonitorTest, TheFirstRegistrationOfAShortcutWins) {
  ASSERT_TRUE(add(kShortcut));
  int later = 0;
  EXPECT_FALSE(MASShortcut::addGlobalHotkeyMonitorWithShortcut(kShortcut, [&] { ++later; }));
  EXPECT_EQ(m_platform.hotKeys.registered().size(), 1u);
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
  EXPECT_EQ(later, 0);
}

TEST_F(MASShortcutMonitorTest, ShortcutsWithEqualTextShareOneMonitor) {
  // The keypad's 1 and the row's 1 read the same.
  m_platform.keyboardLayout.texts[18] = "1";
  ASSERT_TRUE(add(MASShortcut(83, kCommandFlag)));
  EXPECT_FALSE(add(MASShortcut(18, kCommandFlag)));
}

TEST_F(MASShortcutMonitorTest, RegistrationsAreNumberedFromOne) {
  add(kShortcut);
  add(kOther);
  const auto registered = m_platform.hotKeys.registered();
  ASSERT_EQ(registered.size(), 2u);
  EXPECT_EQ(registered[0].identity.number, 1u);
  EXPECT_EQ(registered[1].identity.number, 2u);
}

TEST_F(MASShortcutMonitorTest, ARefusedShortcutHasNoMonitorAndLeavesNoHandlerBehind) {
  m_platform.hotKeys.takenByOthers.insert({kShortcut.carbonKeyCode(), kShortcut.carbonFlags()});
  EXPECT_FALSE(add(kShortcut));
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  EXPECT_TRUE(add(kOther));
  EXPECT_FALSE(add(kShortcut));
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
}

TEST_F(MASShortcutMonitorTest, AShortcutThatIsNotAnsweredYetHasAMonitorAlready) {
  m_platform.hotKeys.answersLater = true;
  EXPECT_TRUE(add(kShortcut));
  EXPECT_FALSE(add(kShortcut)) << "the first wins also before its answer";
  m_platform.hotKeys.answerAll();
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutMonitorTest, ALaterRefusalHasTheEffectOfAnImmediateOne) {
  m_platform.hotKeys.answersLater = true;
  const std::weak_ptr<const std::string> refused = add(kShortcut);
  const auto other = add(kOther);
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"the user said no"});
  EXPECT_TRUE(refused.expired());
  EXPECT_EQ(m_platform.logged, std::vector<std::string>{"the user said no"});
  EXPECT_EQ(m_platform.hotKeys.registered().size(), 1u);
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
  m_platform.hotKeys.answer(kOther.carbonKeyCode(), kOther.carbonFlags(), Failure{"nor this"});
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  EXPECT_TRUE(add(kShortcut)) << "it may be tried again";
}

TEST_F(MASShortcutMonitorTest, AShortcutThatTheDesktopTakesAwayLaterEndsToo) {
  ASSERT_TRUE(add(kShortcut));
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"taken away"});
  press(kShortcut);
  EXPECT_EQ(m_presses, 0);
  EXPECT_TRUE(add(kShortcut));
}

TEST_F(MASShortcutMonitorTest, AShortcutThatTheDesktopHasChosenRunsItsHandler) {
  m_platform.hotKeys.answersLater = true;
  add(kShortcut);
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(),
                            HotKeyStatus{HotKeyStatus::State::boundByDesktop, "Super+F1"});
  m_platform.hotKeys.deliver({MASShortcutMonitor::kSignature, 1});
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutMonitorTest, ARemovedMonitorGivesItsCombinationBack) {
  const auto token = add(kShortcut);
  MASShortcut::removeGlobalHotkeyMonitor(token);
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  EXPECT_TRUE(add(kShortcut));
}

TEST_F(MASShortcutMonitorTest, RemovingNothingAndRemovingTwiceDoNothing) {
  const auto token = add(kShortcut);
  MASShortcut::removeGlobalHotkeyMonitor(nullptr);
  EXPECT_EQ(m_platform.hotKeys.registered().size(), 1u);
  MASShortcut::removeGlobalHotkeyMonitor(token);
  MASShortcut::removeGlobalHotkeyMonitor(token);
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
}

TEST_F(MASShortcutMonitorTest, TheHandlerOfPressesLivesFromTheFirstMonitorToTheLast) {
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  const auto first = add(kShortcut);
  const auto second = add(kOther);
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
  EXPECT_EQ(m_platform.hotKeys.handlerInstallations, 1);
  MASShortcut::removeGlobalHotkeyMonitor(first);
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
  MASShortcut::removeGlobalHotkeyMonitor(second);
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  add(kShortcut);
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
  EXPECT_EQ(m_platform.hotKeys.handlerInstallations, 2);
  press(kShortcut);
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutMonitorTest, APressWithAnotherSignatureOrAnUnknownNumberRunsNothing) {
  add(kShortcut);
  m_platform.hotKeys.deliver({0x41424344, 1});
  m_platform.hotKeys.deliver({MASShortcutMonitor::kSignature, 2});
  m_platform.hotKeys.deliver({MASShortcutMonitor::kSignature, 0});
  EXPECT_EQ(m_presses, 0);
  m_platform.hotKeys.deliver({0x4D415353, 1});
  EXPECT_EQ(m_presses, 1);
}

TEST_F(MASShortcutMonitorTest, AMonitorWithoutAHandlerIgnoresItsPress) {
  EXPECT_TRUE(MASShortcut::addGlobalHotkeyMonitorWithShortcut(kShortcut, nullptr));
  press(kShortcut);
  EXPECT_TRUE(m_platform.hotKeys.handlerInstalled());
}

TEST_F(MASShortcutMonitorTest, AHandlerMayRemoveItsOwnMonitor) {
  const auto alive = std::make_shared<int>(0);
  MASShortcut::MonitorToken token;
  token = MASShortcut::addGlobalHotkeyMonitorWithShortcut(kShortcut, [&token, alive] {
    MASShortcut::removeGlobalHotkeyMonitor(token);
    ++*alive; // the handler itself must have survived
  });
  press(kShortcut);
  press(kShortcut);
  EXPECT_EQ(*alive, 1);
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
}

TEST_F(MASShortcutMonitorTest, TheEndOfTheSharedObjectsEndsEverythingAndTheNextCountFromOneAgain) {
  {
    SharedObjects shared;
    ASSERT_TRUE(MASShortcut::registeredUserDefaultsHotKeys().empty());
    add(kShortcut);
    m_platform.preferences.setObject("Key", kOther.data());
    MASShortcut::registerGlobalShortcutWithUserDefaultsKey("Key", [] {});
    ASSERT_EQ(m_platform.hotKeys.registered().size(), 2u);
  }
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
  EXPECT_TRUE(MASShortcut::registeredUserDefaultsHotKeys().empty());
  add(kShortcut);
  EXPECT_EQ(m_platform.hotKeys.registered().front().identity.number, 1u);
}

} // namespace
} // namespace orbel
