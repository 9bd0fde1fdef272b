// The user's items in the preferences store, under "menuItems": read at every show, written after every
// change. What cannot be read is left out, and before a write ends its last trace the file is kept aside as
// it was. Owned by the main menu controller.
#pragma once

#include "model/MenuItem.h"

#include <optional>

namespace orbel {

class StoredMenuItems {
public:
  struct Loaded {
    MenuItemList items;           // in stored order
    bool droppedElements = false; // elements of the list itself could not be read
  };
  // None when nothing is stored. A stored value that is no list counts as an empty one with
  // something dropped.
  std::optional<Loaded> load();

  // Writes every item that has a stored form, in order, in place of the old list.
  void save(const MenuItemList& items);

private:
  bool m_storeHoldsUnreadable = false;
};

} // namespace orbel
