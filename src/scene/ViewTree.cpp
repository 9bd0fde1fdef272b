#include "scene/ViewTree.h"

#include "scene/Animation.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
// The root swallows what no view wanted.
class ContentView : public View {
public:
  using View::View;
};

// The topmost view at the point that takes files. Others are no obstacle: a button over such a view gets
// clicks, not drags.
View* fileDragDestination(View& view, Point pointInSuperview) {
  if (!view.frame().contains(pointInSuperview)) return nullptr;
  const Point inside{pointInSuperview.x - view.frame().minX(), pointInSuperview.y - view.frame().minY()};
  const auto& subviews = view.subviews();
  for (auto subview = subviews.rbegin(); subview != subviews.rend(); ++subview) {
    if (View* destination = fileDragDestination(**subview, inside)) return destination;
  }
  return view.acceptsFileDrags() && view.hitTest(pointInSuperview) ? &view : nullptr;
}

bool isWithin(const View& view, const View& ancestor) {
  for (const View* current = &view; current; current = current->superview()) {
    if (current == &ancestor) return true;
  }
  return false;
}
} // namespace

ViewTree::ViewTree(ViewTreeHost& host, RunLoop& runLoop, bool reducedMotion)
    : m_host(host), m_runLoop(runLoop), m_reducedMotion(reducedMotion),
      m_contentView(std::make_shared<ContentView>(Rect({}, host.screenFrame().size))) {
  m_contentView->setTree(this);
}

ViewTree::~ViewTree() {
  m_frames.reset();
  m_contentView->setTree(nullptr);
}

void ViewTree::resize(Size size) {
  m_contentView->setFrame({{}, size});
}

void ViewTree::paint(Canvas& canvas, const Rect& dirtyInWindow) {
  m_contentView->paint(canvas, dirtyInWindow, {});
}

void ViewTree::trackingAreaChanged(View& view) {
  const auto tracked = std::find_if(m_tracked.begin(), m_tracked.end(),
                                    [&](const TrackedView& entry) { return entry.view == &view; });
  if (!view.trackingArea()) {
    if (tracked != m_tracked.end()) m_tracked.erase(tracked);
  } else if (tracked == m_tracked.end()) {
    m_tracked.push_back({&view, false});
  }
}

void ViewTree::viewLeft(View& view) {
  std::erase_if(m_tracked, [&](const TrackedView& entry) { return isWithin(*entry.view, view); });
  if (m_dragDestination && isWithin(*m_dragDestination, view)) m_dragDestination = nullptr;
  if (const auto pressed = m_pressedView.lock(); pressed && isWithin(*pressed, view)) m_pressedView.reset();
}

// A context menu takes the pointer while the button that opened it is down, and with it the release.
void ViewTree::cancelPressWithoutRelease() {
  if (!std::exchange(m_primaryDown, false)) return;
  const auto pressed = m_pressedView.lock();
  m_pressedView.reset();
  if (pressed) pressed->mouseCancelled();
}

void ViewTree::pointerMoved(const MouseEvent& event) {
  if (!event.primaryButtonIsDown) cancelPressWithoutRelease();
  if (m_primaryDown) {
    if (const auto pressed = m_pressedView.lock()) pressed->mouseDragged(event);
    return;
  }
  // By index, and with a copy of the entry, because a view may change its tracking area when it is notified.
  for (std::size_t index = 0; index < m_tracked.size(); ++index) {
    View* const view = m_tracked[index].view;
    const auto keepAlive = view->shared_from_this();
    const bool inside = view->trackingArea()->contains(view->convertFromWindow(event.locationInWindow));
    const bool wasInside = std::exchange(m_tracked[index].inside, inside);
    if (inside && !wasInside) view->mouseEntered(event);
    if (!inside && wasInside) view->mouseExited(event);
    if (inside && view->tree() == this && view->trackingArea()) view->mouseMoved(event);
    if (index < m_tracked.size() && m_tracked[index].view != view) --index;
  }
}

void ViewTree::pointerExited(const MouseEvent& event) {
  if (!event.primaryButtonIsDown) cancelPressWithoutRelease();
  if (m_primaryDown) return; // the press holds the pointer; the next move gives its place
  for (std::size_t index = 0; index < m_tracked.size(); ++index) {
    View* const view = m_tracked[index].view;
    if (!std::exchange(m_tracked[index].inside, false)) continue;
    view->mouseExited(event);
    if (index < m_tracked.size() && m_tracked[index].view != view) --index;
  }
}

void ViewTree::pointerPressed(PointerButton button, const MouseEvent& event) {
  View* const hit = m_contentView->hitTest(event.locationInWindow);
  if (!hit) return;
  const auto keepAlive = hit->shared_from_this();
  if (button == PointerButton::secondary) {
    hit->rightMouseDown(event);
    return;
  }
  cancelPressWithoutRelease();
  m_primaryDown = true;
  m_pressedView = keepAlive;
  hit->mouseDown(event);
}

void ViewTree::pointerReleased(PointerButton button, const MouseEvent& event) {
  if (button != PointerButton::primary) return;
  m_primaryDown = false;
  const auto pressed = m_pressedView.lock();
  m_pressedView.reset();
  if (pressed) pressed->mouseUp(event);
}

DragOperation ViewTree::dragMoved(const DragInfo& drag) {
  View* const hit = drag.filePaths() ? fileDragDestination(*m_contentView, drag.locationInWindow()) : nullptr;
  if (hit != m_dragDestination) {
    if (m_dragDestination) std::exchange(m_dragDestination, nullptr)->draggingExited();
    m_dragDestination = hit;
    if (hit && hit->draggingEntered(drag) == DragOperation::none) return DragOperation::none;
  }
  return m_dragDestination ? m_dragDestination->draggingUpdated(drag) : DragOperation::none;
}

void ViewTree::dragExited() {
  if (m_dragDestination) std::exchange(m_dragDestination, nullptr)->draggingExited();
}

bool ViewTree::dragPerformed(const DragInfo& drag) {
  if (!m_dragDestination) return false;
  const auto destination = std::exchange(m_dragDestination, nullptr)->shared_from_this();
  if (!destination->prepareForDragOperation(drag)) {
    // The drag is refused: what the hovering left behind is cleared as if the drag had left.
    destination->draggingExited();
    return false;
  }
  const bool taken = destination->performDragOperation(drag);
  destination->concludeDragOperation();
  return taken;
}

bool ViewTree::animatesNow() const {
  return !m_reducedMotion && !ImmediateAnimationGroup::isOpen();
}

void ViewTree::needsFrames() {
  if (m_frames) return;
  m_frames = m_runLoop.onEveryFrame([this] { advanceAnimations(); });
}

void ViewTree::advanceAnimations() {
  if (!m_contentView->advanceAnimations(now())) m_frames.reset();
}

} // namespace orbel
