#include "tests/contracts/RunLoopContract.h"
#include "tests/doubles/ManualRunLoop.h"

namespace orbel::contracts {
namespace {

class ManualRunLoopSubject {
public:
  RunLoop& loop() { return m_loop; }
  bool runUntil(const std::function<bool()>& condition) {
    for (int step = 0; step < 1000 && !condition(); ++step)
      m_loop.advance(0.005);
    return condition();
  }
  void runWhatIsDue() { m_loop.runDue(); }
  void holdUp(double seconds) { m_loop.holdUp(seconds); }
  bool wouldWake() const { return m_loop.wantsFrames() || m_loop.pendingDelays() > 0; }

private:
  ManualRunLoop m_loop;
};

INSTANTIATE_TYPED_TEST_SUITE_P(ManualRunLoopContract, RunLoopContract, ManualRunLoopSubject);

} // namespace
} // namespace orbel::contracts
