// The shortcut recorder of the real program, by mouse and keyboard, under several keyboard layouts.
#include "tests/desktop/agent/AgentFixture.h"

#include "tests/desktop/harness/Bell.h"
#include "tests/desktop/harness/TestGrabber.h"

using namespace orbel::test;

namespace {

constexpr StoredShortcut kControlAltJ{kLetterJKeyCode, kControlFlag | kOptionFlag};
constexpr ScreenPoint kPlace{250, 780};
// Where Q is on an American keyboard, and A on a French one.
constexpr xcb_keycode_t kLeftmostLetter = 24;
constexpr std::int64_t kLeftmostLetterKeyCode = 12;

class RecorderTest : public AgentFixture {
protected:
  void start(std::optional<StoredShortcut> stored = {}) {
    if (stored) m_session.preferences().setShortcut(*stored);
    startAgentAlone();
    ASSERT_TRUE(openSettings());
    ASSERT_TRUE(findRecorder());
  }
  void useLayout(const std::string& layout) { m_session.setKeyboardLayout({layout}); }
  testing::AssertionResult click() {
    return changesRecorder([&] { m_input.clickAt(shortcutArea()); }, "it records");
  }
  void typeControlAlt(xcb_keysym_t key) { m_input.typeCombination({XK_Control_L, XK_Alt_L, key}); }
  // The menu that is summoned where the pointer is; and away again.
  testing::AssertionResult hotKeyWorks(xcb_keysym_t key) {
    if (const auto free = waitUntilKeyboardIsFree(); !free) return free;
    m_input.movePointer(kPlace);
    typeControlAlt(key);
    if (const auto shown = waitUntilMenuShown(kPlace); !shown) return shown;
    m_input.typeKey(XK_Escape);
    return waitUntilMenuHidden();
  }
  // Drawn, and with the keys.
  testing::AssertionResult waitForAlert() {
    if (const auto opened = waitForOwnWindows(2); !opened) return opened;
    const xcb_window_t alert = ownWindows().back();
    const auto hasFocus = [&] { return m_windows.focusWindow() == alert; };
    if (const auto focused = waitFor(hasFocus, "the alert has the keys"); !focused) return focused;
    const ScreenRect frame = m_windows.geometry(alert).value();
    const auto isDrawn = [&] {
      return m_session.screen().capture(frame).count([](const Rgb& c) { return c == Rgb{}; }) > 0;
    };
    return waitFor(isDrawn, "the alert is drawn");
  }
  // No menu has been asked for so far: one that had been would be there before the settings answer.
  bool hasNoMenu() {
    EXPECT_TRUE(agent().activateAction("settings"));
    EXPECT_TRUE(waitForSettings());
    return !menuWindow();
  }
};

class RecorderLayoutTest : public RecorderTest, public testing::WithParamInterface<const char*> {};

TEST_P(RecorderLayoutTest, ARecordedCombinationIsStoredShownAndWorksAtOnce) {
  useLayout(GetParam());
  start();
  const Picture empty = recorderText();
  ASSERT_TRUE(click());
  const Picture recording = recorderText();

  // The glyphs of held modifiers are shown before any key is pressed, and no longer once they are released.
  ASSERT_TRUE(changesRecorder([&] { m_input.pressKey(XK_Control_L); }, "Control"));
  ASSERT_TRUE(changesRecorder([&] { m_input.pressKey(XK_Alt_L); }, "Control and Alt"));
  savePicture(std::string("held-") + GetParam());
  const Picture held = recorderText();
  ASSERT_TRUE(changesRecorder([&] { m_input.releaseKey(XK_Alt_L); }, "Control alone"));
  ASSERT_TRUE(changesRecorder([&] { m_input.releaseKey(XK_Control_L); }, "nothing"));
  EXPECT_TRUE(waitUntilRecorderShows(recording));
  m_input.pressKey(XK_Control_L);
  m_input.pressKey(XK_Alt_L);
  EXPECT_TRUE(waitUntilRecorderShows(held));

  m_input.pressKey(XK_space);
  EXPECT_TRUE(waitUntilStored(kControlAltSpace));
  m_input.releaseKey(XK_space);
  m_input.releaseKey(XK_Alt_L);
  m_input.releaseKey(XK_Control_L);
  EXPECT_TRUE(
      waitFor([&] { return !(recorderText() == held) && !(recorderText() == empty); }, "the text is shown"));
  savePicture(std::string("recorded-") + GetParam());
  const Picture shown = recorderText();
  EXPECT_TRUE(hasNoMenu());
  EXPECT_TRUE(hotKeyWorks(XK_space));

  // The same text as for the same value from elsewhere, in both directions.
  m_session.preferences().setShortcut(kControlAltJ);
  EXPECT_TRUE(waitFor([&] { return !(recorderText() == shown); }, "another shortcut is shown"));
  m_session.preferences().setShortcut(kControlAltSpace);
  EXPECT_TRUE(waitUntilRecorderShows(shown));
}

TEST_P(RecorderLayoutTest, ALetterIsRecordedByItsPlaceOnTheKeyboard) {
  useLayout(GetParam());
  start();
  ASSERT_TRUE(click());
  m_input.pressKey(XK_Control_L);
  m_input.pressKey(XK_Alt_L);
  m_input.pressKeyCode(kLeftmostLetter);
  EXPECT_TRUE(waitUntilStored(StoredShortcut{kLeftmostLetterKeyCode, kControlFlag | kOptionFlag}));
  m_input.releaseKeyCode(kLeftmostLetter);
  m_input.releaseKey(XK_Alt_L);
  m_input.releaseKey(XK_Control_L);
  savePicture(std::string("letter-") + GetParam());
  EXPECT_TRUE(hotKeyWorks(std::string(GetParam()) == "fr" ? XK_a : XK_q));
}

TEST_P(RecorderLayoutTest, DeleteClearsTheShortcutAndTheCombinationIsFree) {
  useLayout(GetParam());
  start(kControlAltSpace);
  ASSERT_FALSE(TestGrabber(m_session, XK_space, kControlAltMask).isGranted());
  ASSERT_TRUE(click());
  m_input.typeKey(XK_BackSpace);
  EXPECT_TRUE(waitUntilStored(std::nullopt));
  EXPECT_TRUE(m_session.preferences().contains("GlobalShortcut")) << "the user's decision is forgotten";
  EXPECT_TRUE(waitUntilFree(XK_space, kControlAltMask));
}

TEST_P(RecorderLayoutTest, EscapeKeepsTheOldShortcut) {
  useLayout(GetParam());
  start(kControlAltSpace);
  const Picture shown = recorderText();
  ASSERT_TRUE(click());
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(waitUntilRecorderShows(shown));
  EXPECT_EQ(ownWindows().size(), 1u) << "Escape has closed the settings";
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_TRUE(hotKeyWorks(XK_space));
}

TEST_P(RecorderLayoutTest, ShiftAndALetterBeepAndRecordingGoesOn) {
  useLayout(GetParam());
  start();
  Bell bell(m_session.environment().at("DISPLAY"));
  ASSERT_TRUE(click());
  m_input.typeCombination({XK_Shift_L, XK_a});
  EXPECT_TRUE(waitFor([&] { return bell.rings() == 1; }, "the bell rings"));
  EXPECT_FALSE(m_session.preferences().contains("GlobalShortcut"));
  typeControlAlt(XK_space);
  EXPECT_TRUE(waitUntilStored(kControlAltSpace));
  EXPECT_EQ(bell.rings(), 1);
}

TEST_P(RecorderLayoutTest, RecordingThePresentHotKeyDoesNotOpenTheMenu) {
  useLayout(GetParam());
  start(kControlAltSpace);
  const Picture shown = recorderText();
  ASSERT_TRUE(click());
  typeControlAlt(XK_space);
  EXPECT_TRUE(waitUntilRecorderShows(shown));
  EXPECT_TRUE(hasNoMenu());
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_TRUE(hotKeyWorks(XK_space));
}

TEST_P(RecorderLayoutTest, ACombinationOfAnotherProgramShowsTheAlertAndRecordingGoesOn) {
  useLayout(GetParam());
  start();
  const TestGrabber other(m_session, XK_space, kControlAltMask);
  ASSERT_TRUE(other.isGranted());
  ASSERT_TRUE(click());
  const Picture recording = recorderText();
  typeControlAlt(XK_space);
  ASSERT_TRUE(waitForAlert());
  savePicture(std::string("taken-") + GetParam());
  EXPECT_EQ(other.pressCount(), 0) << "the other program's combination acted";
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForSettings());
  ASSERT_TRUE(waitUntilRecorderShows(recording));
  EXPECT_FALSE(m_session.preferences().contains("GlobalShortcut"));
  typeControlAlt(XK_j);
  EXPECT_TRUE(waitUntilStored(kControlAltJ));
}

