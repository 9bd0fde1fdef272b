// A view of the core that the backend puts among its own controls or into a popover. The host has the size of
// the view's frame, brings it the pointer, the keyboard and a place to draw, and speaks for it to assistive
// programs. Blocks are called on the main thread while the host lives; each may be empty.
#pragma once

#include "scene/View.h"

#include <functional>
#include <memory>
#include <string>

namespace orbel {

struct HostedView {
  std::shared_ptr<View> view;
  std::string accessibleName; // in the user's language
  // What the control holds now, as a reader would say it.
  std::function<std::string()> accessibleValue = {};
  // For a place of the view; an empty text where there is none.
  std::function<std::string(Point)> toolTipAt = {};
  // Space or Return while it has the keyboard focus. A view without it takes no focus.
  std::function<void()> press = {};
  // Has the keyboard when the popover that it stands in opens.
  bool isCurrent = false;
};

} // namespace orbel
