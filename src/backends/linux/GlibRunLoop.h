// The run loop on GLib's default main context, which Qt's own event loop shares.
// Seconds on the monotonic clock. Nothing wakes the process while no delay is pending and no frames are
// requested. Main thread only; made by main before anything that waits for time. Blocks still pending at the
// end are dropped.
#pragma once

#include "foundation/Lifetime.h"
#include "foundation/RunLoop.h"

#include <memory>

namespace orbel::linux {

class GlibRunLoop : public RunLoop {
public:
  static constexpr double kFramesPerSecond = 60;

  GlibRunLoop();
  ~GlibRunLoop() override;
  GlibRunLoop(const GlibRunLoop&) = delete;
  GlibRunLoop& operator=(const GlibRunLoop&) = delete;

  const Clock& clock() const override;
  void after(double seconds, std::function<void()> block) override;
  // Frames keep their raster of a sixtieth of a second from the first registration on; one that comes too
  // late is left out. They also run in a nested loop that a frame's own block has started.
  Registration onEveryFrame(std::function<void()> block) override;

  // Destroys all blocks that still wait for their time. What they hold may need the desktop, so main calls
  // this while the rest of it is still there.
  void dropPending();

private:
  struct Delays;
  struct Frames;
  std::unique_ptr<Clock> m_clock;
  std::shared_ptr<Delays> m_delays;
  std::unique_ptr<Frames> m_frames;
  Lifetime m_lifetime; // registrations may outlive the run loop
};

} // namespace orbel::linux
