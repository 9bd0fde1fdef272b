#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/contracts/TopLevelWindowsContract.h"

namespace orbel::contracts {
namespace {

class FakeTopLevelWindowsSubject {
public:
  common::TopLevelWindows& windows() { return m_windows; }
  std::uint64_t open(const std::string& className) {
    common::TopLevelWindow window;
    window.id = ++m_last;
    window.processIdentifier = processOf(window.id);
    window.className = className;
    m_windows.open(window);
    return window.id;
  }
  void close(std::uint64_t window) { m_windows.close(window); }
  static std::int32_t processOf(std::uint64_t window) { return 1000 + static_cast<std::int32_t>(window); }
  bool becomesActive(std::uint64_t window) const { return m_windows.activeWindow() == window; }

private:
  linux::FakeTopLevelWindows m_windows;
  std::uint64_t m_last = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeTopLevelWindowsContract, TopLevelWindowsContract,
                               FakeTopLevelWindowsSubject);

} // namespace
} // namespace orbel::contracts
