// What fills the radial view: a controller answers with counts and ready-made items.
// The view asks, always on the main thread; it borrows the data source, which calls setDataSource(nullptr)
// before it is destroyed.
#pragma once

#include "view/ItemPath.h"

#include <cstdint>
#include <memory>

namespace orbel {

class OrbelItem;

class OrbelViewDataSource {
public:
  virtual ~OrbelViewDataSource() = default;

  // Asked by reloadData() before every section and once more after the last.
  virtual std::int64_t numberOfSections() = 0;
  // Asked by reloadData() before every position and once more after the last.
  virtual std::int64_t numberOfItems(std::int64_t section) = 0;
  // A new item for that entry, never empty. Asked by reloadData() once an item.
  virtual std::shared_ptr<OrbelItem> item(ItemPath path) = 0;

  // Whether things from other programs may be dropped between the items of that section.
  virtual bool sectionSupportsDrop(std::int64_t section) = 0;
  // Asked each time the pointer moves inside an item's frame. The answer may be given after acting on the
  // item (opening it because it was pointed at): reloadData() and setEnabled() are allowed from here.
  virtual bool shouldDisplayTitle(ItemPath path) = 0;
};

} // namespace orbel
