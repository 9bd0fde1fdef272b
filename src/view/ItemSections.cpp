#include "view/ItemSections.h"

#include "view/OrbelItem.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
// Negative indices become huge ones, so one comparison checks both ends.
std::size_t asIndex(std::int64_t number) {
  return static_cast<std::size_t>(number);
}
} // namespace

std::int64_t ItemSections::numberOfItems(std::int64_t section) const {
  if (asIndex(section) >= m_sections.size()) return 0;
  return static_cast<std::int64_t>(m_sections[asIndex(section)].items.size());
}

const std::shared_ptr<OrbelItem>& ItemSections::item(ItemPath path) const {
  static const std::shared_ptr<OrbelItem> none;
  if (asIndex(path.section) >= m_sections.size()) return none;
  const auto& items = m_sections[asIndex(path.section)].items;
  return asIndex(path.position) < items.size() ? items[asIndex(path.position)] : none;
}

void ItemSections::clear() {
  m_sections.clear();
  m_otherSizes.clear();
}

void ItemSections::append(std::shared_ptr<OrbelItem> item) {
  m_sections.back().items.push_back(std::move(item));
  m_sections.back().relativeSizes.push_back(1);
}

void ItemSections::insert(std::shared_ptr<OrbelItem> item, ItemPath path) {
  if (asIndex(path.section) >= m_sections.size()) return;
  auto& items = m_sections[asIndex(path.section)].items;
  const auto position = std::min(asIndex(path.position), items.size());
  items.insert(items.begin() + static_cast<std::ptrdiff_t>(position), std::move(item));
}

void ItemSections::remove(const OrbelItem& item) {
  for (Section& section : m_sections) {
    std::erase_if(section.items,
                  [&](const std::shared_ptr<OrbelItem>& entry) { return entry.get() == &item; });
  }
}

double ItemSections::relativeSize(ItemPath path) const {
  if (asIndex(path.section) < m_sections.size()) {
    const auto& sizes = m_sections[asIndex(path.section)].relativeSizes;
    if (asIndex(path.position) < sizes.size()) return sizes[asIndex(path.position)];
  }
  const auto other = m_otherSizes.find(path);
  return other != m_otherSizes.end() ? other->second : 0;
}

void ItemSections::setRelativeSize(double size, ItemPath path) {
  if (asIndex(path.section) < m_sections.size()) {
    auto& sizes = m_sections[asIndex(path.section)].relativeSizes;
    if (asIndex(path.position) < sizes.size()) {
      sizes[asIndex(path.position)] = size;
      return;
    }
  }
  m_otherSizes[path] = size;
}

void ItemSections::setAllRelativeSizes(double size) {
  forEach([&](const OrbelItem&, ItemPath path) { setRelativeSize(size, path); });
}

double ItemSections::sumOfRelativeSizes() const {
  double sum = 0;
  forEach([&](const OrbelItem&, ItemPath path) { sum += relativeSize(path); });
  return sum;
}

} // namespace orbel
