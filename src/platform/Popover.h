// A small window with an arrow beside a control. It is transient: it closes when the user clicks elsewhere or
// presses Escape, and with the window it belongs to. Made by the settings form; main thread only.
#pragma once

#include "platform/HostedView.h"

#include <string>
#include <vector>

namespace orbel {

class Popover {
public:
  virtual ~Popover() = default; // closes it without notifying anyone

  // In rows of that many columns, from left to right and top to bottom. None empties the popover.
  virtual void setContent(std::vector<HostedView> views, int columns) = 0;
  // Beside the form's control of that identifier, at its right where the screen has room.
  virtual void show(const std::string& besideControl) = 0;
  virtual void close() = 0;
  virtual bool isShown() const = 0;
};

} // namespace orbel
