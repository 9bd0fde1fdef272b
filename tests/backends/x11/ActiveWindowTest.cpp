#include "backends/x11/ActiveWindow.h"

#include "tests/backends/x11/support/WindowsTest.h"

namespace orbel::test {
namespace {

class ActiveWindowTest : public WindowsTest {
protected:
  // What a window manager says, with no other program saying anything else meanwhile.
  void beManager() {
    const xcb_window_t own = xcb_generate_id(driver().xcb());
    xcb_create_window(driver().xcb(), XCB_COPY_FROM_PARENT, own, driver().root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    driver().setNumbers(own, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {own});
    driver().setNumbers(driver().root(), "_NET_SUPPORTING_WM_CHECK", "WINDOW", {own});
  }
  void sayActive(xcb_window_t window) {
    driver().setNumbers(driver().root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window});
    connection().drain();
  }
};

TEST_F(ActiveWindowTest, NoneThatPassesIsNotNoticedAndNoneThatLastsIs) {
  const auto program = programAt(50, 100);
  beManager();
  sayActive(program->window());
  EXPECT_TRUE(isActive(program->window()));
  sayActive(XCB_NONE);
  EXPECT_TRUE(isActive(program->window()));
  sayActive(program->window());
  EXPECT_TRUE(isActive(program->window()));
  sayActive(XCB_NONE);
  EXPECT_TRUE(iterateUntil([&] { return !windows().activeWindow(); }));
  sayActive(program->window());
  EXPECT_TRUE(isActive(program->window()));
}

TEST_F(ActiveWindowTest, AWindowThatIsGoneIsNotActiveThoughTheWindowManagerNamesIt) {
  beManager();
  sayActive(0x7FFFFFF);
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
