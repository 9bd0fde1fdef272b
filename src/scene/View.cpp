#include "scene/View.h"

#include "scene/Animation.h"
#include "scene/ViewTree.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
double between(double from, double to, double share) {
  return from + (to - from) * share;
}

Rect between(const Rect& from, const Rect& to, double share) {
  return {between(from.minX(), to.minX(), share), between(from.minY(), to.minY(), share),
          between(from.size.width, to.size.width, share), between(from.size.height, to.size.height, share)};
}
} // namespace

View::View(const Rect& frame) : m_frame(frame), m_presentedFrame(frame) {}

View::~View() {
  for (const auto& view : m_subviews) {
    view->setTree(nullptr);
    view->m_superview = nullptr;
  }
  for (const auto& view : m_leavingSubviews) {
    view->setTree(nullptr);
    view->m_superview = nullptr;
  }
}

void View::setFrame(const Rect& frame, Animated animated) {
  const Size oldSize = m_frame.size;
  const bool changed = frame != m_frame;
  m_frame = frame;
  if (animated == Animated::yes && m_tree && m_tree->animatesNow()) {
    // Retargeted from where it is painted now, so a change in mid-flight does not jump. An equal target keeps
    // its pace.
    if (changed || (!m_frameMoves && m_presentedFrame != frame)) {
      m_frameFrom = m_presentedFrame;
      m_frameStart = m_tree->now();
      m_frameMoves = m_presentedFrame != frame;
      if (m_frameMoves) m_tree->needsFrames();
    }
  } else {
    m_frameMoves = false;
    setPresentedFrame(frame);
  }
  if (!changed) return;
  if (oldSize != frame.size) resizeSubviews(oldSize);
  frameDidChange();
}

void View::resizeSubviews(Size oldSize) {
  for (const auto& view : m_subviews) {
    switch (view->m_autoresizing) {
    case Autoresizing::none:
      break;
    case Autoresizing::fillsSuperview:
      view->setFrame(bounds());
      break;
    case Autoresizing::staysCentered:
      view->setFrame(view->m_frame.offsetBy((m_frame.size.width - oldSize.width) / 2,
                                            (m_frame.size.height - oldSize.height) / 2));
      break;
    }
  }
}

void View::setPresentedFrame(const Rect& frame) {
  if (frame == m_presentedFrame) return;
  setNeedsDisplay();
  m_presentedFrame = frame;
  setNeedsDisplay();
  presentationDidChange();
}

void View::setPresentedOpacity(double opacity) {
  if (opacity == m_presentedOpacity) return;
  m_presentedOpacity = opacity;
  setNeedsDisplay();
}

void View::beginOpacityAnimation(double target) {
  if (!m_tree || !m_tree->animatesNow()) {
    m_opacityMoves = false;
    setPresentedOpacity(target);
    return;
  }
  m_opacityFrom = m_presentedOpacity;
  m_opacityTo = target;
  m_opacityStart = m_tree->now();
  m_opacityMoves = m_opacityFrom != target;
  if (m_opacityMoves) m_tree->needsFrames();
}

// By value: what the caller refers to may stand in a list that this changes.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void View::addSubview(std::shared_ptr<View> view, Animated animated) {
  if (!view || view.get() == this) return;
  if (view->m_superview == this && !view->m_leaving) {
    // Only moved to the top: what is painted of it remains as it is.
    const auto present = std::find(m_subviews.begin(), m_subviews.end(), view);
    std::rotate(present, present + 1, m_subviews.end());
    view->setNeedsDisplay();
    return;
  }
  view->removeFromSuperview();
  view->m_superview = this;
  view->m_leaving = false;
  view->setTree(m_tree);
  m_subviews.push_back(view);
  if (animated == Animated::yes && m_tree && m_tree->animatesNow()) {
    view->m_presentedOpacity = 0;
    view->beginOpacityAnimation(1);
  } else {
    view->m_opacityMoves = false;
    view->m_presentedOpacity = 1;
  }
  view->setNeedsDisplay();
  view->presentationDidChange();
}

void View::removeFromSuperview(Animated animated) {
  if (!m_superview) return;
  const auto self = shared_from_this();
  View* const superview = m_superview;
  setNeedsDisplay();
  std::erase(superview->m_subviews, self);
  std::erase(superview->m_leavingSubviews, self);
  // The tree must not route events to it any more, whether or not it is still to be seen.
  if (m_tree) m_tree->viewLeft(*this);
  if (animated == Animated::yes && m_everPainted && m_tree && m_tree->animatesNow()) {
    m_leaving = true;
    superview->m_leavingSubviews.push_back(self);
    beginOpacityAnimation(0);
    return;
  }
  m_leaving = false;
  m_superview = nullptr;
  setTree(nullptr);
  presentationDidChange();
}

void View::takeOverPresentation(const View& other) {
  setPresentedFrame(other.m_presentedFrame);
  m_everPainted = other.m_everPainted;
  m_opacityMoves = false;
  setPresentedOpacity(other.m_leaving ? 1 : other.m_presentedOpacity);
  if (m_presentedOpacity < 1) beginOpacityAnimation(1);
}

