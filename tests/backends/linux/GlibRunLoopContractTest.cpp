#include "backends/linux/GlibRunLoop.h"

#include "Waiting.h"
#include "contracts/RunLoopContract.h"

namespace orbel::contracts {
namespace {

class GlibRunLoopSubject {
public:
  static constexpr const char* kName = "GlibRunLoop";
  RunLoop& loop() { return m_loop; }
  bool runUntil(const std::function<bool()>& condition) { return waitUntil(condition); }
  void runWhatIsDue() { runReadySources(); }
  void holdUp(double seconds) {
    const double end = m_loop.clock().now() + seconds;
    while (m_loop.clock().now() < end) {
    }
  }
  bool wouldWake() { return nextWakeUp() != -1; }

private:
  GlibRunLoop m_loop;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Backend, RunLoopContract, GlibRunLoopSubject, SubjectNames);

} // namespace
} // namespace orbel::contracts
