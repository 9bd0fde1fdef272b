#include "backends/x11/PinchAwareTouchTap.h"

#include <utility>

namespace orbel::x11 {

PinchAwareTouchTap::PinchAwareTouchTap(PinchGestures& pinches, const MakeTap& makeTap, TouchHandlers handlers)
    : m_pinches(pinches), m_handlers(std::move(handlers)),
      m_source(makeTap({[this](const std::vector<Touch>& touches) { touchesChanged(touches); },
                        [this] { m_handlers.magnified(); }})) {}

void PinchAwareTouchTap::setEnabled(bool enabled) {
  if (enabled == isEnabled()) return;
  m_isPinching = false;
  if (enabled) {
    m_observation = m_pinches.observe([this](PinchPhase phase) { pinch(phase); });
  } else {
    m_observation.reset();
  }
  m_source->setEnabled(enabled);
}

void PinchAwareTouchTap::pinch(PinchPhase phase) {
  m_isPinching = phase != PinchPhase::ended;
  m_handlers.magnified();
}

void PinchAwareTouchTap::touchesChanged(const std::vector<Touch>& touches) {
  // The server reports the end of a pinch later than the source reports that the fingers are lifted.
  if (touches.empty()) m_isPinching = false;
  m_handlers.touchesChanged(touches);
  if (m_isPinching && isEnabled()) m_handlers.magnified();
}

} // namespace orbel::x11
