// Shows the members of one collection in a smaller menu of its own, over the main menu. It edits the members;
// closing, saving and hiding are its delegate's. Made hidden by a click on the collection; held by
// shared_ptr, because fades and delays outlast the delegate's interest in it. Points are screen points, y up.
#pragma once

#include "controllers/CollectionWindowControllerDelegate.h"
#include "controllers/ItemContextMenu.h"
#include "controllers/RadialMenuWindow.h"
#include "foundation/Registration.h"
#include "model/CollectionMenuItem.h"

#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class CollectionWindowController : public OrbelViewDataSource,
                                   public OrbelViewDelegate,
                                   public std::enable_shared_from_this<CollectionWindowController> {
public:
  static std::shared_ptr<CollectionWindowController>
  withCollectionItem(std::shared_ptr<CollectionMenuItem> item);
  ~CollectionWindowController() override;

  // Empty once the delegate has gone, which the menu may outlive by its fade.
  std::shared_ptr<CollectionWindowControllerDelegate> delegate() const { return m_delegate.lock(); }
  void setDelegate(std::weak_ptr<CollectionWindowControllerDelegate> delegate) {
    m_delegate = std::move(delegate);
  }
  const std::shared_ptr<CollectionMenuItem>& collectionItem() const { return m_collectionItem; }
  // Also reloads: the main menu hands over the object it has freshly loaded.
  void setCollectionItem(std::shared_ptr<CollectionMenuItem> item);

  OrbelWindow& window() const { return m_menuWindow.window(); }
  OrbelView& orbelView() const { return m_menuWindow.orbelView(); }
  CloseButton& closeButton() const { return m_menuWindow.closeButton(); }
  // From the end of the fade-in until a hide starts.
  bool windowVisible() const { return m_windowVisible; }
  bool itemMenuVisible() const { return m_itemMenu->itemMenuVisible(); }
  const MenuItemPointer& targetMenuItem() const { return m_targetMenuItem; }
  // While false, hideWindow() does nothing.
  bool canClose() const { return m_canClose; }
  void setCanClose(bool canClose) { m_canClose = canClose; }

  void showWindowAtScreenPosition(Point point);
  void hideWindow();
  bool toolkitAvailable() const;
  void refreshWindowTint() { m_menuWindow.refreshTint(); }
  void persistItems();

  void openClicked(std::int64_t tag);
  void quitAppClicked();
  void removeClicked();

  std::int64_t numberOfSections() override { return 1; }
  std::int64_t numberOfItems(std::int64_t section) override;
  std::shared_ptr<OrbelItem> item(ItemPath path) override;
  bool sectionSupportsDrop(std::int64_t) override { return true; }
  bool shouldDisplayTitle(ItemPath path) override;

  void didClickItem(ItemPath item) override;
  void didRightClickItem(ItemPath item) override;
  void didRightClickOutsideOfItem(ItemPath) override {}
  void didMoveItem(ItemPath from, ItemPath to) override;
  bool canDropItem(ItemPath, ItemPath) override { return false; }
  void didDropItem(ItemPath, ItemPath) override {}
  bool didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) override;
  bool canDrop(const DragInfo& drag, ItemPath target) override;
  bool didDrop(const DragInfo& drag, ItemPath target) override;

private:
  explicit CollectionWindowController(std::shared_ptr<CollectionMenuItem> item);
  void observe();
  void runningApplicationsChanged();
  MenuItemPointer subitem(ItemPath path) const; // empty for a place that does not exist
  void askToClose();
  void didSelectItem();

  std::shared_ptr<CollectionMenuItem> m_collectionItem;
  RadialMenuWindow m_menuWindow;
  std::weak_ptr<CollectionWindowControllerDelegate> m_delegate;
  std::shared_ptr<ItemContextMenu> m_itemMenu = std::make_shared<ItemContextMenu>();
  MenuItemPointer m_targetMenuItem;
  bool m_windowVisible = false;
  bool m_canClose = true;
  // As they were at the last change: one that has ended no longer says what it was.
  std::vector<RunningApplicationPointer> m_knownRegularApplications;
  std::vector<Registration> m_observations;
};

} // namespace orbel
