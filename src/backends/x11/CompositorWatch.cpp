#include "backends/x11/CompositorWatch.h"

#include <utility>

namespace orbel::x11 {

CompositorWatch::CompositorWatch(Connection& connection, std::function<void()> changed)
    : m_changed(std::move(changed)),
      m_owner(connection, "_NET_WM_CM_S", "a compositor", [this] { ownerChanged(); }),
      m_isCompositing(m_owner.owner() != XCB_NONE) {}

// One compositor may take the screen over from another: that is no change.
void CompositorWatch::ownerChanged() {
  const bool was = std::exchange(m_isCompositing, m_owner.owner() != XCB_NONE);
  if (m_isCompositing != was && m_changed) m_changed();
}

} // namespace orbel::x11
