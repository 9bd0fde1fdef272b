#include "shortcut/MASShortcutView.h"

#include "tests/doubles/FakeKeyRecorder.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {
namespace {

using Delivery = FakeKeyRecorder::Delivery;

constexpr Rect kFrame(50, 40, 160, 24);
constexpr std::uint64_t kLetterA = 0;
constexpr std::uint64_t kLetterQ = 12;
constexpr std::uint64_t kLetterW = 13;
constexpr std::uint64_t kKeyWithoutText = 39;
const MASShortcut kOld(96, 0); // F5
const MASShortcut kNew(kSpaceKeyCode, kOptionFlag);

// Takes the clicks that the view lets through.
class Superview : public View {
public:
  using View::View;
  void mouseDown(const MouseEvent&) override { ++clicks; }
  int clicks = 0;
};

class MASShortcutViewTest : public testing::Test {
protected:
  MASShortcutViewTest() { m_superview->addSubview(m_view); }

  std::shared_ptr<MASShortcutView> makeView() { return std::make_shared<MASShortcutView>(kFrame, m_keys); }
  void clickShortcutArea() { m_view->mouseDown({{kFrame.minX() + 20, kFrame.minY() + 12}}); }
  void clickHintArea() { m_view->mouseDown({{kFrame.maxX() - 3, kFrame.minY() + 12}}); }
  void startRecordingOver(const std::optional<MASShortcut>& old) {
    m_view->setShortcutValue(old);
    m_view->setRecording(true);
    ASSERT_TRUE(m_view->isRecording());
    m_changes = 0;
  }

