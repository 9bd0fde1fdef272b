// Which window of this program has the keyboard focus. The X server notifies a connection only about windows
// that it knows, and the program's ordinary windows are another connection's. Used by the key recorder; main
// thread only.
#pragma once

#include "foundation/Registration.h"

#include <functional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class FocusedWindow {
public:
  virtual ~FocusedWindow() = default;
  // XCB_NONE while another program's window, or none, has the focus.
  virtual xcb_window_t current() const = 0;
  // Calls the block when a window of ours that has the focus loses it, to another of ours too. Gaining it is
  // not reported: the window manager may give it only after the click that started the recording.
  virtual Registration observeLoss(std::function<void()> block) = 0;
};

} // namespace orbel::x11
