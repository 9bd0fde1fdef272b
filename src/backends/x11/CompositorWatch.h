// Knows whether a compositor draws the screen, and reports when one starts or ends.
// Main thread only; wakes up only for such a change.
#pragma once

#include "backends/x11/SelectionOwnerWatch.h"

#include <functional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class CompositorWatch {
public:
  // The connection outlives the watch. The block may be empty.
  CompositorWatch(Connection& connection, std::function<void()> changed);

  bool isCompositing() const { return m_isCompositing; }

private:
  void ownerChanged();

  std::function<void()> m_changed;
  SelectionOwnerWatch m_owner;
  bool m_isCompositing;
};

} // namespace orbel::x11
