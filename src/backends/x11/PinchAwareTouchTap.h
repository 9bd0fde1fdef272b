// A touch tap that knows of the X server's pinches besides those of its source: while one lasts, every report
// of touches is followed by one of a pinch.
#pragma once

#include "backends/x11/PinchGestures.h"
#include "foundation/Registration.h"
#include "platform/EventTaps.h"

#include <functional>
#include <memory>

namespace orbel::x11 {

class PinchAwareTouchTap : public EventTap {
public:
  using MakeTap = std::function<std::unique_ptr<EventTap>(TouchHandlers)>;

  PinchAwareTouchTap(PinchGestures& pinches, const MakeTap& makeTap, TouchHandlers handlers);
  void setEnabled(bool enabled) override;
  bool isEnabled() const override { return m_source->isEnabled(); }

private:
  void pinch(PinchPhase phase);
  void touchesChanged(const std::vector<Touch>& touches);

  PinchGestures& m_pinches;
  TouchHandlers m_handlers;
  bool m_isPinching = false;
  Registration m_observation;
  std::unique_ptr<EventTap> m_source;
};

} // namespace orbel::x11
