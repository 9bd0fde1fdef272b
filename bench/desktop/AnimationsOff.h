// A settings manager that asks every program to do without animations, so that a fade does not hide what
// is measured.
#pragma once

#include "tests/support/x11/DisplayConnection.h"

namespace orbel::bench {

class AnimationsOff {
public:
  // While it lives. Programs ask when they make a window or start a fade.
  explicit AnimationsOff(test::DisplayConnection& display);
  ~AnimationsOff();
  AnimationsOff(const AnimationsOff&) = delete;
  AnimationsOff& operator=(const AnimationsOff&) = delete;

private:
  test::DisplayConnection& m_display;
  xcb_window_t m_window;
};

} // namespace orbel::bench
