// The desktop's status area (tray) and the program's icon there. Desktops without one show nothing; a status
// area that comes later, or comes back, gets the icon then. Called by the application delegate.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace orbel {

struct StatusItemContents {
  std::string image; // the name of a picture of the program's own
  // Whether the picture's shape alone counts and is drawn in the status area's own colour.
  bool isTemplate = false;
  std::string title; // for tool tips and screen readers, in the user's language
  std::function<void()> clicked;
};

// An icon in the status area. Destroying it removes it.
class StatusItem {
public:
  virtual ~StatusItem() = default;
};

class StatusBar {
public:
  virtual ~StatusBar() = default;
  // The block may be called until the item is destroyed. Never empty.
  virtual std::unique_ptr<StatusItem> makeStatusItem(StatusItemContents contents) = 0;
};

} // namespace orbel
