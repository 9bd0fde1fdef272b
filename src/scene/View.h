// A rectangle of a window that draws itself, holds subviews above itself and takes the pointer's events.
// Its frame is the target that the rules read and hit-test; its presented frame and opacity are what is
// painted, and follow the target over kAnimationDuration when the change was animated. Coordinates are
// points, y up, origin at the bottom-left of the view. Subviews are not clipped. Held by shared_ptr;
// superview and tree are borrowed.
#pragma once

#include "foundation/Geometry.h"
#include "scene/Canvas.h"
#include "scene/DragInfo.h"
#include "scene/Event.h"

#include <memory>
#include <optional>
#include <vector>

namespace orbel {

class ViewTree;

enum class Animated { no, yes };

// How a view follows its superview's size.
enum class Autoresizing { none, fillsSuperview, staysCentered };

class View : public std::enable_shared_from_this<View> {
public:
  explicit View(const Rect& frame = {});
  virtual ~View();
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  const Rect& frame() const { return m_frame; }
  void setFrame(const Rect& frame, Animated animated = Animated::no);
  Rect bounds() const { return {{}, m_frame.size}; }
  void setAutoresizing(Autoresizing autoresizing) { m_autoresizing = autoresizing; }

  // What is painted now.
  const Rect& presentedFrame() const { return m_presentedFrame; }
  double presentedOpacity() const { return m_presentedOpacity; }

  View* superview() const { return m_superview; }
  ViewTree* tree() const { return m_tree; }
  const std::vector<std::shared_ptr<View>>& subviews() const { return m_subviews; }
  // On top of the others. Animated, it fades in, and a removed one fades out where it stands; one that was
  // never painted is removed at once.
  void addSubview(std::shared_ptr<View> view, Animated animated = Animated::no);
  void removeFromSuperview(Animated animated = Animated::no);
  // Starts this view's presentation where the other's is, so that a view which replaces an equal one does
  // not blink.
  void takeOverPresentation(const View& other);

  Point convertFromWindow(Point windowPoint) const;
  Rect convertToWindow(const Rect& rect) const;
  // The pointer's place now in this view's coordinates, read from the window and not from an event.
  std::optional<Point> pointerLocation() const;

  // The pointer-tracking region in this view's coordinates; none means no entered, exited or moved events.
  const std::optional<Rect>& trackingArea() const { return m_trackingArea; }
  void setTrackingArea(std::optional<Rect> area);

  // The topmost view at a point given in the superview's coordinates, or none.
  virtual View* hitTest(Point pointInSuperview);

  // Events the view does not want are passed to its superview.
  virtual void mouseDown(const MouseEvent& event);
  virtual void mouseDragged(const MouseEvent& event);
  virtual void mouseUp(const MouseEvent& event);
  // Instead of mouseUp(), where another window received the release: the press ends and was no click.
  virtual void mouseCancelled();
  virtual void rightMouseDown(const MouseEvent& event);
  virtual void mouseMoved(const MouseEvent& event);
  virtual void mouseEntered(const MouseEvent& event);
  virtual void mouseExited(const MouseEvent& event);

  // Drag destination, of drags that carry files alone. The answers of a view that takes no drags are "none"
  // and "no".
  virtual DragOperation draggingEntered(const DragInfo&) { return DragOperation::none; }
  virtual DragOperation draggingUpdated(const DragInfo&) { return DragOperation::none; }
  virtual void draggingExited() {}
  virtual bool prepareForDragOperation(const DragInfo&) { return false; }
  virtual bool performDragOperation(const DragInfo&) { return false; }
  virtual void concludeDragOperation() {}
  bool acceptsFileDrags() const { return m_acceptsFileDrags; }
  void registerForFileDrags() { m_acceptsFileDrags = true; }

  // Draws this view alone, without its subviews, in its own coordinates and the presented size.
  virtual void draw(Canvas&) {}
  // How far draw() reaches beyond the bounds on every side, in points (a dot below an icon).
  virtual double drawingOverhang() const { return 0; }
  void setNeedsDisplay();

protected:
  // After every change of the frame (the target).
  virtual void frameDidChange() {}
  // After every change of what is painted, and of the tree.
  virtual void presentationDidChange() {}

private:
  friend class ViewTree;

  void setTree(ViewTree* tree);
  void setPresentedFrame(const Rect& frame);
  void setPresentedOpacity(double opacity);
  void beginOpacityAnimation(double target);
  void resizeSubviews(Size oldSize);
  Rect presentedRectInWindow() const;
  void paint(Canvas& canvas, const Rect& dirtyInWindow, Point originInWindow);
  bool advanceAnimations(double now); // true while something of it still moves

  Rect m_frame;
  Rect m_presentedFrame;
  double m_presentedOpacity = 1;
  bool m_everPainted = false;
  bool m_leaving = false; // fading out; no longer among the subviews as far as rules are concerned
  bool m_acceptsFileDrags = false;
  Autoresizing m_autoresizing = Autoresizing::none;

  bool m_frameMoves = false;
  Rect m_frameFrom;
  double m_frameStart = 0;
  bool m_opacityMoves = false;
  double m_opacityFrom = 1;
  double m_opacityTo = 1;
  double m_opacityStart = 0;

  View* m_superview = nullptr;
  ViewTree* m_tree = nullptr;
  std::optional<Rect> m_trackingArea;
  std::vector<std::shared_ptr<View>> m_subviews;
  std::vector<std::shared_ptr<View>> m_leavingSubviews; // painted below the others until they have faded
};

} // namespace orbel
