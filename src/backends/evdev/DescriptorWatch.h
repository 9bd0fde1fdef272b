// Calls a block from the GLib main loop whenever a file descriptor has something to read, has an error or
// hangs up. The descriptor stays its owner's and must outlive the watch.
#pragma once

#include <functional>

struct _GSource;

namespace orbel::evdev {

class DescriptorWatch {
public:
  // What the block has left behind: something that it has taken from the descriptor and not dealt with yet
  // makes the loop call it again on its next turn, after the others.
  enum class Rest { none, some };
  // Hung up means that nothing will come any more; it is reported repeatedly until the watch ends.
  enum class State { alive, hungUp };
  using Block = std::function<Rest(State)>;

  DescriptorWatch(int descriptor, Block readable);
  ~DescriptorWatch(); // may be destroyed from within the block
  DescriptorWatch(const DescriptorWatch&) = delete;
  DescriptorWatch& operator=(const DescriptorWatch&) = delete;

private:
  _GSource* m_source;
};

} // namespace orbel::evdev
