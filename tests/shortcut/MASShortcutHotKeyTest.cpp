#include "shortcut/MASShortcutHotKey.h"

#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel {
namespace {

constexpr std::uint32_t kSignature = 0x4D415353; // 'MASS'
const MASShortcut kShortcut(kSpaceKeyCode, kOptionFlag | kCommandFlag);

class MASShortcutHotKeyTest : public testing::Test {
protected:
  FakePlatform m_platform;
};

TEST_F(MASShortcutHotKeyTest, RegistersTheCodesOfTheHotKeyInterfaceUnderItsNumber) {
  const auto hotKey = MASShortcutHotKey::withShortcut(kShortcut, [] {});
  ASSERT_TRUE(hotKey);
  EXPECT_EQ(hotKey->shortcut(), kShortcut);
  EXPECT_TRUE(hotKey->isInstalled());
  EXPECT_EQ(hotKey->carbonHotKeyID(), 1u);
  ASSERT_EQ(m_platform.hotKeys.registered().size(), 1u);
  const auto entry = m_platform.hotKeys.registered().front();
  EXPECT_EQ(entry.keyCode, 49u);
  EXPECT_EQ(entry.modifiers, 2048u | 256u);
  EXPECT_EQ(entry.identity, (HotKeyIdentity{kSignature, 1}));
}

TEST_F(MASShortcutHotKeyTest, NoKeyIsRegisteredAsKeyCodeZero) {
  const auto hotKey = MASShortcutHotKey::withShortcut(MASShortcut(kNoKeyCode, kCommandFlag), [] {});
  ASSERT_EQ(m_platform.hotKeys.registered().size(), 1u);
  EXPECT_EQ(m_platform.hotKeys.registered().front().keyCode, 0u);
}

TEST_F(MASShortcutHotKeyTest, IsNotMadeWhenTheSystemRefusesButTheNumberIsSpent) {
  m_platform.hotKeys.takenByOthers.insert({kShortcut.carbonKeyCode(), kShortcut.carbonFlags()});
  EXPECT_FALSE(MASShortcutHotKey::withShortcut(kShortcut, [] {}));
  const auto next = MASShortcutHotKey::withShortcut(MASShortcut(96, 0), [] {});
  ASSERT_TRUE(next);
  EXPECT_EQ(next->carbonHotKeyID(), 2u);
}

TEST_F(MASShortcutHotKeyTest, IsNotMadeWhenNoHandlerOfPressesCanBeInstalled) {
  m_platform.hotKeys.installSucceeds = false;
  EXPECT_FALSE(MASShortcutHotKey::withShortcut(kShortcut, [] {}));
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  m_platform.hotKeys.installSucceeds = true;
  const auto next = MASShortcutHotKey::withShortcut(kShortcut, [] {});
  ASSERT_TRUE(next);
  EXPECT_EQ(next->carbonHotKeyID(), 1u) << "a failure before the registration spends no number";
}

TEST_F(MASShortcutHotKeyTest, IsMadeBeforeTheSystemHasAnswered) {
  m_platform.hotKeys.answersLater = true;
  std::vector<std::string> causes;
  const auto hotKey = MASShortcutHotKey::withShortcut(
      kShortcut, [] {}, [&](const HotKeyAnswer& answer) { causes.push_back(answer.cause()); });
  ASSERT_TRUE(hotKey);
  EXPECT_TRUE(hotKey->isInstalled());
  EXPECT_TRUE(causes.empty());
  m_platform.hotKeys.answerAll();
  EXPECT_EQ(causes, std::vector<std::string>{""});
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"the user said no"});
  EXPECT_EQ(causes, (std::vector<std::string>{"", "the user said no"}));
  EXPECT_FALSE(hotKey->isInstalled());
}

TEST_F(MASShortcutHotKeyTest, MayBeDestroyedByWhoeverReceivesARefusal) {
  m_platform.hotKeys.answersLater = true;
  std::unique_ptr<MASShortcutHotKey> hotKey;
  hotKey = MASShortcutHotKey::withShortcut(
      kShortcut, [] {}, [&](const HotKeyAnswer&) { hotKey.reset(); });
  m_platform.hotKeys.answer(kShortcut.carbonKeyCode(), kShortcut.carbonFlags(), Failure{"taken"});
  EXPECT_FALSE(hotKey);
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
}

TEST_F(MASShortcutHotKeyTest, GivesTheCombinationBackWhenUninstalledAndWhenDestroyed) {
  auto hotKey = MASShortcutHotKey::withShortcut(kShortcut, [] {});
  hotKey->uninstallExisitingHotKey();
  EXPECT_FALSE(hotKey->isInstalled());
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  hotKey->uninstallExisitingHotKey();
  hotKey = MASShortcutHotKey::withShortcut(kShortcut, [] {});
  EXPECT_EQ(m_platform.hotKeys.registered().size(), 1u);
  hotKey.reset();
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
}

} // namespace
} // namespace orbel
