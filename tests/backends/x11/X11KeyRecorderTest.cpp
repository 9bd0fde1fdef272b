#include "backends/x11/X11KeyRecorder.h"

#include "backends/x11/PassiveKeyGrabs.h"
#include "platform/HotKeyModifier.h"
#include "tests/backends/x11/support/X11Test.h"
#include "tests/support/x11/KeyboardGroup.h"

#include <algorithm>
#include <linux/input-event-codes.h>

namespace orbel::test {
namespace {

constexpr std::uint64_t kLetterA = 0;
constexpr std::uint64_t kLetterQ = 12;
constexpr std::uint64_t kLetterY = 16;
constexpr std::uint64_t kLetterZ = 6;
constexpr std::uint64_t kOne = 18;
constexpr std::uint64_t kSpace = 49;
constexpr std::uint64_t kRightOption = 61;

class FakeFocusedWindow : public x11::FocusedWindow {
public:
  xcb_window_t current() const override { return window; }
  Registration observeLoss(std::function<void()> block) override {
    const auto entry = std::make_shared<std::function<void()>>(std::move(block));
    m_observer = entry;
    return Registration([entry] { *entry = nullptr; });
  }
  void lose() const {
    if (const auto observer = m_observer.lock(); observer && *observer) (*observer)();
  }
  bool isObserved() const {
    const auto observer = m_observer.lock();
    return observer && *observer;
  }
  xcb_window_t window = XCB_NONE;

private:
  std::weak_ptr<std::function<void()>> m_observer;
};

// What was reported, in short: "49/c0000", and "mods 40000" for a change of the modifiers.
std::string inShort(const KeyEvent& event) {
  char text[64];
  if (event.modifierChange)
    std::snprintf(text, sizeof text, "mods %llx", static_cast<unsigned long long>(event.modifierFlags));
  else
    std::snprintf(text, sizeof text, "%llu/%llx", static_cast<unsigned long long>(event.keyCode),
                  static_cast<unsigned long long>(event.modifierFlags));
  return text;
}
std::string key(std::uint64_t code, std::uint64_t flags = 0) {
  return inShort({code, flags});
}
std::string held(std::uint64_t flags) {
  return inShort({0, flags, true});
}
using Told = std::vector<std::string>;

class X11KeyRecorderTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    m_connection = connect();
    ASSERT_TRUE(m_connection);
    m_grabs = std::make_unique<x11::PassiveKeyGrabs>(*m_connection);
    m_recorder = std::make_unique<x11::X11KeyRecorder>(*m_connection, m_focus);
    // Its window stands for the one that holds the recorder.
    m_window = otherClient({"--window"});
    focus(m_window->window());
    m_focus.window = m_window->window();
  }
  void TearDown() override {
    m_recording.reset();
    m_window.reset();
    m_recorder.reset();
    m_grabs.reset();
    m_connection.reset();
    X11Test::TearDown();
  }
  void focus(xcb_window_t window) {
    ASSERT_TRUE(waitFor([&] { return driver().isViewable(window); }, "it is shown"));
    xcb_set_input_focus(driver().xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    driver().sync();
    ASSERT_EQ(driver().focus(), window);
  }
  void startRecording() {
    record({[this](const KeyEvent& event) { return tell(event); },
            [this] { m_focusLosses++, m_recording.reset(); }});
  }
  void record(KeyRecorder::Handlers handlers) {
    auto recording = m_recorder->record(std::move(handlers));
    m_cause = recording.cause();
    m_recording = std::move(recording).valueOr({});
  }
  bool tell(const KeyEvent& event) {
    m_told.push_back(inShort(event));
    if (!event.modifierChange && event.keyCode == m_endsAt) m_recording.reset();
    return m_swallows;
  }
  // Everything that was typed so far has been handled.
  void settle() {
    driver().sync();
    m_connection->drain();
    iterateWhatIsPending();
    m_connection->drain(); // the server has dealt with what came of it
  }
  // What the window was typed so far, and nothing that was typed before is still on its way to it.
  bool windowGot(const std::string& line) { return m_window->hasWritten(line); }
  bool windowGetsTheNextKey() {
    settle();
    driver().tapKey(KEY_F1);
    return waitFor([&] { return windowGot("key 67"); }, "the key reaches the window");
  }

  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::PassiveKeyGrabs> m_grabs;
  FakeFocusedWindow m_focus;
  std::unique_ptr<x11::X11KeyRecorder> m_recorder;
  std::unique_ptr<OtherClient> m_window;
  Registration m_recording;
  std::string m_cause; // why the last recording could not start
  Told m_told;
  std::uint64_t m_endsAt = kSpace;
  bool m_swallows = true;
  int m_focusLosses = 0;
};

TEST_F(X11KeyRecorderTest, EveryModifierHasItsFlagOnEitherSideAndLocksHaveNone) {
  startRecording();
  const std::pair<std::uint16_t, std::uint64_t> modifiers[] = {
      {KEY_LEFTSHIFT, kShiftFlag},   {KEY_RIGHTSHIFT, kShiftFlag}, {KEY_LEFTCTRL, kControlFlag},
      {KEY_RIGHTCTRL, kControlFlag}, {KEY_LEFTALT, kOptionFlag},   {KEY_LEFTMETA, kCommandFlag},
      {KEY_RIGHTMETA, kCommandFlag}};
  for (const auto& [modifier, flag] : modifiers) {
    m_told.clear();
    driver().tapKeys({modifier, KEY_A});
    settle();
    EXPECT_EQ(m_told, Told({held(flag), key(kLetterA, flag), held(0)})) << modifier;
  }
  driver().tapKey(KEY_CAPSLOCK);
  driver().tapKey(KEY_NUMLOCK);
  settle();
  m_told.clear();
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told({key(kLetterA)}));
}

