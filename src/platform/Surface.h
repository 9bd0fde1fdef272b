// One borderless, translucent window on the screen, above ordinary windows. A display that has to give it the
// keyboard focus gives it back to the earlier window when the surface is ordered out. The backend shows what
// the delegate paints, on the backdrop it was asked for, and reports the pointer; it decides nothing. Frames
// are screen points, y up, origin at the bottom-left of the primary screen; points of events are the
// surface's own. Owned by the core's window.
#pragma once

#include "foundation/Geometry.h"
#include "scene/Canvas.h"
#include "scene/DragInfo.h"
#include "scene/Event.h"

#include <optional>
#include <string>

namespace orbel {

enum class SurfaceLevel { menu, subMenu };

// The look of what is blurred behind the surface.
enum class BackdropMaterial { lightFrost, darkFrost };

// The core's side of a surface. All calls come on the main thread, and all but paint() never from within a
// call to the surface.
class SurfaceDelegate {
public:
  virtual ~SurfaceDelegate() = default;
  // Also from within show() and setFrame(): the picture arrives together with the window.
  virtual void paint(Canvas& canvas, const Rect& dirty) = 0;
  virtual void pointerMoved(const MouseEvent& event) = 0;
  // The pointer left the square bounds (not merely the disc). Once for each visit, and never of a surface
  // that is ordered out.
  virtual void pointerExited(const MouseEvent& event) = 0;
  virtual void pointerPressed(PointerButton button, const MouseEvent& event) = 0;
  virtual void pointerReleased(PointerButton button, const MouseEvent& event) = 0;
  // Escape while this is the topmost surface that is shown.
  virtual void cancelRequested() = 0;
  virtual DragOperation dragMoved(const DragInfo& drag) = 0;
  virtual void dragExited() = 0;
  virtual bool dragPerformed(const DragInfo& drag) = 0;
};

class Surface {
public:
  virtual ~Surface() = default;

  // Borrowed; null, as at first, means that nothing paints or receives events. Whoever sets one removes it
  // before it is destroyed.
  virtual void setDelegate(SurfaceDelegate* delegate) = 0;
  virtual void setFrame(const Rect& screenFrame) = 0;
  virtual Rect frame() const = 0;
  // Maps the surface; the backdrop is taken just before. The program in front stays in front for the user:
  // it keeps the focus, or has it again after orderOut(). Again while shown: raises it.
  virtual void show() = 0;
  // Takes the surface off the screen at once; nothing while it is not shown.
  virtual void orderOut() = 0;
  virtual bool isShown() const = 0;
  virtual void setAlpha(double alpha) = 0; // 0 to 1, of the whole window; cut to that range
  virtual double alpha() const = 0;

  // Whether something blurred can stand behind the surface (live, or a frosted snapshot).
  virtual bool supportsBackdropBlur() const = 0;
  // The backdrop shows inside the ellipse of the bounds inset by that many points; input is taken
  // there alone.
  virtual void setRoundBackdrop(BackdropMaterial material, double inset) = 0;

  // Painted soon, together with all that is asked for until then; never while not shown, as show()
  // paints everything.
  virtual void needsDisplay(const Rect& rect) = 0;
  // Asked of the display now; none when it cannot be known. May lie outside the bounds.
  virtual std::optional<Point> pointerLocation() const = 0;
  // Device pixels a point on the screen where the frame is; more than 0, also while not shown.
  virtual double backingScale() const = 0;

  // Whether the pointer is over a pop-up of ours (a context menu, a prompt, the open panel, a bubble),
  // wherever the surface is.
  virtual bool pointerIsOverOwnPopUp() const = 0;
};

} // namespace orbel
