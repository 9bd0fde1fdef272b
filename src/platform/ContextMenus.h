// Pop-up menus of the desktop's own look, filled and opened by the menu controllers. Main thread only.
#pragma once

#include "foundation/Geometry.h"
#include "scene/Image.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel {

class Surface;

struct MenuEntry {
  std::string title; // as shown; empty for a separator
  bool isSeparator = false;
  bool isHidden = false;
  bool isEnabled = true; // otherwise shown in grey, and nothing comes of choosing it
  std::int64_t tag = 0;
  ImagePointer image; // drawn at 16 by 16 points; may be empty
  std::function<void(const MenuEntry& entry)> action;
  std::vector<MenuEntry> submenu;
};

class ContextMenuDelegate {
public:
  virtual ~ContextMenuDelegate() = default;
  virtual void menuWillOpen() {}
  // Before the chosen entry's action, and also when nothing was chosen.
  virtual void menuDidClose() {}
};

// A menu that is open on the screen. Destroying it closes it and calls nothing any more: no action, and not
// the delegate either. That may happen within any of these calls.
class OpenContextMenu {
public:
  virtual ~OpenContextMenu() = default;
  virtual void cancelTracking() = 0;
};

class ContextMenus {
public:
  virtual ~ContextMenus() = default;
  // Pops up with a corner at that place of the surface, in the surface's own points, also outside its bounds;
  // above every surface of ours, usable by keyboard. Returns at once, after menuWillOpen(). The entries are
  // copied; the delegate is borrowed and may be empty. Delegate and surface must live as long as the returned
  // object. A menu without a visible entry never opens and calls nothing.
  virtual std::unique_ptr<OpenContextMenu> popUp(std::vector<MenuEntry> entries,
                                                 ContextMenuDelegate* delegate, const Surface& surface,
                                                 Point place) = 0;
};

} // namespace orbel
