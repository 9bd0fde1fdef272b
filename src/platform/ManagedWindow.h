// One ordinary window on the screen: the window manager keeps it, it takes the keyboard focus, and it has no
// frame of the desktop's. The backend puts its controls on it and reports presses on the background between
// them; its shape, rim and dragging are the delegate's. Frames are screen points, y up. Owned by the
// backend's form; used by the settings window's frame.
#pragma once

#include "foundation/Geometry.h"
#include "platform/Surface.h"
#include "scene/Canvas.h"
#include "scene/Event.h"

namespace orbel {

// Whether the user has chosen a light or a dark desktop.
enum class ColorScheme { light, dark };

// All calls come on the main thread.
class ManagedWindowDelegate {
public:
  virtual ~ManagedWindowDelegate() = default;
  // Over the backdrop and beneath the controls; window points.
  virtual void paint(Canvas& canvas, const Rect& dirty) = 0;
  // The primary button on the background. A press there holds the pointer until its release.
  virtual void backgroundPressed(const MouseEvent& event) = 0;
  virtual void backgroundDragged(const MouseEvent& event) = 0;
  virtual void windowDidResize() = 0;
  virtual void colorSchemeDidChange() = 0;
};

class ManagedWindow {
public:
  virtual ~ManagedWindow() = default;

  virtual void setDelegate(ManagedWindowDelegate* delegate) = 0;
  virtual Rect frame() const = 0;
  // Moves the window's bottom-left corner; the size is the backend's.
  virtual void setFrameOrigin(Point origin) = 0;
  // Asked within backgroundPressed(): hands the drag that may follow to the display, which then moves the
  // window by itself. False where the display leaves the moving to setFrameOrigin().
  virtual bool beginInteractiveMove() = 0;
  // In the middle of the screen that the pointer is on.
  virtual void center() = 0;
  // Shows the window, in front of others and with the keyboard focus.
  virtual void makeKeyAndOrderFront() = 0;
  // Out of sight; the window can be shown again.
  virtual void close() = 0;
  virtual bool isVisible() const = 0;

  // Above ordinary windows, also of other programs.
  virtual void setFloating(bool floating) = 0;
  // Whether something frosted can stand behind the window. Without it the window is a plain opaque rectangle.
  virtual bool supportsBackdropBlur() const = 0;
  // The backdrop, in the rounded rectangle of the bounds inset by that many points; nothing of the window is
  // seen outside it.
  virtual void setRoundedBackdrop(BackdropMaterial material, double inset, double cornerRadius) = 0;

  virtual ColorScheme colorScheme() const = 0;
  virtual void needsDisplay(const Rect& rect) = 0;
};

} // namespace orbel
