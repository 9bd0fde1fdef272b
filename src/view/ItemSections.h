// The items of the radial view by section and position, and their relative sizes.
// Sizes belong to the place and not to the item: taking an item out leaves the size of every place as it was.
// Walking the sections in order and the items of each in order numbers the items 0, 1, 2, ...: the global
// index. Owned by the view.
#pragma once

#include "view/ItemPath.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace orbel {

class OrbelItem;

class ItemSections {
public:
  bool isEmpty() const { return m_sections.empty(); }
  std::int64_t numberOfSections() const { return static_cast<std::int64_t>(m_sections.size()); }
  // 0 for a section that does not exist.
  std::int64_t numberOfItems(std::int64_t section) const;
  // Empty where there is none. Whoever asks others before using it again keeps a copy.
  const std::shared_ptr<OrbelItem>& item(ItemPath path) const;

  void clear();
  void addSection() { m_sections.emplace_back(); }
  // At the end of the last section, with relative size 1.
  void append(std::shared_ptr<OrbelItem> item);
  // A position beyond the section's end means its end; a section that does not exist takes nothing.
  void insert(std::shared_ptr<OrbelItem> item, ItemPath path);
  void remove(const OrbelItem& item);

  // 1 is the normal size; 0 (no arc at all) where none was ever set.
  double relativeSize(ItemPath path) const;
  void setRelativeSize(double size, ItemPath path);
  // Of every item that stands in a section now.
  void setAllRelativeSizes(double size);
  double sumOfRelativeSizes() const;

  // Calls visit(item, path) in the order of the global index. The visitor leaves the sections as they are.
  template <typename Visitor>
  void forEach(Visitor&& visit) const {
    for (std::int64_t section = 0; section < numberOfSections(); ++section) {
      const auto& items = m_sections[static_cast<std::size_t>(section)].items;
      for (std::size_t position = 0; position < items.size(); ++position) {
        visit(*items[position], ItemPath{section, static_cast<std::int64_t>(position)});
      }
    }
  }

private:
  struct Section {
    std::vector<std::shared_ptr<OrbelItem>> items;
    std::vector<double> relativeSizes; // of the places that append() filled; as long while an item is out
  };

  std::vector<Section> m_sections;
  // Of every other place. Only an item that was moved to the end of a section, or a caller's own key, comes
  // here, so the pointer's moves find all their sizes in the sections.
  std::map<ItemPath, double> m_otherSizes;
};

} // namespace orbel
