#include "shortcut/MASShortcutDefaultsObserver.h"

#include "shortcut/MASShortcutView.h"
#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel {
namespace {

const std::string kKey = "GlobalShortcut";
const MASShortcut kStored(kSpaceKeyCode, kOptionFlag);
const MASShortcut kOther(96, 0);

class MASShortcutDefaultsObserverTest : public testing::Test {
protected:
  void bind() { m_view->setAssociatedUserDefaultsKey(kKey); }
  std::optional<MASShortcut> stored() const {
    const PropertyList* value = m_platform.preferences.object(kKey);
    return value ? MASShortcut::shortcutWithData(value->data()) : std::nullopt;
  }

  FakePlatform m_platform;
  FakeKeyRecorder m_keys;
  std::shared_ptr<MASShortcutView> m_view = std::make_shared<MASShortcutView>(Rect(0, 0, 160, 24), m_keys);
};

TEST_F(MASShortcutDefaultsObserverTest, TheViewShowsWhatIsStoredAtOnceAndNothingIsWritten) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  const int writes = m_platform.preferences.writes;
  bind();
  EXPECT_EQ(m_view->associatedUserDefaultsKey(), kKey);
  EXPECT_EQ(m_view->shortcutValue(), kStored);
  EXPECT_EQ(m_platform.preferences.writes, writes);
}

TEST_F(MASShortcutDefaultsObserverTest, AnEmptyStoreClearsTheViewAndStaysEmpty) {
  m_view->setShortcutValue(kOther);
  bind();
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  EXPECT_EQ(m_platform.preferences.object(kKey), nullptr);
}

TEST_F(MASShortcutDefaultsObserverTest, AChangeOfTheStoreIsShownAndNotWrittenBack) {
  bind();
  m_platform.preferences.changeFromOutside({{kKey, kOther.data()}});
  EXPECT_EQ(m_view->shortcutValue(), kOther);
  EXPECT_EQ(m_platform.preferences.writes, 0);
  m_platform.preferences.changeFromOutside({});
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  EXPECT_EQ(m_platform.preferences.writes, 0);
}

TEST_F(MASShortcutDefaultsObserverTest, AChangeOfTheViewIsStoredOnceAndWrittenToDisk) {
  bind();
  int changes = 0;
  m_view->setShortcutValueChange([&](MASShortcutView&) { ++changes; });
  m_view->setShortcutValue(kOther);
  EXPECT_EQ(stored(), kOther);
  EXPECT_EQ(m_platform.preferences.writes, 1);
  EXPECT_EQ(m_platform.preferences.synchronizations, 1);
  EXPECT_EQ(changes, 1) << "the store's answer is not taken for a change from outside";
}

TEST_F(MASShortcutDefaultsObserverTest, AClearedShortcutIsStoredAsAnArchiveOfNothing) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  bind();
  m_view->setShortcutValue(std::nullopt);
  ASSERT_NE(m_platform.preferences.object(kKey), nullptr);
  EXPECT_EQ(*m_platform.preferences.object(kKey), PropertyList(MASShortcut::dataOfNothing()));
  EXPECT_EQ(m_platform.preferences.synchronizations, 1);
}

TEST_F(MASShortcutDefaultsObserverTest, RecordingAndClearingChangeTheRegisteredHotKeyAtOnce) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  int presses = 0;
  MASShortcut::registerGlobalShortcutWithUserDefaultsKey(kKey, [&] { ++presses; });
  bind();
  m_view->setRecording(true);
  m_keys.type(kOther.keyCode(), kOther.modifierFlags());
  m_platform.hotKeys.press(kOther.carbonKeyCode(), kOther.carbonFlags());
  EXPECT_EQ(presses, 1);
  m_view->setRecording(true);
  m_keys.type(kDeleteKeyCode, 0);
  EXPECT_TRUE(m_platform.hotKeys.registered().empty());
  EXPECT_FALSE(m_platform.hotKeys.handlerInstalled());
}

TEST_F(MASShortcutDefaultsObserverTest, ARefusedShortcutRecordedAgainOnceItIsFreeIsRegistered) {
  auto& taken = m_platform.hotKeys.takenByOthers;
  taken.insert({kOther.carbonKeyCode(), kOther.carbonFlags()});
  MASShortcut::setGlobalShortcut(kOther, kKey);
  int presses = 0;
  MASShortcut::registerGlobalShortcutWithUserDefaultsKey(kKey, [&] { ++presses; });
  bind();
  taken.clear();
  m_view->setRecording(true);
  m_keys.type(kOther.keyCode(), kOther.modifierFlags());
  m_platform.hotKeys.press(kOther.carbonKeyCode(), kOther.carbonFlags());
  EXPECT_EQ(presses, 1);
}

TEST_F(MASShortcutDefaultsObserverTest, EndingTheBindingPutsTheOriginalShortcutBackAndLeavesTheStore) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  m_view->setShortcutValue(kOther);
  bind();
  m_view->setAssociatedUserDefaultsKey("");
  EXPECT_EQ(m_view->shortcutValue(), kOther);
  EXPECT_EQ(m_view->associatedUserDefaultsKey(), "");
  EXPECT_EQ(stored(), kStored);
  m_platform.preferences.changeFromOutside({});
  EXPECT_EQ(m_view->shortcutValue(), kOther);
  m_view->setShortcutValue(std::nullopt);
  EXPECT_EQ(m_platform.preferences.object(kKey), nullptr);
}

TEST_F(MASShortcutDefaultsObserverTest, BindingToAnotherKeyLeavesTheFirst) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  MASShortcut::setGlobalShortcut(kOther, "Another");
  bind();
  m_view->setAssociatedUserDefaultsKey("Another");
  EXPECT_EQ(m_view->shortcutValue(), kOther);
  m_view->setShortcutValue(MASShortcut(97, 0));
  EXPECT_EQ(stored(), kStored);
}

TEST_F(MASShortcutDefaultsObserverTest, AnUnreadableStoredValueShowsAsNoShortcutAndIsLeftAlone) {
  const std::vector<PropertyList> values = {PropertyList::Data(40, std::byte{0x3C}), "text", 12, true,
                                            PropertyList::List{}};
  for (std::size_t index = 0; index < values.size(); ++index) {
    m_platform.preferences.values.insert_or_assign(kKey, values[index]);
    bind();
    EXPECT_EQ(m_view->shortcutValue(), std::nullopt) << index;
    EXPECT_EQ(*m_platform.preferences.object(kKey), values[index]) << index;
  }
}

TEST_F(MASShortcutDefaultsObserverTest, AViewThatGoesTakesItsBindingAlong) {
  MASShortcut::setGlobalShortcut(kStored, kKey);
  bind();
  m_view.reset();
  m_platform.preferences.changeFromOutside({{kKey, kOther.data()}});
  EXPECT_EQ(stored(), kOther);
}

TEST_F(MASShortcutDefaultsObserverTest, RemembersTheShortcutOfTheViewItWasMadeFor) {
  m_view->setShortcutValue(kOther);
  const MASShortcutDefaultsObserver observer(m_view, kKey);
  EXPECT_EQ(observer.originalShortcut(), kOther);
  EXPECT_EQ(observer.userDefaultsKey(), kKey);
}

} // namespace
} // namespace orbel
