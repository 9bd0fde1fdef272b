// Shows the members of one collection in a smaller menu of its own, over the main menu. It edits the members;
// closing, saving and hiding are its delegate's. Made hidden by a click on the collection; held by
// shared_ptr, because fades and delays outlast the delegate's interest in it. Points are screen points, y up.
#pragma once

#include "controllers/CollectionWindowControllerDelegate.h"
#include "controllers/RadialMenuController.h"
#include "model/CollectionMenuItem.h"
#include "platform/RunningApplication.h"

#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class CollectionWindowController : public RadialMenuController {
public:
  static std::shared_ptr<CollectionWindowController>
  withCollectionItem(std::shared_ptr<CollectionMenuItem> item);
  ~CollectionWindowController() override;

  // Empty once the delegate has been destroyed, which the menu may outlive by its fade.
  std::shared_ptr<CollectionWindowControllerDelegate> delegate() const { return m_delegate.lock(); }
  void setDelegate(std::weak_ptr<CollectionWindowControllerDelegate> delegate) {
    m_delegate = std::move(delegate);
  }
  const std::shared_ptr<CollectionMenuItem>& collectionItem() const { return m_collectionItem; }
  // Also reloads: the main menu hands over the object it has freshly loaded.
  void setCollectionItem(std::shared_ptr<CollectionMenuItem> item);

  // From the end of the fade-in until a hide starts.
  bool windowVisible() const override { return m_windowVisible; }
  void showWindowAtScreenPosition(Point point) override;
  void hideWindow();
  void persistItems() override;

  void didRightClickOutsideOfItem(ItemPath) override {}
  bool canDropItem(ItemPath, ItemPath) override { return false; }
  void didDropItem(ItemPath, ItemPath) override {}

private:
  explicit CollectionWindowController(std::shared_ptr<CollectionMenuItem> item);
  void askToClose();

  const MenuItemList& items() const override { return m_collectionItem->members(); }
  void insertItem(const MenuItemPointer& item, std::size_t index) override;
  void removeItem(std::size_t index) override;
  void itemOpened() override;
  bool opensWhenReached(const MenuItem& item) const override { return !item.canHoldSubitems(); }
  bool showsDot(const MenuItem& item) const override;
  std::vector<MenuEntry> itemMenuEntries() override { return {openWithEntry(), quitEntry(), removeEntry()}; }
  void closeButtonClicked() override { askToClose(); }
  void cancel() override { askToClose(); }
  void runningApplicationsChanged() override;
  void fadedIn() override { m_windowVisible = true; }

  std::shared_ptr<CollectionMenuItem> m_collectionItem;
  std::weak_ptr<CollectionWindowControllerDelegate> m_delegate;
  bool m_windowVisible = false;
  // As they were at the last change: one that has ended no longer says what it was.
  std::vector<RunningApplicationPointer> m_knownRegularApplications;
};

} // namespace orbel
