#include "bench/desktop/MovingPointer.h"

#include "tests/support/x11/DisplayConnection.h"

#include <chrono>
#include <xcb/xtest.h>

namespace orbel::bench {

namespace {
constexpr std::chrono::milliseconds kInterval{1};
constexpr std::int64_t kLength = 600; // pixels, and movements from one end to the other
constexpr std::int16_t kLeft = 300;
constexpr std::int16_t kTop = 500;
} // namespace

MovingPointer::MovingPointer(const std::string& displayName)
    : m_thread([this, displayName] { run(displayName); }) {}

MovingPointer::~MovingPointer() {
  m_isMoving = false;
  m_thread.join();
}

void MovingPointer::run(const std::string& displayName) {
  test::DisplayConnection display(displayName);
  auto due = std::chrono::steady_clock::now();
  while (m_isMoving) {
    const std::int64_t place = m_movements % (2 * kLength);
    const auto x = static_cast<std::int16_t>(kLeft + (place < kLength ? place : 2 * kLength - place));
    xcb_test_fake_input(display.get(), XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, display.root(), x, kTop, 0);
    xcb_flush(display.get());
    ++m_movements;
    due += kInterval;
    std::this_thread::sleep_until(due); // the pace of the mouse
  }
}

} // namespace orbel::bench
