// Drags from other programs, and the gap and the mark that they share with the reordering of items.
#include "view/OrbelView.h"

#include "view/ItemArcs.h"

namespace orbel {

DragOperation OrbelView::draggingEntered(const DragInfo&) {
  return DragOperation::copy;
}

DragOperation OrbelView::draggingUpdated(const DragInfo& drag) {
  if (const std::optional<double> angle = dropAngle(drag)) {
    for (const ItemArc& arc : ItemArcs(m_sections, m_startArc)) {
      const ItemPath path = arc.path;
      const ArcZone zone = arc.zoneAt(*angle);
      if (zone == ArcZone::firstQuarter || zone == ArcZone::lastQuarter) {
        openGap(zone == ArcZone::firstQuarter ? path : ItemPath{path.section, path.position + 1});
        return DragOperation::copy;
      }
      if (zone == ArcZone::middleHalf && m_delegate && m_delegate->canDrop(drag, path)) {
        markDropTarget(path);
        return DragOperation::link;
      }
    }
  }
  selectItem(nullptr);
  return DragOperation::copy;
}

void OrbelView::draggingExited() {
  clearDropMarks();
}

bool OrbelView::prepareForDragOperation(const DragInfo&) {
  return m_delegate != nullptr;
}

bool OrbelView::performDragOperation(const DragInfo& drag) {
  selectItem(nullptr);
  closeGap();
  if (const std::optional<double> angle = dropAngle(drag); angle && m_delegate) {
    for (const ItemArc& arc : ItemArcs(m_sections, m_startArc)) {
      const ItemPath path = arc.path;
      switch (arc.zoneAt(*angle)) {
      case ArcZone::none:
        break;
      case ArcZone::firstQuarter:
        if (supportsDrop(path.section)) return receiveDrag(drag, path);
        break;
      case ArcZone::middleHalf:
        if (m_delegate && m_delegate->canDrop(drag, path))
          return m_delegate && m_delegate->didDrop(drag, path);
        break;
      case ArcZone::lastQuarter:
        if (supportsDrop(path.section)) return receiveDrag(drag, {path.section, path.position + 1});
        break;
      }
    }
  }
  // On an empty circle, at its centre, on a boundary or where the place refuses, things are dropped at the
  // very front.
  return supportsDrop(0) && receiveDrag(drag, {0, 0});
}

void OrbelView::concludeDragOperation() {
  clearDropMarks();
}

std::optional<double> OrbelView::dropAngle(const DragInfo& drag) const {
  const Polar polar = geometry().polar(convertFromWindow(drag.locationInWindow()));
  // So near to the centre a direction means nothing: no place is shown, and the front is taken.
  if (polar.distance < RadialGeometry::kDeadZoneRadius) return std::nullopt;
  return polar.angle;
}

bool OrbelView::supportsDrop(std::int64_t section) const {
  return m_dataSource && m_dataSource->sectionSupportsDrop(section);
}

bool OrbelView::receiveDrag(const DragInfo& drag, ItemPath inFrontOf) {
  return m_delegate && m_delegate->didReceiveDrag(drag, inFrontOf);
}

void OrbelView::openGap(ItemPath gap) {
  selectItem(nullptr);
  m_gap = gap;
  layoutSubviews();
}

void OrbelView::markDropTarget(ItemPath target) {
  selectItem(m_sections.item(target).get());
  closeGap();
  layoutSubviews();
}

void OrbelView::clearDropMarks() {
  selectItem(nullptr);
  closeGap();
  layoutSubviews();
}

} // namespace orbel
