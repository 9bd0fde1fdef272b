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

void OrbelWindowController::activate(const MenuItemPointer& item) {
  if (const auto collection = std::dynamic_pointer_cast<CollectionMenuItem>(item)) {
    openCollection(collection);
  } else {
    RadialMenuController::activate(item);
  }
}

void OrbelWindowController::openCollection(const std::shared_ptr<CollectionMenuItem>& collection) {
  const Point origin = window().frame().origin;
  const Point pointer = window().pointerLocationOrCenter();
  m_collectionController = CollectionWindowController::withCollectionItem(collection);
  m_collectionController->setDelegate(self());
  m_collectionController->showWindowAtScreenPosition({origin.x + pointer.x, origin.y + pointer.y});
  orbelView().closeAllTitles();
  orbelView().setEnabled(false);
}

void OrbelWindowController::collectionWindowControllerShouldClose(const CollectionWindowController& sender) {
  if (&sender != m_collectionController.get()) return;
  closeCollection();
  Platform::current().runLoop.after(kReloadAfterCollectionDelay, [self = self()] { self->refreshItems(); });
}

void OrbelWindowController::collectionWindowControllerDidSelectItem(
    const CollectionWindowController& sender) {
  if (&sender == m_collectionController.get()) hideWindow(false, true);
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

bool OrbelWindowController::canDrop(const DragInfo& drag, ItemPath targetPath) {
  const MenuItemPointer target = menuItem(targetPath);
  return (target && target->canHoldSubitems()) || RadialMenuController::canDrop(drag, targetPath);
}

bool OrbelWindowController::didDrop(const DragInfo& drag, ItemPath targetPath) {
  const MenuItemPointer target = menuItem(targetPath);
  if (!target || !target->canHoldSubitems()) return RadialMenuController::didDrop(drag, targetPath);
  const auto& paths = drag.filePaths();
  const MenuItemList dropped = paths ? menuItemsForDroppedPaths(*paths) : MenuItemList();
  if (dropped.empty()) return false;
  for (const MenuItemPointer& item : dropped)
    target->addSubitem(item);
  persistItems();
  refreshItems();
  return true;
}

} // namespace orbel
