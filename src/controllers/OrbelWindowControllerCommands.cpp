#include "controllers/OrbelWindowController.h"

#include "controllers/DroppedFiles.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
bool hasSubitems(const MenuItem& item) {
  const auto subitems = item.subitems();
  return subitems && !subitems->empty();
}

bool isRunningAppItem(const MenuItem& item) {
  return dynamic_cast<const RunningAppMenuItem*>(&item) != nullptr;
}
} // namespace

void OrbelWindowController::didClickItem(ItemPath path) {
  const MenuItemPointer clicked = menuItem(path);
  // The second half of a double click lands on a menu that is fading away; it must not open the item twice.
  if (!clicked || window().isFadingOut()) return;
  const auto self = shared_from_this();
  if (clicked->canHoldSubitems()) {
    if (auto collection = std::dynamic_pointer_cast<CollectionMenuItem>(clicked)) openCollection(collection);
    return;
  }
  clicked->open();
  hideWindow(false);
}

void OrbelWindowController::openCollection(const std::shared_ptr<CollectionMenuItem>& collection) {
  // In the middle of the menu where the display does not tell the pointer's place.
  const Rect frame = window().frame();
  const auto pointer = window().surface().pointerLocation();
  m_collectionController = CollectionWindowController::withCollectionItem(collection);
  m_collectionController->setDelegate(shared_from_this());
  m_collectionController->showWindowAtScreenPosition(
      pointer ? Point{frame.minX() + pointer->x, frame.minY() + pointer->y} : frame.center());
  orbelView().closeAllTitles();
  orbelView().setEnabled(false);
}

void OrbelWindowController::collectionWindowControllerShouldClose(const CollectionWindowController& sender) {
  if (&sender != m_collectionController.get()) return;
  closeCollection();
  Platform::current().runLoop.after(kReloadAfterCollectionDelay,
                                    [self = shared_from_this()] { self->refreshItems(); });
}

void OrbelWindowController::collectionWindowControllerDidSelectItem(
    const CollectionWindowController& sender) {
  if (&sender == m_collectionController.get()) hideWindow(false, true);
}

void OrbelWindowController::didMoveItem(ItemPath from, ItemPath to) {
  const MenuItemPointer moved = menuItem(from);
  if (!moved) return;
  m_menuItems.erase(m_menuItems.begin() + from.position);
  m_menuItems.insert(m_menuItems.begin() + static_cast<std::ptrdiff_t>(insertionIndex(to.position)), moved);
  persistItems();
}

bool OrbelWindowController::canDropItem(ItemPath draggedPath, ItemPath targetPath) {
  const MenuItemPointer dragged = menuItem(draggedPath);
  const MenuItemPointer target = menuItem(targetPath);
  return dragged && target && !isRunningAppItem(*dragged) && !hasSubitems(*dragged) &&
         target->canHoldSubitems() && dragged->name() != CoreMenuItem::kFinder;
}

void OrbelWindowController::didDropItem(ItemPath draggedPath, ItemPath targetPath) {
  const MenuItemPointer dragged = menuItem(draggedPath);
  const MenuItemPointer target = menuItem(targetPath);
  if (dragged && target && !isRunningAppItem(*dragged) && !dragged->canHoldSubitems() &&
      target->canHoldSubitems()) {
    std::erase(m_menuItems, dragged);
    target->addSubitem(dragged);
  }
  persistItems();
  orbelView().reloadData();
}

bool OrbelWindowController::didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) {
  if (const auto& paths = drag.filePaths()) {
    const MenuItemList items = menuItemsForDroppedPaths(*paths);
    const auto index = static_cast<std::ptrdiff_t>(insertionIndex(inFrontOf.position));
    m_menuItems.insert(m_menuItems.begin() + index, items.begin(), items.end());
  }
  persistItems();
  orbelView().reloadData();
  return true;
}

bool OrbelWindowController::canDrop(const DragInfo& drag, ItemPath targetPath) {
  const MenuItemPointer target = menuItem(targetPath);
  return target && (target->canHoldSubitems() || canOpenAny(*target, drag.filePaths()));
}

bool OrbelWindowController::didDrop(const DragInfo& drag, ItemPath targetPath) {
  const MenuItemPointer target = menuItem(targetPath);
  const auto& paths = drag.filePaths();
  if (!target || !paths) return false;
  const auto self = shared_from_this();
  bool added = false;
  bool opened = false;
  for (const std::string& path : *paths) {
    if (target->canHoldSubitems()) {
      const MenuItemPointer item = menuItemForDroppedPath(path);
      target->addSubitem(item);
      added = added || item;
    } else if (target->canOpenPath(path)) {
      target->openPath(path);
      opened = true;
    }
  }
  if (opened) hideWindow(false);
  if (added) {
    persistItems();
    refreshItems();
  }
  return added || opened;
}

} // namespace orbel
