// What the user does with the radial view, reported to a controller by section and position. The view calls,
// always on the main thread; it borrows the delegate, which calls setDelegate(nullptr) before it is
// destroyed. reloadData() and setEnabled() of the view are allowed from every operation.
#pragma once

#include "scene/DragInfo.h"
#include "view/ItemPath.h"

namespace orbel {

class OrbelViewDelegate {
public:
  virtual ~OrbelViewDelegate() = default;

  virtual void didClickItem(ItemPath item) = 0;
  virtual void didRightClickItem(ItemPath item) = 0;
  // A right-click beside the icons; the item is the one whose arc lies in the pointer's direction.
  virtual void didRightClickOutsideOfItem(ItemPath item) = 0;

  // End of a reorder drag. The new position counts the items without the moved one: it is the moved item's
  // index after the move.
  virtual void didMoveItem(ItemPath from, ItemPath to) = 0;
  // Asked while an item is dragged over the middle of another. Both paths are the model's, with the dragged
  // item in.
  virtual bool canDropItem(ItemPath dragged, ItemPath target) = 0;
  // The view does not put the dragged item back: the model changes and the view is reloaded.
  virtual void didDropItem(ItemPath dragged, ItemPath target) = 0;

  // Drags from other programs. A did... answers whether the drop was taken.
  virtual bool didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) = 0;
  virtual bool canDrop(const DragInfo& drag, ItemPath target) = 0;
  virtual bool didDrop(const DragInfo& drag, ItemPath target) = 0;
};

} // namespace orbel
