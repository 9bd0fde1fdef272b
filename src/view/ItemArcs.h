// Walks the arcs that the items cover around the circle, in the order of the global index.
// Angles are radians clockwise from twelve o'clock. Each arc starts where the one before it ends; the first
// starts at startArc, and they are not wrapped at a full turn. A walk stays valid when the sections change
// under it.
#pragma once

#include "view/ItemPath.h"

#include <cstdint>
#include <iterator>

namespace orbel {

class ItemSections;

// What a drag over an arc means: a place in front of the item, the item itself, a place behind it. A boundary
// between two zones belongs to neither.
enum class ArcZone { none, firstQuarter, middleHalf, lastQuarter };

struct ItemArc {
  ItemPath path;
  std::int64_t globalIndex = 0;
  double start = 0;
  double extent = 0;

  double end() const { return start + extent; }
  double center() const { return start + extent / 2; }
  bool strictlyContains(double angle) const { return start < angle && angle < end(); }
  ArcZone zoneAt(double angle) const;
};

class ItemArcs {
public:
  // With a gap, a free slot of normal size opens in front of the item that holds that path, and every arc
  // shrinks to make room for it. A gap behind a section's last item is in front of no item: its room is left
  // at the circle's end.
  ItemArcs(const ItemSections& sections, double startArc, ItemPath gap = {});

  class Iterator {
  public:
    const ItemArc& operator*() const { return m_arc; }
    const ItemArc* operator->() const { return &m_arc; }
    Iterator& operator++();
    bool operator==(std::default_sentinel_t) const { return isOver(); }

  private:
    friend class ItemArcs;
    explicit Iterator(const ItemArcs& arcs);
    bool isOver() const;
    void settle();

    const ItemArcs& m_arcs;
    ItemArc m_arc;
  };
  Iterator begin() const { return Iterator(*this); }
  std::default_sentinel_t end() const { return {}; }

private:
  const ItemSections& m_sections;
  double m_startArc;
  ItemPath m_gap;
  double m_unit; // the arc of relative size 1
};

} // namespace orbel