TEST_F(X11KeyRecorderTest, KeysAreTheSameUnderEveryLayout) {
  for (const std::string layout : {"us", "de", "fr", "ru"}) {
    session().setKeyboardLayout({layout});
    iterateWhatIsPending();
    startRecording();
    m_told.clear();
    for (const std::uint16_t code : std::vector<std::uint16_t>{KEY_A, KEY_Q, KEY_Y, KEY_Z, KEY_1})
      driver().tapKeys({KEY_LEFTMETA, code});
    settle();
    std::erase_if(m_told, [](const std::string& event) { return event.starts_with("mods"); });
    EXPECT_EQ(m_told,
              Told({key(kLetterA, kCommandFlag), key(kLetterQ, kCommandFlag), key(kLetterY, kCommandFlag),
                    key(kLetterZ, kCommandFlag), key(kOne, kCommandFlag)}))
        << layout;
    m_recording.reset();
  }
}

TEST_F(X11KeyRecorderTest, TheSecondGroupOfALayoutMakesNoDifference) {
  session().setKeyboardLayout({"-layout", "us,ru"});
  lockKeyboardGroup(driver().xcb(), 1);
  driver().sync();
  startRecording();
  driver().tapKeys({KEY_LEFTALT, KEY_A});
  settle();
  EXPECT_EQ(m_told, Told({held(kOptionFlag), key(kLetterA, kOptionFlag), held(0)}));
}

TEST_F(X11KeyRecorderTest, TheKeyForTheThirdLevelAddsNoFlag) {
  session().setKeyboardLayout({"de"});
  iterateWhatIsPending();
  startRecording();
  driver().tapKeys({KEY_RIGHTALT, KEY_Q});
  settle();
  EXPECT_EQ(m_told, Told({key(kRightOption), held(0), key(kLetterQ), held(0)}));
}

TEST_F(X11KeyRecorderTest, AKeyThatNoShortcutCanNameIsToldAsOneWithoutANumber) {
  startRecording();
  driver().tapKey(KEY_PLAYPAUSE);
  settle();
  EXPECT_EQ(m_told, Told({key(kNoKeyCode)}));
}

TEST_F(X11KeyRecorderTest, AHeldKeyIsToldOnce) {
  startRecording();
  driver().pressKey(KEY_A);
  int presses = 0;
  const auto counting = m_connection->observeEvents([&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) == XCB_KEY_PRESS) ++presses;
  });
  ASSERT_TRUE(iterateUntil([&] { return presses >= 3; })) << "the keyboard does not repeat";
  EXPECT_EQ(m_told, Told({key(kLetterA)}));
  driver().releaseKey(KEY_A);
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told({key(kLetterA), key(kLetterA)}));
}

TEST_F(X11KeyRecorderTest, AKeyHeldFromBeforeIsNotTold) {
  driver().pressKey(KEY_SPACE); // it has pressed the button that starts the recording
  startRecording();
  int presses = 0;
  const auto counting = m_connection->observeEvents([&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) == XCB_KEY_PRESS) ++presses;
  });
  ASSERT_TRUE(iterateUntil([&] { return presses >= 2; })) << "the keyboard does not repeat";
  driver().releaseKey(KEY_SPACE);
  settle();
  EXPECT_EQ(m_told, Told());
  EXPECT_TRUE(m_recording);
  driver().tapKey(KEY_SPACE);
  settle();
  EXPECT_EQ(m_told, Told({key(kSpace)}));
}

