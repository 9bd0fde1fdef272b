// Every release of the primary button, anywhere.
#pragma once

#include "foundation/Registration.h"
#include "platform/EventTaps.h"

#include <functional>

namespace orbel::x11 {

class RawPointer;

class MouseUpTap : public EventTap {
public:
  MouseUpTap(RawPointer& pointer, std::function<void()> mouseUp);
  void setEnabled(bool enabled) override;
  bool isEnabled() const override { return m_enabled; }

private:
  RawPointer& m_pointer;
  std::function<void()> m_mouseUp;
  bool m_enabled = false;
  Registration m_releases;
};

} // namespace orbel::x11
