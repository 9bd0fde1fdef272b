#include "tests/backends/x11/support/WindowsTest.h"

namespace orbel::test {

void WindowsTest::SetUp() {
  X11Test::SetUp();
  m_connection = connect();
  m_pointerConnection = connect();
  ASSERT_TRUE(m_connection && m_pointerConnection);
  m_pointer = std::make_unique<x11::RawPointer>(*m_pointerConnection);
  m_clicks = std::make_unique<x11::ClickWatch>(*m_connection, *m_pointer);
  makeWindows();
}

void WindowsTest::TearDown() {
  m_windows.reset();
  m_clicks.reset();
  m_pointer.reset();
  m_pointerConnection.reset();
  m_connection.reset();
  X11Test::TearDown();
}

void WindowsTest::makeWindows() {
  m_windows.reset();
  m_windows = std::make_unique<x11::X11TopLevelWindows>(*m_connection, *m_clicks);
}

std::vector<std::uint64_t> WindowsTest::ids() {
  std::vector<std::uint64_t> all;
  for (const common::TopLevelWindow& one : windows().windows())
    all.push_back(one.id);
  return all;
}

std::optional<common::TopLevelWindow> WindowsTest::window(std::uint64_t id) {
  for (common::TopLevelWindow& one : windows().windows())
    if (one.id == id) return std::move(one);
  return std::nullopt;
}

std::unique_ptr<OtherClient> WindowsTest::programAt(int x, int y) {
  auto program = otherClient({"--title", "program", "--class", "program", "Program", "--at",
                              std::to_string(x), std::to_string(y), "--window"});
  EXPECT_TRUE(iterateUntil([&] { return isListed(program->window()); }))
      << "the client said " << testing::PrintToString(program->lines()) << ", its status is "
      << testing::PrintToString(program->program().exitStatus());
  return program;
}

void WindowsTest::raiseItself(xcb_window_t window) {
  driver().askManager(window, "_NET_ACTIVE_WINDOW", {2, connection().serverTime(), 0, 0, 0});
  driver().raise(window);
  xcb_set_input_focus(driver().xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
  driver().sync();
}

} // namespace orbel::test
