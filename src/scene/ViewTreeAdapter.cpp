#include "scene/ViewTreeAdapter.h"

#include <utility>

namespace orbel {

ViewTreeAdapter::ViewTreeAdapter(Window window, RunLoop& runLoop, bool reducedMotion)
    : m_window(std::move(window)), m_tree(*this, runLoop, reducedMotion) {}

} // namespace orbel
