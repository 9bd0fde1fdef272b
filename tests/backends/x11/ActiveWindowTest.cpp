#include "backends/x11/ActiveWindow.h"

#include "support/WindowsTest.h"

namespace orbel::test {
namespace {

class ActiveWindowTest : public WindowsTest {};

TEST_F(ActiveWindowTest, NoneThatPassesIsNotNoticedAndNoneThatLastsIs) {
  startWindowManager("openbox");
  const auto program = programAt(50, 100);
  ASSERT_TRUE(iterateUntil([&] { return isActive(program->window()); }));
  const auto say = [&](xcb_window_t window) {
    driver().setNumbers(driver().root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    connection().drain();
  };
  say(XCB_NONE);
  EXPECT_TRUE(isActive(program->window()));
  say(program->window());
  EXPECT_TRUE(isActive(program->window()));
  say(XCB_NONE);
  EXPECT_TRUE(iterateUntil([&] { return !windows().activeWindow(); }));
  say(program->window());
  EXPECT_TRUE(isActive(program->window()));
}

TEST_F(ActiveWindowTest, AWindowThatIsGoneIsNotActiveThoughTheWindowManagerNamesIt) {
  startWindowManager("openbox");
  const auto program = programAt(50, 100);
  ASSERT_TRUE(iterateUntil([&] { return isActive(program->window()); }));
  driver().setNumbers(driver().root(), "_NET_ACTIVE_WINDOW", "WINDOW", {0x7FFFFFF});
  EXPECT_EQ(windows().activeWindow(), std::nullopt);
}

TEST_F(ActiveWindowTest, WithoutAWindowManagerItIsTheOneThatHoldsTheFocus) {
  EXPECT_EQ(windows().activeWindow(), std::nullopt);
  const auto program = programAt(50, 100);
  EXPECT_EQ(windows().activeWindow(), std::nullopt);
  xcb_set_input_focus(driver().xcb(), XCB_INPUT_FOCUS_PARENT, program->window(), XCB_CURRENT_TIME);
  driver().sync();
  EXPECT_TRUE(isActive(program->window()));
}

} // namespace
} // namespace orbel::test
