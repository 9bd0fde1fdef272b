// Which window of the program has the keyboard focus, as Qt knows it. Made by main for the key recorder.
#pragma once

#include "backends/x11/FocusedWindow.h"

#include <functional>

namespace orbel::qtx11 {

class QtFocusedWindow final : public x11::FocusedWindow {
public:
  xcb_window_t current() const override;
  Registration observeLoss(std::function<void()> block) override;
};

} // namespace orbel::qtx11
