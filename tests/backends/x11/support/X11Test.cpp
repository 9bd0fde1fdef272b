#include "tests/backends/x11/support/X11Test.h"

namespace orbel::test {

X11Test::X11Test(WindowManagerKind windowManager)
    : m_desktop({.windowManager = windowManager,
                 .background = Background::plain,
                 .bus = windowManager == WindowManagerKind::none ? BusPresence::absent : BusPresence::running,
                 .reach = DisplayReach::network}) {}

void X11Test::SetUp() {
  m_log.emplace();
  m_driver = std::make_unique<Driver>(display());
  // Beside every window of the tests.
  m_driver->moveTo(VirtualDisplay::kWidth - 10, VirtualDisplay::kHeight - 10);
}

void X11Test::TearDown() {
  m_driver.reset();
  m_log.reset();
}

std::unique_ptr<OtherClient> X11Test::otherClient(const std::vector<std::string>& options) {
  return std::make_unique<OtherClient>(display(), options);
}

} // namespace orbel::test