INSTANTIATE_TEST_SUITE_P(Layouts, RecorderLayoutTest, testing::Values("us", "de", "fr"),
                         [](const auto& layout) { return std::string(layout.param); });

// As a global shortcut it would be taken from every program.
TEST_F(RecorderTest, ACommandOfTheProgramItselfShowsTheAlertAndIsNotRecorded) {
  start();
  ASSERT_TRUE(click());
  const Picture recording = recorderText();
  m_input.typeCombination({XK_Control_L, XK_q});
  ASSERT_TRUE(waitForAlert());
  savePicture("alert");
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForSettings());
  ASSERT_TRUE(waitUntilRecorderShows(recording));
  EXPECT_FALSE(m_session.preferences().contains("GlobalShortcut"));
  typeControlAlt(XK_j);
  EXPECT_TRUE(waitUntilStored(kControlAltJ));
}

TEST_F(RecorderTest, AHeldKeyThatEndsARecordingDoesNotOpenTheMenuByItsRepetitions) {
  start();
  m_session.markSpent();
  ASSERT_EQ(m_session.run({"xset", "r", "rate", "40", "100"}).exitStatus, 0);
  ASSERT_TRUE(click());
  m_input.pressKey(XK_Control_L);
  m_input.pressKey(XK_Alt_L);
  m_input.pressKey(XK_space);
  EXPECT_TRUE(waitUntilStored(kControlAltSpace));
  // The settings answer again and again while the key repeats.
  for (int round = 0; round < 20; ++round)
    EXPECT_TRUE(hasNoMenu());
  m_input.releaseKey(XK_space);
  m_input.releaseKey(XK_Alt_L);
  m_input.releaseKey(XK_Control_L);
  EXPECT_TRUE(hotKeyWorks(XK_space));
}

