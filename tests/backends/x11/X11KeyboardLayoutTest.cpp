#include "backends/x11/X11KeyboardLayout.h"

#include "scene/Event.h"
#include "tests/backends/x11/support/X11Test.h"
#include "tests/support/x11/KeyboardGroup.h"

#include <linux/input-event-codes.h>

namespace orbel::test {
namespace {

class X11KeyboardLayoutTest : public X11Test {
protected:
  void SetUp() override {
    X11Test::SetUp();
    session().setKeyboardLayout({"us"});
    m_connection = connect();
    ASSERT_TRUE(m_connection);
    m_layout = std::make_unique<x11::X11KeyboardLayout>(*m_connection);
  }
  void TearDown() override {
    m_layout.reset();
    m_connection.reset();
    X11Test::TearDown();
  }
  std::string text(std::uint64_t virtualKeyCode) const {
    return m_layout->textForKeyCode(virtualKeyCode).value_or("nothing");
  }

  std::unique_ptr<x11::Connection> m_connection;
  std::unique_ptr<x11::X11KeyboardLayout> m_layout;
};

TEST_F(X11KeyboardLayoutTest, AKeyYieldsWhatItTypesWithoutModifiers) {
  EXPECT_EQ(text(6), "z");
  EXPECT_EQ(text(18), "1");
  EXPECT_EQ(text(41), ";");
  EXPECT_EQ(text(50), "`");
}

TEST_F(X11KeyboardLayoutTest, AKeyThatTypesNothingYieldsNothing) {
  EXPECT_EQ(text(123), "nothing"); // arrow left
  EXPECT_EQ(text(122), "nothing"); // F1
  EXPECT_EQ(text(56), "nothing");  // Shift
}

TEST_F(X11KeyboardLayoutTest, CodesWithoutAKeyYieldNothing) {
  EXPECT_EQ(text(52), "nothing");
  EXPECT_EQ(text(kNoKeyCode), "nothing");
}

TEST_F(X11KeyboardLayoutTest, AnotherLayoutIsSeenAtOnce) {
  EXPECT_EQ(text(6), "z");
  session().setKeyboardLayout({"de"});
  EXPECT_EQ(text(6), "y");
  EXPECT_EQ(text(41), "ö");
  session().setKeyboardLayout({"us"});
  EXPECT_EQ(text(6), "z");
}

TEST_F(X11KeyboardLayoutTest, DeadKeysYieldTheirSpacingCharacter) {
  session().setKeyboardLayout({"de"});
  EXPECT_EQ(text(24), "´");
  EXPECT_EQ(text(50), "^");
  session().setKeyboardLayout({"us", "-variant", "intl"});
  EXPECT_EQ(text(50), "`");
}

TEST_F(X11KeyboardLayoutTest, TheGroupThatIsSwitchedToCounts) {
  session().setKeyboardLayout({"-layout", "us,ru"});
  EXPECT_EQ(text(0), "a");
  lockKeyboardGroup(driver().xcb(), 1);
  driver().sync();
  EXPECT_EQ(text(0), "ф");
  lockKeyboardGroup(driver().xcb(), 0);
  driver().sync();
  EXPECT_EQ(text(0), "a");
}

TEST_F(X11KeyboardLayoutTest, HeldAndLockedModifiersDoNotCount) {
  driver().tapKey(KEY_CAPSLOCK);
  driver().pressKey(KEY_LEFTSHIFT);
  EXPECT_EQ(text(0), "a");
  EXPECT_EQ(text(18), "1");
  driver().releaseKey(KEY_LEFTSHIFT);
}

TEST_F(X11KeyboardLayoutTest, TypingSendsItNothing) {
  driver().tapKey(KEY_A); // the first key of another keyboard than before is a change of the keymap
  m_connection->drain();
  int events = 0;
  const auto counting = m_connection->observeEvents([&](const xcb_generic_event_t&) { ++events; });
  driver().tapKeys({KEY_LEFTSHIFT, KEY_A});
  m_connection->drain();
  EXPECT_EQ(events, 0);
}

} // namespace
} // namespace orbel::test