TEST_F(X11KeyRecorderTest, OurOwnAndOtherProgramsCombinationsAreToldAndDoNotAct) {
  int ownPresses = 0;
  const auto own = m_grabs->grab({KEY_SPACE, kHotKeyOption | kHotKeyControl}, [&] { ++ownPresses; });
  ASSERT_TRUE(driver().grabKey(KEY_A, XCB_MOD_MASK_CONTROL));
  m_endsAt = kLetterZ;
  startRecording();
  driver().tapKeys({KEY_LEFTCTRL, KEY_A});
  driver().tapKeys({KEY_LEFTCTRL, KEY_LEFTALT, KEY_SPACE});
  settle();
  EXPECT_EQ(std::ranges::count(m_told, key(kLetterA, kControlFlag)), 1);
  EXPECT_EQ(std::ranges::count(m_told, key(kSpace, kControlFlag | kOptionFlag)), 1);
  EXPECT_EQ(ownPresses, 0);
  m_recording.reset();
  driver().tapKeys({KEY_LEFTCTRL, KEY_LEFTALT, KEY_SPACE});
  settle();
  EXPECT_EQ(ownPresses, 1);
}

TEST_F(X11KeyRecorderTest, TheKeyThatEndsARecordingDoesNotActUntilItIsPressedAgain) {
  int presses = 0;
  Registration hotKey;
  record({[&](const KeyEvent& event) {
            if (event.keyCode != kSpace) return true;
            // As the settings do: the new combination is held at once.
            hotKey = *m_grabs->grab({KEY_SPACE, kHotKeyOption}, [&] { ++presses; });
            m_recording.reset();
            return true;
          },
          [] {}});
  int repetitions = 0;
  const auto counting = m_connection->observeEvents([&](const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) == XCB_KEY_PRESS) ++repetitions;
  });
  driver().pressKey(KEY_LEFTALT);
  driver().pressKey(KEY_SPACE);
  ASSERT_TRUE(iterateUntil([&] { return repetitions >= 5; })) << "the keyboard does not repeat";
  EXPECT_TRUE(hotKey);
  EXPECT_EQ(presses, 0);
  driver().releaseKey(KEY_SPACE);
  settle();
  EXPECT_EQ(presses, 0);
  driver().tapKey(KEY_SPACE);
  settle();
  EXPECT_EQ(presses, 1);
  driver().releaseKey(KEY_LEFTALT);
  EXPECT_TRUE(windowGetsTheNextKey());
  EXPECT_FALSE(windowGot("key 65"));
}

TEST_F(X11KeyRecorderTest, AHotKeyOfOursThatIsHeldGivesWay) {
  int presses = 0;
  const auto hotKey = *m_grabs->grab({KEY_SPACE, kHotKeyOption}, [&] { ++presses; });
  driver().pressKey(KEY_LEFTALT);
  driver().pressKey(KEY_SPACE);
  settle();
  ASSERT_EQ(presses, 1);
  startRecording();
  ASSERT_TRUE(m_recording);
  driver().releaseKey(KEY_SPACE);
  driver().tapKey(KEY_A);
  driver().releaseKey(KEY_LEFTALT);
  settle();
  EXPECT_EQ(std::ranges::count(m_told, key(kLetterA, kOptionFlag)), 1);
  m_recording.reset();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  settle();
  EXPECT_EQ(presses, 2);
}

TEST_F(X11KeyRecorderTest, WhileAnotherProgramHoldsTheKeyboardTheRecordingWaitsAndSaysSo) {
  auto other = otherClient({"--window", "--grab-keyboard"});
  ASSERT_TRUE(other->hasWritten("keyboard grabbed"));
  startRecording();
  ASSERT_TRUE(m_recording);
  EXPECT_TRUE(hasLogged("another program holds the keyboard"));
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told());
  other.reset();
  EXPECT_TRUE(iterateUntil([&] {
    driver().tapKey(KEY_A);
    settle();
    return !m_told.empty();
  }));
  EXPECT_EQ(m_told.front(), key(kLetterA));
  EXPECT_EQ(m_focusLosses, 0);
}

TEST_F(X11KeyRecorderTest, AnotherProgramsHeldHotKeyOnlyDelaysTheRecording) {
  ASSERT_TRUE(driver().grabKey(KEY_F5, 0));
  driver().pressKey(KEY_F5);
  startRecording();
  ASSERT_TRUE(m_recording);
  EXPECT_TRUE(hasLogged("another program holds the keyboard"));
  driver().releaseKey(KEY_F5);
  settle();
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told({key(kLetterA)}));
}

TEST_F(X11KeyRecorderTest, ARecordingThatEndsWhileItWaitsTakesNothing) {
  auto other = otherClient({"--window", "--grab-keyboard"});
  startRecording();
  m_recording.reset();
  other.reset();
  settle();
  EXPECT_TRUE(windowGetsTheNextKey());
  EXPECT_EQ(m_told, Told());
}

