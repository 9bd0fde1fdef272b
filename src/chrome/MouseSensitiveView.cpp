#include "chrome/MouseSensitiveView.h"

namespace orbel {

MouseSensitiveView::MouseSensitiveView(const Rect& frame) : View(frame) {
  updateTrackingAreas();
}

void MouseSensitiveView::setHighlighted(bool highlighted) {
  m_highlighted = highlighted;
}

void MouseSensitiveView::updateTrackingAreas() {
  setTrackingArea(bounds());
}

void MouseSensitiveView::mouseEntered(const MouseEvent& event) {
  if (m_mouseEnterBlock) {
    m_mouseEnterBlock(event);
  } else {
    View::mouseEntered(event);
  }
}

void MouseSensitiveView::mouseExited(const MouseEvent& event) {
  if (m_mouseLeaveBlock) {
    m_mouseLeaveBlock(event);
  } else {
    View::mouseExited(event);
  }
}

void MouseSensitiveView::mouseMoved(const MouseEvent& event) {
  View::mouseMoved(event);
}

void MouseSensitiveView::mouseDown(const MouseEvent&) {
  setHighlighted(true);
  setNeedsDisplay();
}

// A press that began here stays here: nothing else may take it for a drag of its own.
void MouseSensitiveView::mouseDragged(const MouseEvent&) {}

void MouseSensitiveView::mouseUp(const MouseEvent& event) {
  const bool inside = bounds().contains(convertFromWindow(event.locationInWindow));
  setHighlighted(false);
  setNeedsDisplay();
  // A copy, because the click may well end the window that holds this view.
  if (const Block click = m_mouseClickBlock; inside && click) click(event);
}

void MouseSensitiveView::mouseCancelled() {
  setHighlighted(false);
  setNeedsDisplay();
}

} // namespace orbel
