// One call from the GLib main loop, later: on its next turn or after some milliseconds. Scheduling it again
// while it is pending changes nothing, so many reasons make one call. Costs nothing while it is not pending.
#pragma once

#include <chrono>
#include <functional>

namespace orbel::x11 {

class DelayedCall {
public:
  explicit DelayedCall(std::function<void()> block);
  ~DelayedCall(); // cancels
  DelayedCall(const DelayedCall&) = delete;
  DelayedCall& operator=(const DelayedCall&) = delete;

  // 0 means the next turn of the loop.
  void schedule(std::chrono::milliseconds delay = std::chrono::milliseconds(0));
  void cancel();
  bool isPending() const { return m_source != 0; }

private:
  std::function<void()> m_block;
  unsigned m_source = 0; // GLib's number, 0 when not pending
};

} // namespace orbel::x11