  FakePlatform m_platform;
  FakeKeyRecorder m_keys;
  std::shared_ptr<MASShortcutView> m_view = makeView();
  std::shared_ptr<Superview> m_superview = std::make_shared<Superview>(Rect(0, 0, 400, 300));
  int m_changes = 0;
  Registration m_observation = m_view->observeShortcutValue([this] { ++m_changes; });
};

TEST_F(MASShortcutViewTest, IsEnabledAndShowsNothingAtFirst) {
  EXPECT_TRUE(m_view->isEnabled());
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_FALSE(m_view->isHinting());
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
  EXPECT_EQ(m_view->appearance(), 0u);
  EXPECT_EQ(m_view->shortcutCell().bezelStyle(), BezelStyle::roundRect);
  EXPECT_EQ(m_view->associatedUserDefaultsKey(), "");
}

TEST_F(MASShortcutViewTest, TheHintAreaIsTheRightEndAndAsWideAsTheAppearanceSays) {
  struct Case {
    std::uint32_t appearance;
    double width;
    BezelStyle bezel;
  };
  for (const Case& expected : {Case{1, 25, BezelStyle::texturedRounded}, Case{2, 26, BezelStyle::rounded},
                               Case{3, 23, BezelStyle::rounded}, Case{0, 23, BezelStyle::roundRect},
                               Case{0xFFFFFFFF, 23, BezelStyle::roundRect}}) {
    m_view->setAppearance(expected.appearance);
    EXPECT_EQ(m_view->appearance(), expected.appearance);
    EXPECT_EQ(m_view->hintArea(), Rect(160 - expected.width, 0, expected.width, 24));
    EXPECT_EQ(m_view->shortcutArea(), Rect(0, 0, 160 - expected.width, 24));
    EXPECT_EQ(m_view->trackingArea(), m_view->hintArea());
    EXPECT_EQ(m_view->shortcutCell().bezelStyle(), expected.bezel);
  }
}

TEST_F(MASShortcutViewTest, TheTrackedHintAreaFollowsTheFrame) {
  m_view->setFrame({0, 0, 300, 30});
  EXPECT_EQ(m_view->trackingArea(), Rect(277, 0, 23, 30));
  m_view->setFrame({0, 0, 10, 30});
  EXPECT_EQ(m_view->hintArea(), Rect(0, 0, 10, 30));
  EXPECT_TRUE(m_view->shortcutArea().isEmpty());
}

TEST_F(MASShortcutViewTest, ThePointerOverTheHintAreaHints) {
  m_view->mouseEntered({});
  EXPECT_TRUE(m_view->isHinting());
  m_view->mouseExited({});
  EXPECT_FALSE(m_view->isHinting());
}

// Mouse down, by shortcut set, recording, and place.

TEST_F(MASShortcutViewTest, AClickOnAShownShortcutStartsRecording) {
  m_view->setShortcutValue(kOld);
  clickShortcutArea();
  EXPECT_TRUE(m_view->isRecording());
  EXPECT_TRUE(m_keys.isRecording());
  EXPECT_EQ(m_view->shortcutValue(), kOld);
}

TEST_F(MASShortcutViewTest, AClickOnTheHintAreaClearsAShownShortcut) {
  m_view->setShortcutValue(kOld);
  clickHintArea();
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  EXPECT_FALSE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, AClickAnywhereOnAnEmptyViewStartsRecording) {
  clickShortcutArea();
  EXPECT_TRUE(m_view->isRecording());
  m_view->setRecording(false);
  clickHintArea();
  EXPECT_TRUE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, AClickOnTheHintAreaStopsRecordingAndKeepsTheShortcut) {
  for (const auto& old : {std::optional(kOld), std::optional<MASShortcut>()}) {
    startRecordingOver(old);
    clickHintArea();
    EXPECT_FALSE(m_view->isRecording());
    EXPECT_FALSE(m_keys.isRecording());
    EXPECT_EQ(m_view->shortcutValue(), old);
  }
}

TEST_F(MASShortcutViewTest, AClickElsewhereWhileRecordingDoesNothing) {
  for (const auto& old : {std::optional(kOld), std::optional<MASShortcut>()}) {
    startRecordingOver(old);
    clickShortcutArea();
    EXPECT_TRUE(m_view->isRecording());
    EXPECT_EQ(m_view->shortcutValue(), old);
    EXPECT_EQ(m_changes, 0);
    m_view->setRecording(false);
  }
}

TEST_F(MASShortcutViewTest, ADisabledViewPassesTheClickOn) {
  m_view->setShortcutValue(kOld);
  m_view->setEnabled(false);
  clickShortcutArea();
  clickHintArea();
  EXPECT_EQ(m_superview->clicks, 2);
  EXPECT_EQ(m_view->shortcutValue(), kOld);
  EXPECT_FALSE(m_view->isRecording());
  m_view->setEnabled(true);
  clickShortcutArea();
  EXPECT_EQ(m_superview->clicks, 2);
}

// Keys while recording.

TEST_F(MASShortcutViewTest, KeysAreListenedToOnlyWhileRecording) {
  EXPECT_EQ(m_keys.type(kSpaceKeyCode, kOptionFlag), Delivery::nobody);
  m_view->setRecording(true);
  EXPECT_TRUE(m_keys.isRecording());
  m_view->setRecording(true);
  EXPECT_EQ(m_keys.recordings, 1);
  m_view->setRecording(false);
  EXPECT_FALSE(m_keys.isRecording());
}

TEST_F(MASShortcutViewTest, DeleteAndForwardDeleteClearTheShortcutWhateverTheModifiers) {
  for (const std::uint64_t key : {kDeleteKeyCode, kForwardDeleteKeyCode}) {
    for (const std::uint64_t flags : {std::uint64_t{0}, std::uint64_t{kCommandFlag}, kAllModifierFlags}) {
      startRecordingOver(kOld);
      EXPECT_EQ(m_keys.type(key, flags), Delivery::swallowed);
      EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
      EXPECT_FALSE(m_view->isRecording());
      EXPECT_EQ(m_changes, 1);
    }
  }
}

TEST_F(MASShortcutViewTest, EscapeAloneStopsRecordingAndKeepsTheShortcut) {
  startRecordingOver(kOld);
  EXPECT_EQ(m_keys.type(kEscapeKeyCode, 0), Delivery::swallowed);
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_EQ(m_view->shortcutValue(), kOld);
  EXPECT_EQ(m_changes, 0);
}

TEST_F(MASShortcutViewTest, EscapeWithAModifierIsAKeyLikeOthers) {
  startRecordingOver(kOld);
  EXPECT_EQ(m_keys.type(kEscapeKeyCode, kOptionFlag), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutValue(), MASShortcut(kEscapeKeyCode, kOptionFlag));
}

TEST_F(MASShortcutViewTest, CommandWAndCommandQStopRecordingAndGoOnToTheProgram) {
  for (const std::uint64_t key : {kLetterW, kLetterQ}) {
    startRecordingOver(kOld);
    EXPECT_EQ(m_keys.type(key, kCommandFlag), Delivery::passedOn);
    EXPECT_FALSE(m_view->isRecording());
    EXPECT_EQ(m_view->shortcutValue(), kOld);
  }
}

TEST_F(MASShortcutViewTest, HeldModifiersAreShownAsThePlaceholderBeforeAnyKey) {
  startRecordingOver(std::nullopt);
  EXPECT_EQ(m_keys.holdModifiers(kControlFlag), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "\u2303");
  EXPECT_EQ(m_keys.holdModifiers(kControlFlag | kOptionFlag), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "\u2303\u2325");
  EXPECT_EQ(m_keys.holdModifiers(0), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
  EXPECT_TRUE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, AKeyWithoutTextShowsItsModifiersAndIsSwallowed) {
  startRecordingOver(std::nullopt);
  EXPECT_EQ(m_keys.type(kKeyWithoutText, kCommandFlag), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "\u2318");
  EXPECT_TRUE(m_view->isRecording());
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  EXPECT_EQ(m_platform.windows.beeps, 0);
}

TEST_F(MASShortcutViewTest, AnInvalidCombinationBeepsAndRecordingGoesOn) {
  startRecordingOver(kOld);
  EXPECT_EQ(m_keys.type(kLetterA, kShiftFlag), Delivery::swallowed);
  EXPECT_EQ(m_platform.windows.beeps, 1);
  EXPECT_TRUE(m_view->isRecording());
  EXPECT_EQ(m_view->shortcutValue(), kOld);
  EXPECT_EQ(m_keys.type(kLetterA, kOptionFlag), Delivery::swallowed);
  EXPECT_EQ(m_platform.windows.beeps, 2);
}

TEST_F(MASShortcutViewTest, AValidCombinationIsKeptAndEndsRecording) {
  startRecordingOver(kOld);
  EXPECT_EQ(m_keys.type(kSpaceKeyCode, kOptionFlag), Delivery::swallowed);
  EXPECT_EQ(m_view->shortcutValue(), kNew);
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_FALSE(m_keys.isRecording());
  EXPECT_EQ(m_changes, 1);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
}

TEST_F(MASShortcutViewTest, ATakenCombinationIsExplainedAndRecordingGoesOnAfterTheAlert) {
  m_platform.hotKeys.takenByOthers.insert({kNew.carbonKeyCode(), kNew.carbonFlags()});
  startRecordingOver(kOld);
  m_keys.holdModifiers(kOptionFlag);
  EXPECT_EQ(m_keys.type(kSpaceKeyCode, kOptionFlag), Delivery::swallowed);
  ASSERT_TRUE(m_platform.dialogs.alert);
  const Alert& alert = *m_platform.dialogs.alert;
  EXPECT_TRUE(alert.isCritical);
  EXPECT_EQ(alert.message.find("This combination cannot be used because it is already used by a system-wide"),
            0u);
  EXPECT_EQ(alert.informativeText, "The key combination \u2325Space cannot be used");
  EXPECT_EQ(alert.button, "OK");
  EXPECT_FALSE(m_keys.isRecording()) << "the alert has the keyboard";
  EXPECT_TRUE(m_view->isRecording());
  m_platform.dialogs.closeAlert();
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
  EXPECT_TRUE(m_keys.isRecording());
  EXPECT_EQ(m_view->shortcutValue(), kOld);
  m_keys.type(97, 0); // F6 is free
  EXPECT_EQ(m_view->shortcutValue(), MASShortcut(97, 0));
}

TEST_F(MASShortcutViewTest, ACombinationOfTheProgramsMenuIsExplainedWithTheItem) {
  MASShortcut::setMainMenu({{"Select All", "a", kCommandFlag, {}}});
  startRecordingOver(std::nullopt);
  m_keys.type(kLetterA, kCommandFlag);
  ASSERT_TRUE(m_platform.dialogs.alert);
  EXPECT_EQ(
      m_platform.dialogs.alert->message,
      "This shortcut cannot be used because it is already used by the menu item \u2018Select All\u2019.");
}

TEST_F(MASShortcutViewTest, RecordingStoppedDuringTheAlertStaysStopped) {
  m_platform.hotKeys.takenByOthers.insert({kNew.carbonKeyCode(), kNew.carbonFlags()});
  startRecordingOver(kOld);
  m_keys.type(kSpaceKeyCode, kOptionFlag);
  m_view->setEnabled(false);
  m_platform.dialogs.closeAlert();
  EXPECT_FALSE(m_keys.isRecording());
}

TEST_F(MASShortcutViewTest, TheViewMayGoWhileItsAlertIsUp) {
  m_platform.hotKeys.takenByOthers.insert({kNew.carbonKeyCode(), kNew.carbonFlags()});
  startRecordingOver(kOld);
  m_keys.type(kSpaceKeyCode, kOptionFlag);
  m_view->removeFromSuperview();
  m_view.reset();
  m_platform.dialogs.closeAlert();
  EXPECT_FALSE(m_keys.isRecording());
}

// What ends recording, and who may record.

TEST_F(MASShortcutViewTest, LosingTheKeyboardFocusStopsRecording) {
  startRecordingOver(kOld);
  m_keys.loseFocus();
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_FALSE(m_keys.isRecording());
  EXPECT_EQ(m_view->shortcutValue(), kOld);
}

TEST_F(MASShortcutViewTest, DisablingStopsRecordingAndWatchingThePointer) {
  startRecordingOver(kOld);
  m_view->mouseEntered({});
  m_view->setEnabled(false);
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_FALSE(m_keys.isRecording());
  EXPECT_EQ(m_view->trackingArea(), std::nullopt);
  EXPECT_FALSE(m_view->isHinting());
  m_view->setRecording(true);
  EXPECT_FALSE(m_view->isRecording());
  m_view->setEnabled(true);
  EXPECT_EQ(m_view->trackingArea(), m_view->hintArea());
}

TEST_F(MASShortcutViewTest, StartingOneViewStopsTheOther) {
  const auto other = makeView();
  m_view->setRecording(true);
  other->setRecording(true);
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_TRUE(other->isRecording());
  m_keys.type(kSpaceKeyCode, kOptionFlag);
  EXPECT_EQ(other->shortcutValue(), kNew);
  EXPECT_EQ(m_view->shortcutValue(), std::nullopt);
  m_view->setRecording(true);
  EXPECT_TRUE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, AViewThatGoesWhileRecordingLetsTheKeyboardGo) {
  auto other = makeView();
  other->setRecording(true);
  other.reset();
  EXPECT_FALSE(m_keys.isRecording());
  m_view->setRecording(true);
  EXPECT_TRUE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, WithoutTheKeyboardNothingIsRecordedAndTheLogSaysSo) {
  m_keys.recordSucceeds = false;
  clickShortcutArea();
  EXPECT_FALSE(m_view->isRecording());
  EXPECT_EQ(m_platform.logged, std::vector<std::string>{"no shortcut can be recorded: the keyboard is held"});
  m_keys.recordSucceeds = true;
  clickShortcutArea();
  EXPECT_TRUE(m_view->isRecording());
}

TEST_F(MASShortcutViewTest, ThePlaceholderIsClearedWhenRecordingStartsAndStops) {
  m_view->setShortcutPlaceholder("left over");
  m_view->setRecording(true);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
  m_keys.holdModifiers(kShiftFlag);
  m_view->setRecording(false);
  EXPECT_EQ(m_view->shortcutPlaceholder(), "");
}

TEST_F(MASShortcutViewTest, EverySettingOfTheShortcutTellsTheBlockWithTheNewValue) {
  std::vector<std::optional<MASShortcut>> seen;
  m_view->setShortcutValueChange([&](MASShortcutView& view) { seen.push_back(view.shortcutValue()); });
  m_view->setShortcutValue(kOld);
  m_view->setShortcutValue(kOld);
  m_view->setShortcutValue(std::nullopt);
  EXPECT_EQ(seen, (std::vector<std::optional<MASShortcut>>{kOld, kOld, std::nullopt}));
  EXPECT_EQ(m_changes, 3);
}

TEST_F(MASShortcutViewTest, ToolTipsStandOverBothAreasOfAShownShortcut) {
  EXPECT_TRUE(m_view->toolTips().empty());
  m_view->setShortcutValue(kOld);
  EXPECT_EQ(m_view->toolTips(),
            (std::vector<MASShortcutView::ToolTip>{{m_view->shortcutArea(), "Click to record new shortcut"},
                                                   {m_view->hintArea(), "Delete shortcut"}}));
  m_view->setRecording(true);
  EXPECT_TRUE(m_view->toolTips().empty());
  m_view->setRecording(false);
  EXPECT_EQ(m_view->toolTips().size(), 2u);
  m_view->setEnabled(false);
  EXPECT_TRUE(m_view->toolTips().empty());
}

} // namespace
} // namespace orbel
