#include "backends/linux/GlibRunLoop.h"

#include "tests/contracts/RunLoopContract.h"
#include "tests/support/glib/MainLoop.h"

namespace orbel::contracts {
using namespace linux;
namespace {

class GlibRunLoopSubject {
public:
  RunLoop& loop() { return m_loop; }
  bool runUntil(const std::function<bool()>& condition) { return test::iterateUntil(condition); }
  void runWhatIsDue() { test::iterateWhatIsPending(); }
  void holdUp(double seconds) {
    const double end = m_loop.clock().now() + seconds;
    while (m_loop.clock().now() < end) {
    }
  }
  bool wouldWake() { return test::nextWakeUp() != -1; }

private:
  linux::GlibRunLoop m_loop;
};

INSTANTIATE_TYPED_TEST_SUITE_P(GlibRunLoopContract, RunLoopContract, GlibRunLoopSubject);

} // namespace
} // namespace orbel::contracts
