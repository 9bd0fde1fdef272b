#include "backends/x11/EscapeGrab.h"

#include "backends/common/VirtualKeyCodes.h"
#include "backends/x11/PassiveKeyGrabs.h"
#include "platform/HotKeyModifier.h"
#include "tests/backends/x11/support/X11Test.h"

#include <linux/input-event-codes.h>

namespace orbel::test {
namespace {

class EscapeGrabTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    m_connection = connect();
    ASSERT_TRUE(m_connection);
    m_grabs = std::make_unique<x11::PassiveKeyGrabs>(*m_connection);
  }
  void TearDown() override {
    m_grabs.reset();
    m_connection.reset();
    X11Test::TearDown();
  }
  // Everything that was typed so far has been handled, and the server has dealt with what came of it.
  void settle() {
    driver().sync();
    m_connection->drain();
    iterateWhatIsPending();
    m_connection->drain();
  }

  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::PassiveKeyGrabs> m_grabs;
};

TEST_F(EscapeGrabTest, EscapeIsGrabbedWhileEnabledWhateverTheLocksAre) {
  int escapes = 0;
  x11::EscapeGrab escape(*m_grabs, [&] { ++escapes; });
  driver().tapKey(KEY_ESC);
  settle();
  EXPECT_EQ(escapes, 0);
  escape.setEnabled(true);
  EXPECT_TRUE(escape.isEnabled());
  driver().tapKey(KEY_ESC);
  EXPECT_TRUE(iterateUntil([&] { return escapes == 1; }));
  driver().tapKey(KEY_CAPSLOCK);
  driver().tapKey(KEY_NUMLOCK);
  driver().tapKey(KEY_ESC);
  EXPECT_TRUE(iterateUntil([&] { return escapes == 2; }));
  driver().tapKeys({KEY_LEFTSHIFT, KEY_ESC});
  settle();
  EXPECT_EQ(escapes, 2) << "Escape alone is meant";
  escape.setEnabled(false);
  settle();
  driver().tapKey(KEY_ESC);
  settle();
  EXPECT_EQ(escapes, 2);
}

TEST_F(EscapeGrabTest, TheEscapeGrabSilencesNeitherHotKeysNorTyping) {
  int escapes = 0;
  x11::EscapeGrab escape(*m_grabs, [&] { ++escapes; });
  escape.setEnabled(true);
  int presses = 0;
  const auto hotKey = m_grabs->grab({KEY_SPACE, kHotKeyOption}, [&] { ++presses; });
  const auto other = otherClient({"--window"});
  ASSERT_TRUE(iterateUntil([&] { return driver().isViewable(other->window()); }));
  xcb_set_input_focus(driver().xcb(), XCB_INPUT_FOCUS_PARENT, other->window(), XCB_CURRENT_TIME);
  driver().sync();
  driver().tapKeys({KEY_LEFTALT, KEY_SPACE});
  driver().tapKey(KEY_A);
  driver().tapKey(KEY_ESC);
  EXPECT_TRUE(iterateUntil([&] { return presses == 1 && escapes == 1; }));
  const auto hasTyped = [&](int evdevCode) {
    return other->hasWritten("key " + std::to_string(evdevCode + common::VirtualKeyCodes::kXKeyCodeOffset));
  };
  EXPECT_TRUE(iterateUntil([&] { return hasTyped(KEY_A); }));
  EXPECT_FALSE(hasTyped(KEY_ESC));
}

TEST_F(EscapeGrabTest, AnEscapeThatAnotherProgramHoldsLeavesTheGrabOffAndLogsIt) {
  ASSERT_TRUE(driver().grabKey(KEY_ESC, 0));
  x11::EscapeGrab escape(*m_grabs, [] {});
  escape.setEnabled(true);
  EXPECT_FALSE(escape.isEnabled());
  EXPECT_TRUE(hasLogged("another program holds key 1"));
}

} // namespace
} // namespace orbel::test
