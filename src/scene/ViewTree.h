// The views of one window: routes the pointer, collects damage, and runs the animations while something
// moves. The window hands it raw pointer reports in window points; nothing here allocates for a pointer move
// or a frame.
#pragma once

#include "foundation/Registration.h"
#include "foundation/RunLoop.h"
#include "scene/View.h"

#include <memory>
#include <optional>
#include <vector>

namespace orbel {

class Surface; // of the platform; only handed on here

// What a view tree asks of its window.
class ViewTreeHost {
public:
  virtual ~ViewTreeHost() = default;
  virtual void needsDisplay(const Rect& rectInWindow) = 0;
  // Read now; none when the platform cannot know it (the pointer is over no surface of ours).
  virtual std::optional<Point> pointerLocationInWindow() const = 0;
  // Device pixels a point.
  virtual double backingScale() const = 0;
  // The window's frame in screen points.
  virtual Rect screenFrame() const = 0;
  // What the tree is painted on, for views that show something beside themselves; none in a window that is
  // no surface.
  virtual const Surface* hostSurface() const { return nullptr; }
};

class ViewTree {
public:
  // The host and the run loop outlive the tree. Reduced motion makes every animation immediate.
  ViewTree(ViewTreeHost& host, RunLoop& runLoop, bool reducedMotion);
  ~ViewTree();
  ViewTree(const ViewTree&) = delete;
  ViewTree& operator=(const ViewTree&) = delete;

  ViewTreeHost& host() const { return m_host; }
  View& contentView() const { return *m_contentView; }
  // The content view always has the window's size.
  void resize(Size size);

  void paint(Canvas& canvas, const Rect& dirtyInWindow);

  void pointerMoved(const MouseEvent& event);
  // The pointer left the window's square bounds.
  void pointerExited(const MouseEvent& event);
  // While the primary button is down, moves are delivered to the pressed view as drags and no view is
  // tracked. The press is cancelled where its release never came: by a move or an exit without the button, or
  // by the next press.
  void pointerPressed(PointerButton button, const MouseEvent& event);
  void pointerReleased(PointerButton button, const MouseEvent& event);

  // A drag without a list of files is over no view.
  DragOperation dragMoved(const DragInfo& drag);
  void dragExited();
  bool dragPerformed(const DragInfo& drag);

  // True while a frame or an opacity is on its way; no frames are asked for otherwise.
  bool isAnimating() const { return static_cast<bool>(m_frames); }

private:
  friend class View;
  void trackingAreaChanged(View& view);
  void viewLeft(View& view);
  void cancelPressWithoutRelease();
  void needsFrames();
  void advanceAnimations();
  double now() const { return m_runLoop.clock().now(); }
  bool animatesNow() const;

  struct TrackedView {
    View* view;
    bool inside;
  };

  ViewTreeHost& m_host;
  RunLoop& m_runLoop;
  bool m_reducedMotion;
  std::shared_ptr<View> m_contentView;
  std::vector<TrackedView> m_tracked;
  std::weak_ptr<View> m_pressedView;
  bool m_primaryDown = false;
  View* m_dragDestination = nullptr;
  Registration m_frames;
};

} // namespace orbel