void View::setTree(ViewTree* tree) {
  if (m_tree == tree) return;
  if (m_tree) m_tree->viewLeft(*this);
  m_tree = tree;
  if (!tree) {
    // Outside a tree nothing moves: what it was on its way to holds.
    m_frameMoves = false;
    m_opacityMoves = false;
    m_presentedFrame = m_frame;
    m_everPainted = false;
  } else if (m_trackingArea) {
    tree->trackingAreaChanged(*this);
  }
  for (const auto& view : m_subviews)
    view->setTree(tree);
  for (const auto& view : m_leavingSubviews)
    view->setTree(tree);
}

Point View::convertFromWindow(Point windowPoint) const {
  for (const View* view = this; view; view = view->m_superview) {
    windowPoint.x -= view->m_frame.minX();
    windowPoint.y -= view->m_frame.minY();
  }
  return windowPoint;
}

Rect View::convertToWindow(const Rect& rect) const {
  Rect result = rect;
  for (const View* view = this; view; view = view->m_superview) {
    result = result.offsetBy(view->m_frame.minX(), view->m_frame.minY());
  }
  return result;
}

std::optional<Point> View::pointerLocation() const {
  if (!m_tree) return std::nullopt;
  const auto location = m_tree->host().pointerLocationInWindow();
  if (!location) return std::nullopt;
  return convertFromWindow(*location);
}

void View::setTrackingArea(std::optional<Rect> area) {
  m_trackingArea = area;
  if (m_tree) m_tree->trackingAreaChanged(*this);
}

View* View::hitTest(Point pointInSuperview) {
  if (!m_frame.contains(pointInSuperview)) return nullptr;
  const Point inside{pointInSuperview.x - m_frame.minX(), pointInSuperview.y - m_frame.minY()};
  for (auto view = m_subviews.rbegin(); view != m_subviews.rend(); ++view) {
    if (View* hit = (*view)->hitTest(inside)) return hit;
  }
  return this;
}

void View::mouseDown(const MouseEvent& event) {
  if (m_superview) m_superview->mouseDown(event);
}
void View::mouseDragged(const MouseEvent& event) {
  if (m_superview) m_superview->mouseDragged(event);
}
void View::mouseUp(const MouseEvent& event) {
  if (m_superview) m_superview->mouseUp(event);
}
void View::mouseCancelled() {
  if (m_superview) m_superview->mouseCancelled();
}
void View::rightMouseDown(const MouseEvent& event) {
  if (m_superview) m_superview->rightMouseDown(event);
}
void View::mouseMoved(const MouseEvent& event) {
  if (m_superview) m_superview->mouseMoved(event);
}
void View::mouseEntered(const MouseEvent& event) {
  if (m_superview) m_superview->mouseEntered(event);
}
void View::mouseExited(const MouseEvent& event) {
  if (m_superview) m_superview->mouseExited(event);
}

Rect View::presentedRectInWindow() const {
  const double overhang = drawingOverhang();
  Rect rect = m_presentedFrame.insetBy(-overhang, -overhang);
  for (const View* view = m_superview; view; view = view->m_superview) {
    rect = rect.offsetBy(view->m_presentedFrame.minX(), view->m_presentedFrame.minY());
  }
  return rect;
}

void View::setNeedsDisplay() {
  if (m_tree) m_tree->host().needsDisplay(presentedRectInWindow());
}

void View::paint(Canvas& canvas, const Rect& dirtyInWindow, Point originInWindow) {
  if (m_presentedOpacity <= 0) return;
  m_everPainted = true;
  const Point origin{originInWindow.x + m_presentedFrame.minX(), originInWindow.y + m_presentedFrame.minY()};
  const bool changesOpacity = m_presentedOpacity < 1;
  if (changesOpacity) {
    canvas.save();
    canvas.multiplyOpacity(m_presentedOpacity);
  }
  const double overhang = drawingOverhang();
  const Rect drawn = Rect(origin, m_presentedFrame.size).insetBy(-overhang, -overhang);
  if (drawn.intersects(dirtyInWindow)) {
    canvas.save();
    canvas.translate(origin);
    draw(canvas);
    canvas.restore();
  }
  for (const auto& view : m_leavingSubviews)
    view->paint(canvas, dirtyInWindow, origin);
  for (const auto& view : m_subviews)
    view->paint(canvas, dirtyInWindow, origin);
  if (changesOpacity) canvas.restore();
}

bool View::advanceAnimations(double now) {
  bool moves = false;
  if (m_frameMoves) {
    const double share = (now - m_frameStart) / kAnimationDuration;
    m_frameMoves = share < 1;
    moves = m_frameMoves;
    setPresentedFrame(m_frameMoves ? between(m_frameFrom, m_frame, easeInEaseOut(share)) : m_frame);
  }
  if (m_opacityMoves) {
    const double share = (now - m_opacityStart) / kAnimationDuration;
    m_opacityMoves = share < 1;
    moves = moves || m_opacityMoves;
    setPresentedOpacity(m_opacityMoves ? between(m_opacityFrom, m_opacityTo, easeInEaseOut(share))
                                       : m_opacityTo);
  }
  for (const auto& view : m_subviews) {
    if (view->advanceAnimations(now)) moves = true;
  }
  for (const auto& view : m_leavingSubviews) {
    if (view->advanceAnimations(now)) moves = true;
  }
  // Those that have faded are removed for good.
  std::erase_if(m_leavingSubviews, [](const std::shared_ptr<View>& view) {
    if (view->m_opacityMoves) return false;
    view->m_leaving = false;
    view->m_superview = nullptr;
    view->setTree(nullptr);
    return true;
  });
  return moves;
}

} // namespace orbel
