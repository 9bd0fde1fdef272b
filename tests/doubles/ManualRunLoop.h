// A run loop whose time the test moves. Delays and frames run only inside advance(), in the order of
// their time.
#pragma once

#include "foundation/RunLoop.h"
#include "tests/doubles/ObserverList.h"

#include <functional>
#include <utility>
#include <vector>

namespace orbel {

class ManualRunLoop : public RunLoop {
public:
  static constexpr double kFrameInterval = 1.0 / 60;

  const Clock& clock() const override { return m_clock; }
  double now() const { return m_clock.time; }
  void after(double seconds, std::function<void()> block) override;
  Registration onEveryFrame(std::function<void()> block) override;

  // Moves time on by that much, running every delay that falls due, and a frame every sixtieth of a second
  // while frames are asked for.
  void advance(double seconds);
  // Moves time on as if the program had been busy: nothing runs until the next advance(), and the frames in
  // between are left out.
  void holdUp(double seconds) { m_clock.time += seconds; }
  // Runs what is due now (delays of 0 seconds).
  void runDue() { advance(0); }
  // Destroys the delays that have not run.
  void dropPending() { std::exchange(m_delays, {}); }
  bool wantsFrames() const { return m_frames.size() > 0; }
  std::size_t pendingDelays() const { return m_delays.size(); }
  int framesRun() const { return m_framesRun; }

private:
  struct ManualClock : Clock {
    double time = 1000;
    double now() const override { return time; }
  };
  struct Delay {
    double due;
    std::function<void()> block;
  };
  ManualClock m_clock;
  std::vector<Delay> m_delays;
  ObserverList m_frames;
  double m_nextFrame = 0;
  int m_framesRun = 0;
};

} // namespace orbel