TEST_F(RecorderTest, TheHintAreaClearsTheShortcutAndCancelsARecording) {
  start(kControlAltSpace);
  ASSERT_TRUE(click());
  ASSERT_TRUE(changesRecorder([&] { m_input.clickAt(hintArea()); }, "cancelled"));
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  m_input.clickAt(hintArea());
  EXPECT_TRUE(waitUntilStored(std::nullopt));
  EXPECT_TRUE(waitUntilFree(XK_space, kControlAltMask));
}

TEST_F(RecorderTest, ItIsStartedByKeyboardAsWell) {
  start();
  ASSERT_TRUE(changesRecorder([&] { m_input.typeKey(XK_space); }, "it records"));
  typeControlAlt(XK_j);
  EXPECT_TRUE(waitUntilStored(kControlAltJ));
}

TEST_F(RecorderTest, ClickingAnotherProgramEndsTheRecordingAndItHasTheKeyboard) {
  const TestWindow window(m_session, {.frame = {60, 60, 200, 150}});
  start();
  const Picture empty = recorderText();
  ASSERT_TRUE(click());
  m_input.clickAt(window.frame().center());
  ASSERT_TRUE(waitUntilActive(window));
  EXPECT_TRUE(waitFor([&] { return m_windows.focusWindow() == window.id(); }, "it has the keys"));
  EXPECT_TRUE(waitUntilKeyboardIsFree());
  m_input.typeKey(XK_x);
  EXPECT_TRUE(waitFor([&] { return window.log().contains("key-press"); }, "it is typed to"));
  EXPECT_FALSE(m_session.preferences().contains("GlobalShortcut"));
}

TEST_F(RecorderTest, SuperAndWWhileRecordingClosesTheWindowAndFreesTheKeyboard) {
  const TestWindow window(m_session, {.frame = {60, 60, 200, 150}});
  start();
  ASSERT_TRUE(click());
  m_input.typeCombination({XK_Super_L, XK_w});
  EXPECT_TRUE(waitForOwnWindows(0));
  m_input.clickAt(window.frame().center());
  EXPECT_TRUE(waitFor([&] { return m_windows.focusWindow() == window.id(); }, "it has the keys"));
  EXPECT_TRUE(waitUntilKeyboardIsFree());
  m_input.typeKey(XK_x);
  EXPECT_TRUE(waitFor([&] { return window.log().contains("key-press"); }, "it is typed to"));
  EXPECT_FALSE(m_session.preferences().contains("GlobalShortcut"));
}

TEST_F(RecorderTest, SuperAndQWhileRecordingQuitsTheProgram) {
  start(kControlAltSpace);
  ASSERT_TRUE(click());
  m_input.typeCombination({XK_Super_L, XK_q});
  expectAgentQuits();
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_TRUE(waitUntilKeyboardIsFree());
}

TEST_F(RecorderTest, AShortcutThatAnotherProgramHeldAtTheStartWorksWhenItIsRecordedAgain) {
  auto other = std::make_unique<TestGrabber>(m_session, XK_space, kControlAltMask);
  ASSERT_TRUE(other->isGranted());
  start(kControlAltSpace);
  ASSERT_TRUE(waitForLog("another program holds Control+Alt+"));
  other.reset();
  const Picture shown = recorderText();
  ASSERT_TRUE(click());
  typeControlAlt(XK_space);
  EXPECT_TRUE(waitUntilRecorderShows(shown));
  EXPECT_EQ(m_session.preferences().shortcut(), kControlAltSpace);
  EXPECT_TRUE(hotKeyWorks(XK_space));
}

} // namespace
