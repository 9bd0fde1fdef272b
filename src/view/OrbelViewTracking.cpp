// The pointer: which item grows, how far the circle turns, whose title shows.
#include "view/OrbelView.h"

#include "view/ItemArcs.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace orbel {

namespace {
// The hovered item's relative size; that of the item opposite to it is 1.
constexpr double kLargestRelativeSize = std::numbers::pi + 1;
} // namespace

void OrbelView::mouseMoved(const MouseEvent&) {
  trackPointer(Titles::follow);
}

void OrbelView::trackPointer(Titles titles) {
  const std::optional<Point> pointer = pointerLocation();
  // A display that cannot report where the pointer is has it over none of our surfaces, so it points at
  // no item.
  if (!pointer) return rest();
  const Polar polar = geometry().polar(*pointer);
  if (polar.distance < RadialGeometry::kDeadZoneRadius) return rest();

  const std::int64_t slot = geometry().slotAt(polar.angle);
  if (titles == Titles::follow && updateTitles(*pointer) == TitleAnswer::itemsReplaced) return;
  if (slot == m_lastMouseOverItemIndex) return;
  m_lastMouseOverItemIndex = slot;
  magnifyAroundSlot(slot);
  layoutSubviews();
}

void OrbelView::trackPointerAnew() {
  // No slot is -1, so the step lays out whatever the slot was before.
  m_lastMouseOverItemIndex = -1;
  trackPointer(Titles::follow);
}

void OrbelView::rest() {
  m_sections.setAllRelativeSizes(1);
  m_startArc = 0;
  m_lastMouseOverItemIndex = -1;
  layoutSubviews();
}

OrbelView::TitleAnswer OrbelView::updateTitles(Point pointer) {
  // A click may have brought a menu up over this view and disabled it; the tracking that ends the click must
  // not put a title on top of that menu.
  if (!m_enabled) return TitleAnswer::itemsStand;
  // The question may open the item at once, and that may bring up a dialog under which the pointer continues
  // to move. To ask again from in there would open again and again.
  if (m_askingForTitle) return TitleAnswer::itemsStand;

  const std::uint64_t reloads = m_reloads;
  for (std::int64_t section = 0; section < numberOfSections(); ++section) {
    for (std::int64_t position = 0; position < numberOfItemsInSection(section); ++position) {
      OrbelItem& item = *m_sections.item({section, position});
      if (!item.frame().contains(pointer)) {
        item.closeTitle();
        continue;
      }
      const std::shared_ptr<OrbelItem> asked = m_sections.item({section, position});
      m_askingForTitle = true;
      const bool display = m_dataSource && m_dataSource->shouldDisplayTitle({section, position});
      m_askingForTitle = false;
      // A reload has laid out the new items for the pointer already.
      if (m_reloads != reloads) return TitleAnswer::itemsReplaced;
      display ? asked->showTitle() : asked->closeTitle();
    }
  }
  return TitleAnswer::itemsStand;
}

void OrbelView::magnifyAroundSlot(std::int64_t slot) {
  const RadialGeometry circle = geometry();
  const bool magnifies = m_zoomingEnabled && m_magnifyItemsOnMouseOver;
  const OrbelItem* best = nullptr;
  double bestSize = 0;
  std::int64_t bestIndex = 0;
  std::int64_t index = 0;
  m_sections.forEach([&](const OrbelItem& item, ItemPath path) {
    const double size = magnifies ? kLargestRelativeSize - circle.angleBetweenSlots(slot, index) : 1;
    setRelativeSize(size, path);
    if (size > bestSize) {
      best = &item;
      bestSize = size;
      bestIndex = index;
    }
    ++index;
  });
  // The grown item's centre comes to lie on its even slot's, which is the direction the pointer is in.
  const double turn = best ? circle.slotCenter(bestIndex) - centerArcForItem(*best) : 0;
  m_startArc = std::isnan(turn) ? 0 : turn;
}

void OrbelView::mouseExited(const MouseEvent&) {
  // Moving on to a bubble's edge is reported as an exit too.
  const std::optional<Point> pointer = pointerLocation();
  if (pointer && bounds().contains(*pointer)) return;
  closeAllTitles();
  rest();
}

void OrbelView::closeAllTitles() {
  // The dragged item stands in no section, but its bubble is open like any other.
  if (m_draggedItem) m_draggedItem->closeTitle();
  m_sections.forEach([](OrbelItem& item, ItemPath) { item.closeTitle(); });
}

void OrbelView::closeTitlesBeside(std::optional<Point> pointer) {
  m_sections.forEach([&](OrbelItem& item, ItemPath) {
    if (!pointer || !item.frame().contains(*pointer)) item.closeTitle();
  });
}

void OrbelView::selectItem(const OrbelItem* selected) {
  m_sections.forEach([&](OrbelItem& item, ItemPath) { item.setSelected(&item == selected); });
}

} // namespace orbel
