// Where the items stand, and how the view is filled.
#include "view/OrbelView.h"

#include "scene/Animation.h"
#include "scene/ViewTree.h"
#include "view/ItemArcs.h"

#include <cmath>
#include <unordered_map>
#include <utility>

namespace orbel {

OrbelView::OrbelView(const Rect& frame) : View(frame) {
  updateTrackingAreas();
}

void OrbelView::setEnabled(bool enabled) {
  m_enabled = enabled;
  updateTrackingAreas();
}

void OrbelView::updateTrackingAreas() {
  setTrackingArea(m_enabled ? std::optional(bounds()) : std::nullopt);
}

View* OrbelView::hitTest(Point) {
  return m_enabled ? this : nullptr;
}

void OrbelView::frameDidChange() {
  updateTrackingAreas();
  layoutSubviews();
  prepareIcons();
}

void OrbelView::presentationDidChange() {
  if (std::exchange(m_iconsPreparedFor, tree()) != tree()) prepareIcons();
}

void OrbelView::layoutSubviewsAnimated(bool animated) {
  const RadialGeometry circle = geometry();
  const Animated how = animated ? Animated::yes : Animated::no;
  for (const ItemArc& arc : ItemArcs(m_sections, m_startArc, m_gap)) {
    m_sections.item(arc.path)->setFrame(circle.frame(arc.center(), arc.extent), how);
  }
}

void OrbelView::resetLayout() {
  m_startArc = 0;
  layoutSubviewsAnimated(false);
}

double OrbelView::centerArcForItem(const OrbelItem& item) const {
  for (const ItemArc& arc : ItemArcs(m_sections, 0)) {
    if (m_sections.item(arc.path).get() == &item) return arc.center();
  }
  return 0;
}

void OrbelView::reloadData() {
  ++m_reloads;
  const std::vector<std::shared_ptr<View>> outgoing = subviews();
  m_draggedItem.reset();
  closeGap();
  askDataSource();
  replaceSubviews(outgoing);
  prepareIcons();
  m_lastMouseOverItemIndex = -1;
  // The new items stand at once where the pointer wants them, magnified already. They had no place before, so
  // none of them can have had the pointer in it: no item's title is asked for, and one that was taken over
  // stays as long as its item is still under the pointer.
  const ImmediateAnimationGroup immediately;
  trackPointer(Titles::leave);
  closeTitlesBeside(pointerLocation());
}

void OrbelView::askDataSource() {
  m_sections.clear();
  m_totalNumberOfItems = 0;
  if (!m_dataSource) return;
  for (std::int64_t section = 0; section < m_dataSource->numberOfSections(); ++section) {
    m_sections.addSection();
    for (std::int64_t position = 0; position < m_dataSource->numberOfItems(section); ++position) {
      m_sections.append(m_dataSource->item({section, position}));
      ++m_totalNumberOfItems;
    }
  }
}

void OrbelView::replaceSubviews(const std::vector<std::shared_ptr<View>>& outgoing) {
  std::unordered_multimap<const Image*, OrbelItem*> replaceable;
  for (const auto& view : outgoing) {
    if (auto* const item = dynamic_cast<OrbelItem*>(view.get()))
      replaceable.emplace(item->image().get(), item);
  }
  m_sections.forEach([&](const OrbelItem&, ItemPath path) {
    const std::shared_ptr<OrbelItem>& incoming = m_sections.item(path);
    auto [candidate, last] = replaceable.equal_range(incoming->image().get());
    while (candidate != last && candidate->second->title() != incoming->title())
      ++candidate;
    if (candidate == last) {
      addSubview(incoming, Animated::yes);
      return;
    }
    addSubview(incoming);
    incoming->replace(*candidate->second);
    candidate->second->removeFromSuperview();
    replaceable.erase(candidate);
  });
  for (const auto& [image, item] : replaceable)
    item->closeTitle();
  for (const auto& view : outgoing)
    view->removeFromSuperview(Animated::yes);
}

void OrbelView::prepareIcons() const {
  if (!tree()) return;
  const int side = static_cast<int>(std::ceil(geometry().largestSide() * tree()->host().backingScale()));
  if (side <= 0) return;
  m_sections.forEach([&](const OrbelItem& item, ItemPath) {
    if (item.image()) item.image()->prepare(side, side);
  });
}

} // namespace orbel
