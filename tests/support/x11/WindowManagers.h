// The desktops under which the menu's tests run where the window manager matters.
#pragma once

#include "tests/support/x11/WindowManager.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

namespace orbel::test {

inline auto allWindowManagers() {
  return testing::Values(WindowManagerKind::openboxWithPicom, WindowManagerKind::xfwm4Compositing,
                         WindowManagerKind::kwin);
}

inline std::string nameOfInstance(const testing::TestParamInfo<WindowManagerKind>& instance) {
  std::string name(nameOf(instance.param));
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

} // namespace orbel::test