TEST_F(X11KeyRecorderTest, WithoutAFocusedWindowTheKeyboardIsTakenAllTheSame) {
  m_focus.window = XCB_NONE;
  startRecording();
  ASSERT_TRUE(m_recording);
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told({key(kLetterA)}));
  m_recording.reset();
  EXPECT_TRUE(windowGetsTheNextKey());
}

TEST_F(X11KeyRecorderTest, WithoutAFocusedWindowAHeldKeyboardIsRefused) {
  m_focus.window = XCB_NONE;
  const auto other = otherClient({"--window", "--grab-keyboard"});
  startRecording();
  EXPECT_FALSE(m_recording);
  EXPECT_EQ(m_cause, "the keyboard cannot be taken: another program holds it");
}

TEST_F(X11KeyRecorderTest, AWindowThatHasGoneMeanwhileDoesNotMatter) {
  driver().sync();
  m_window.reset();
  startRecording();
  ASSERT_TRUE(m_recording);
  driver().tapKey(KEY_A);
  settle();
  EXPECT_EQ(m_told, Told({key(kLetterA)}));
}

TEST_F(X11KeyRecorderTest, TheLossOfTheFocusIsToldWhileItRecords) {
  startRecording();
  m_focus.lose();
  EXPECT_EQ(m_focusLosses, 1);
  EXPECT_FALSE(m_recording);
  EXPECT_FALSE(m_focus.isObserved());
  EXPECT_TRUE(windowGetsTheNextKey());
  EXPECT_EQ(m_told, Told());
}

TEST_F(X11KeyRecorderTest, AFocusThatTheServerMovesAwayIsReportedWithoutQt) {
  const auto other = otherClient({"--window", "--at", "400", "0"});
  startRecording();
  focus(other->window());
  settle();
  EXPECT_EQ(m_focusLosses, 1);
  EXPECT_FALSE(m_recording);
  driver().tapKey(KEY_F1);
  EXPECT_TRUE(waitFor([&] { return other->hasWritten("key 67"); }, "it gets the key"));
  EXPECT_EQ(m_told, Told());
}

TEST_F(X11KeyRecorderTest, AWindowThatIsHiddenHasLostTheFocus) {
  const auto shown = otherClient({"--window", "--commands"});
  focus(shown->window());
  m_focus.window = shown->window();
  startRecording();
  shown->program().writeLine("unmap " + std::to_string(shown->window()));
  EXPECT_TRUE(iterateUntil([&] { return m_focusLosses == 1; }));
}

TEST_F(X11KeyRecorderTest, AWindowHiddenWhileTheEndingKeyIsHeldFreesTheKeyboard) {
  const auto settings = otherClient({"--window", "--commands"});
  const std::string name = std::to_string(settings->window());
  focus(settings->window());
  m_focus.window = settings->window();
  startRecording();
  driver().pressKey(KEY_SPACE);
  settle();
  ASSERT_FALSE(m_recording);
  settings->program().writeLine("unmap " + name);
  ASSERT_TRUE(waitFor([&] { return !driver().isViewable(settings->window()); }, "it is hidden"));
  driver().releaseKey(KEY_SPACE);
  settle();

  settings->program().writeLine("map " + name);
  focus(settings->window());
  m_told.clear();
  startRecording();
  ASSERT_TRUE(m_recording);
  driver().tapKey(KEY_SPACE);
  settle();
  EXPECT_EQ(m_told, Told({key(kSpace)}));
}

TEST_F(X11KeyRecorderTest, AnEventThatIsNotSwallowedReachesTheWindow) {
  m_swallows = false;
  m_endsAt = kLetterQ;
  startRecording();
  driver().tapKeys({KEY_LEFTMETA, KEY_Q});
  settle();
  EXPECT_FALSE(m_recording);
  EXPECT_TRUE(waitFor([&] { return windowGot("key 24"); }, "the key reaches the window"));
  EXPECT_TRUE(windowGetsTheNextKey());
}

TEST_F(X11KeyRecorderTest, TheKeyboardIsFreeWhenTheRecorderEndsInTheMiddle) {
  startRecording();
  ASSERT_TRUE(m_recording);
  m_recorder.reset();
  m_recording.reset(); // late and harmless
  m_connection->drain();
  driver().tapKey(KEY_F1);
  EXPECT_TRUE(waitFor([&] { return windowGot("key 67"); }, "the key reaches the window"));
}

TEST_F(X11KeyRecorderTest, WhetherACombinationIsTakenCanBeAskedWhileItRecords) {
  startRecording();
  ASSERT_TRUE(driver().grabKey(KEY_A, XCB_MOD_MASK_CONTROL));
  EXPECT_TRUE(m_grabs->isHeldByAnother({KEY_A, kHotKeyControl}));
  EXPECT_FALSE(m_grabs->isHeldByAnother({KEY_A, kHotKeyOption}));
}

} // namespace
} // namespace orbel::test
