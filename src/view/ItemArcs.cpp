#include "view/ItemArcs.h"

#include "view/ItemSections.h"
#include "view/RadialGeometry.h"

namespace orbel {

ArcZone ItemArc::zoneAt(double angle) const {
  const double firstQuarterEnd = start + extent / 4;
  const double lastQuarterStart = start + 3 * extent / 4;
  if (start < angle && angle < firstQuarterEnd) return ArcZone::firstQuarter;
  if (firstQuarterEnd < angle && angle < lastQuarterStart) return ArcZone::middleHalf;
  if (lastQuarterStart < angle && angle < end()) return ArcZone::lastQuarter;
  return ArcZone::none;
}

ItemArcs::ItemArcs(const ItemSections& sections, double startArc, ItemPath gap)
    : m_sections(sections), m_startArc(startArc), m_gap(gap) {
  const double gapSize = gap.section != kNotFound ? 1 : 0;
  m_unit = kFullTurn / (sections.sumOfRelativeSizes() + gapSize);
}

ItemArcs::Iterator::Iterator(const ItemArcs& arcs) : m_arcs(arcs) {
  m_arc.path = {0, 0};
  m_arc.start = arcs.m_startArc;
  settle();
}

ItemArcs::Iterator& ItemArcs::Iterator::operator++() {
  m_arc.start = m_arc.end();
  ++m_arc.globalIndex;
  ++m_arc.path.position;
  settle();
  return *this;
}

bool ItemArcs::Iterator::isOver() const {
  return m_arc.path.section >= m_arcs.m_sections.numberOfSections();
}

void ItemArcs::Iterator::settle() {
  while (!isOver() && m_arc.path.position >= m_arcs.m_sections.numberOfItems(m_arc.path.section)) {
    m_arc.path = {m_arc.path.section + 1, 0};
  }
  if (isOver()) return;
  if (m_arc.path == m_arcs.m_gap) m_arc.start += m_arcs.m_unit;
  m_arc.extent = m_arcs.m_sections.relativeSize(m_arc.path) * m_arcs.m_unit;
}

} // namespace orbel
