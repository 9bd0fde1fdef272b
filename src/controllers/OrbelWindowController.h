// Owns the main radial menu: loads the user's items and the running programs, feeds the view, shows the
// window around a point and fades it out again, and carries out what the user does in it. Every change is
// saved at once. Made hidden by the application delegate for a show, and let go after
// "OrbelWindowControllerDidDisappearNotification"; held by shared_ptr, because fades, dialogs and delays
// outlast one call. Points are screen points, y up. The view has one section, so every position is an index
// into the item list.
//
// OrbelWindowController.cpp: making, showing, hiding. ...Items.cpp: the list. ...Commands.cpp: clicks, moves,
// drops.
// ...Menus.cpp: the context menus and their entries.
#pragma once

#include "controllers/CollectionWindowController.h"
#include "controllers/CollectionWindowControllerDelegate.h"
#include "controllers/ItemContextMenu.h"
#include "controllers/RadialMenuWindow.h"
#include "controllers/StoredMenuItems.h"
#include "foundation/Registration.h"
#include "model/RunningAppMenuItem.h"
#include "platform/RunningApplication.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

inline constexpr const char* kOrbelWindowControllerDidDisappearNotification =
    "OrbelWindowControllerDidDisappearNotification";

class OrbelWindowController : public OrbelViewDataSource,
                              public OrbelViewDelegate,
                              public CollectionWindowControllerDelegate,
                              public std::enable_shared_from_this<OrbelWindowController> {
public:
  // Seconds after the fade-in during which the close button ignores clicks: the menu opens under the pointer,
  // and the click that was meant for what lay there before must not close it.
  static constexpr double kCloseButtonGuard = 0.75;
  // Seconds between the close of a collection's menu and the reload that shows its new icon.
  static constexpr double kReloadAfterCollectionDelay = 0.3;

  static std::shared_ptr<OrbelWindowController> create();
  ~OrbelWindowController() override;

  OrbelWindow& window() const { return m_menuWindow.window(); }
  OrbelView& orbelView() const { return m_menuWindow.orbelView(); }
  CloseButton& closeButton() const { return m_menuWindow.closeButton(); }
  // The user's items in stored order, then the running programs that none of them represents.
  const MenuItemList& menuItems() const { return m_menuItems; }
  const RunningApplicationPointer& lastFrontmostApp() const { return m_lastFrontmostApp; }
  // When the fade-in finished, by the run loop's clock; none before.
  const std::optional<double>& menuShownTimestamp() const { return m_menuShownTimestamp; }
  const MenuItemPointer& targetMenuItem() const { return m_targetMenuItem; }
  bool itemMenuVisible() const { return m_itemMenu->itemMenuVisible(); }
  // False while a dialog of ours is up: nothing hides the menu then.
  bool canClose() const { return m_canClose; }
  const std::shared_ptr<CollectionWindowController>& collectionController() const {
    return m_collectionController;
  }

  bool toolkitAvailable() const;
  // Over the menu's square frame, over an open collection's, or over a pop-up of theirs.
  bool mouseHoveringOverMenu() const;
  bool windowVisible() const { return window().alphaValue() > 0.5; }

  void showWindowAtScreenPosition(Point point);
  void hideWindow(bool activateLastApp) { hideWindow(activateLastApp, false); }
  // Force also closes an open collection's menu, without which nothing hides.
  void hideWindow(bool activateLastApp, bool force);

  void refreshWindowTint() { m_menuWindow.refreshTint(); }
  // Loads the list anew from the store and reconciles it with what runs.
  void refreshItems();
  void persistItems();
  // Drops the programs that have ended from the list and appends those that have come.
  void reconcileRunningApplications();

  // Entries of the context menus; they act on targetMenuItem().
  void openClicked(std::int64_t tag);
  void renameCollectionClicked();
  void ungroupCollectionClicked();
  void quitAppClicked();
  void removeClicked();
  void keepAppClicked();
  void newCollectionClicked();
  // For the open panel of keepAppClicked(): only the target's own bundle.
  bool shouldEnableUrl(const std::string& path) const;

  std::int64_t numberOfSections() override { return 1; }
  std::int64_t numberOfItems(std::int64_t) override { return static_cast<std::int64_t>(m_menuItems.size()); }
  std::shared_ptr<OrbelItem> item(ItemPath path) override;
  bool sectionSupportsDrop(std::int64_t) override { return true; }
  bool shouldDisplayTitle(ItemPath path) override;

  void didClickItem(ItemPath item) override;
  void didRightClickItem(ItemPath item) override;
  void didRightClickOutsideOfItem(ItemPath item) override;
  void didMoveItem(ItemPath from, ItemPath to) override;
  bool canDropItem(ItemPath dragged, ItemPath target) override;
  void didDropItem(ItemPath dragged, ItemPath target) override;
  bool didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) override;
  bool canDrop(const DragInfo& drag, ItemPath target) override;
  bool didDrop(const DragInfo& drag, ItemPath target) override;

  void collectionWindowControllerShouldClose(const CollectionWindowController& sender) override;
  void collectionWindowControllerShouldPersistItems() override { persistItems(); }
  void collectionWindowControllerDidSelectItem(const CollectionWindowController& sender) override;

private:
  OrbelWindowController();
  void connect();
  void cancel();
  void closeCollection();
  void followOpenCollection(const MenuItemList& earlier);
  void menuSizeSettingsChanged();

  MenuItemPointer menuItem(ItemPath path) const; // empty for a place that does not exist
  std::size_t insertionIndex(std::int64_t position) const;
  bool dotsHaveChanged() const;
  void openCollection(const std::shared_ptr<CollectionMenuItem>& collection);
  std::shared_ptr<RunningAppMenuItem> targetRunningApp() const;
  std::vector<MenuEntry> itemMenuEntries();
  std::function<void()> weakly(void (OrbelWindowController::*operation)());

  MenuItemList m_menuItems;
  std::vector<bool> m_shownDots; // by position, as the view was last told
  StoredMenuItems m_store;
  RadialMenuWindow m_menuWindow;
  RunningApplicationPointer m_lastFrontmostApp;
  std::optional<double> m_menuShownTimestamp;
  std::shared_ptr<ItemContextMenu> m_itemMenu = std::make_shared<ItemContextMenu>();
  std::unique_ptr<OpenContextMenu> m_outsideItemMenu;
  MenuItemPointer m_targetMenuItem;
  bool m_canClose = true;
  std::shared_ptr<CollectionWindowController> m_collectionController;
  std::weak_ptr<CollectionWindowController> m_closingCollection; // fading out
  std::vector<Registration> m_observations;
};

} // namespace orbel
