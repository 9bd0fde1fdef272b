// Presses: clicks, right-clicks, and the drag of an item along the circle to a new place or onto
// another item.
#include "view/OrbelView.h"

#include "view/ItemArcs.h"

#include <utility>

namespace orbel {

void OrbelView::mouseDown(const MouseEvent& event) {
  if (event.modifierFlags & kControlFlag) {
    rightMouseDown(event);
    return;
  }
  m_pressed = true;
  m_didDrag = false;
  m_zoomingEnabled = false;
  m_sections.setAllRelativeSizes(1);
  if (const std::optional<Point> pointer = pointerLocation()) {
    // Where frames overlap the last item wins. A press beside all of them keeps the item of the press before.
    m_sections.forEach([&](const OrbelItem& item, ItemPath path) {
      if (!item.frame().contains(*pointer)) return;
      m_draggedItemLastPoint = *pointer;
      m_draggedItem = m_sections.item(path);
      m_draggedItemOrigin = path;
    });
  }
  if (!m_draggedItem) return;
  m_startArc = 0;
  addSubview(m_draggedItem); // a subview already, it only comes to the top
  m_sections.remove(*m_draggedItem);
}

void OrbelView::mouseDragged(const MouseEvent&) {
  m_didDrag = true;
  trackPointer(Titles::follow);
  // A control-press dragged on started no press, and tracking may have reloaded the item away.
  if (!m_pressed || !m_draggedItem) return;
  const std::optional<Point> pointer = pointerLocation();
  if (!pointer) return;
  m_draggedItemLastPoint = *pointer;
  const double angle = geometry().polar(*pointer).angle;
  moveDraggedItem(angle);
  makeRoomForDraggedItem(angle);
}

void OrbelView::moveDraggedItem(double angle) {
  const Size size = m_draggedItem->frame().size;
  const Point center = geometry().pointAt(angle);
  m_draggedItem->setFrame({center.x - size.width / 2, center.y - size.height / 2, size.width, size.height});
}

void OrbelView::makeRoomForDraggedItem(double angle) {
  for (const ItemArc& arc : ItemArcs(m_sections, m_startArc)) {
    const ItemPath path = arc.path;
    switch (arc.zoneAt(angle)) {
    case ArcZone::none:
      break;
    case ArcZone::firstQuarter:
      return openGap(path);
    case ArcZone::lastQuarter:
      return openGap({path.section, path.position + 1});
    case ArcZone::middleHalf: {
      const bool accepts = m_delegate && m_delegate->canDropItem(m_draggedItemOrigin, inModelNumbering(path));
      // No other zone holds the angle, so a refusal changes nothing.
      if (accepts && m_draggedItem) markDropTarget(path);
      return;
    }
    }
  }
}

// Positions alone are compared, also where the target lies in another section.
ItemPath OrbelView::inModelNumbering(ItemPath path) const {
  return {path.section, path.position + (m_draggedItemOrigin.position <= path.position ? 1 : 0)};
}

void OrbelView::mouseUp(const MouseEvent&) {
  m_zoomingEnabled = true;
  const bool pressed = std::exchange(m_pressed, false);
  if (!pressed || !m_draggedItem) {
    trackPointerAnew();
  } else if (!m_didDrag) {
    finishClick();
  } else if (m_gap.section != kNotFound && m_gap.position != kNotFound) {
    finishMove();
  } else {
    finishDrop();
  }
}

void OrbelView::mouseCancelled() {
  m_zoomingEnabled = true;
  if (std::exchange(m_pressed, false) && m_draggedItem) m_sections.insert(m_draggedItem, m_draggedItemOrigin);
  clearDropMarks();
  // The move that revealed it then tracks the pointer, and shall lay out for it whatever its slot is.
  m_lastMouseOverItemIndex = -1;
}

void OrbelView::finishClick() {
  m_sections.insert(m_draggedItem, m_draggedItemOrigin);
  closeGap();
  if (m_delegate) m_delegate->didClickItem(m_draggedItemOrigin);
  trackPointerAnew();
}

void OrbelView::finishMove() {
  m_sections.insert(m_draggedItem, m_gap);
  if (m_delegate) m_delegate->didMoveItem(m_draggedItemOrigin, m_gap);
  closeGap();
  trackPointerAnew();
}

void OrbelView::finishDrop() {
  if (const std::optional<Point> pointer = pointerLocation()) {
    const double angle = probeAngle(*pointer);
    for (const ItemArc& arc : ItemArcs(m_sections, m_startArc)) {
      if (!arc.strictlyContains(angle)) continue;
      const ItemPath target = inModelNumbering(arc.path);
      selectItem(nullptr);
      // The dragged item is not put back: the delegate changes the model and reloads.
      if (m_delegate) m_delegate->didDropItem(m_draggedItemOrigin, target);
      return;
    }
  }
  trackPointerAnew();
}

void OrbelView::rightMouseDown(const MouseEvent&) {
  // The pressed item stands in no section meanwhile, so the places behind it are not the model's.
  if (m_pressed) return;
  const std::optional<Point> pointer = pointerLocation();
  if (!pointer) return;
  const double angle = probeAngle(*pointer);
  for (const ItemArc& arc : ItemArcs(m_sections, m_startArc)) {
    const ItemPath path = arc.path;
    if (m_delegate && m_sections.item(path)->frame().contains(*pointer)) {
      m_delegate->didRightClickItem(path);
      return;
    }
    if (arc.strictlyContains(angle)) {
      if (m_delegate) m_delegate->didRightClickOutsideOfItem(path);
      return;
    }
  }
}

// The middle of the pointer's even slot: hardly ever on a boundary between two arcs.
double OrbelView::probeAngle(Point pointer) const {
  const RadialGeometry circle = geometry();
  return circle.slotCenter(circle.slotAt(circle.polar(pointer).angle));
}

} // namespace orbel
