// The key recorder's contract, on an X server of the test's own. Another client's window stands for the
// program's own.
#include "backends/x11/X11KeyRecorder.h"
#include "foundation/Observers.h"
#include "tests/backends/x11/support/X11Test.h"
#include "tests/contracts/KeyRecorderContract.h"

#include <algorithm>
#include <linux/input-event-codes.h>

namespace orbel::contracts {
namespace {

class FocusedWindowDouble : public x11::FocusedWindow {
public:
  xcb_window_t current() const override { return window; }
  Registration observeLoss(std::function<void()> block) override { return m_observers.add(std::move(block)); }
  void lose() { m_observers.notify(); }
  xcb_window_t window = XCB_NONE;

private:
  Observers<> m_observers;
};

class X11KeyRecorderSubject : public test::X11Test {
public:
  X11KeyRecorderSubject() {
    SetUp();
    m_connection = connect();
    m_recorder = std::make_unique<x11::X11KeyRecorder>(*m_connection, m_focus);
    m_window = otherClient({"--window"});
    m_focus.window = m_window->window();
    EXPECT_TRUE(test::waitFor([&] { return driver().isViewable(m_focus.window); }, "the client is ready"));
    xcb_set_input_focus(driver().xcb(), XCB_INPUT_FOCUS_PARENT, m_focus.window, XCB_CURRENT_TIME);
    driver().sync();
  }
  ~X11KeyRecorderSubject() override {
    m_other.reset();
    m_window.reset();
    m_recorder.reset();
    m_connection.reset();
    TearDown();
  }
  void TestBody() override {}

  KeyRecorder& recorder() { return *m_recorder; }
  void typeA(std::uint64_t modifierFlags) {
    settle();
    std::vector<std::uint16_t> keys;
    if (modifierFlags & kControlFlag) keys.push_back(KEY_LEFTCTRL);
    if (modifierFlags & kOptionFlag) keys.push_back(KEY_LEFTALT);
    keys.push_back(KEY_A);
    driver().tapKeys(keys);
    settle();
  }
  // A key that comes after all others has come, so nothing is on its way any more.
  bool windowGotA() {
    settle();
    const auto earlier = count(kOtherKey);
    driver().tapKey(KEY_F1);
    EXPECT_TRUE(test::waitFor([&] { return count(kOtherKey) > earlier; }, "the client is ready"));
    const auto letters = count(kLetter);
    return std::exchange(m_letters, letters) != letters;
  }
  void loseFocus() { m_focus.lose(); }
  void letAnotherProgramHoldTheKeyboard() {
    m_focus.window = XCB_NONE; // otherwise the recording would wait
    m_other = otherClient({"--window", "--grab-keyboard"});
    EXPECT_TRUE(
        test::waitFor([&] { return m_other->hasWritten("keyboard grabbed"); }, "the client is ready"));
  }

private:
  static constexpr const char* kLetter = "key 38";
  static constexpr const char* kOtherKey = "key 67";
  std::ptrdiff_t count(const char* line) { return std::ranges::count(m_window->lines(), line); }
  // Everything that was typed so far has been handled.
  void settle() {
    driver().sync();
    m_connection->drain();
    test::iterateWhatIsPending();
    m_connection->drain(); // the server has dealt with what came of it
  }

  std::unique_ptr<x11::Connection> m_connection;
  FocusedWindowDouble m_focus;
  std::unique_ptr<x11::X11KeyRecorder> m_recorder;
  std::unique_ptr<test::OtherClient> m_window, m_other;
  std::ptrdiff_t m_letters = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11KeyRecorderContract, KeyRecorderContract, X11KeyRecorderSubject);

} // namespace
} // namespace orbel::contracts
