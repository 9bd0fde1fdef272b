// Owns the main radial menu: loads the user's items and the running programs, feeds the view,
// shows the window around a point and fades it out again, and carries out what the user does in
// it. Every change is saved at once. Made hidden by the application delegate for a show, and
// released after "OrbelWindowControllerDidDisappearNotification".
//
// OrbelWindowController.cpp: making, showing, hiding. ...Items.cpp: the list. ...Commands.cpp: clicks, drops.
// ...Menus.cpp: the context menus and their entries.
#pragma once

#include "controllers/CollectionWindowController.h"
#include "controllers/CollectionWindowControllerDelegate.h"
#include "controllers/RadialMenuController.h"
#include "controllers/StoredMenuItems.h"
#include "model/RunningAppMenuItem.h"
#include "platform/RunningApplication.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

inline constexpr const char* kOrbelWindowControllerDidDisappearNotification =
    "OrbelWindowControllerDidDisappearNotification";

class OrbelWindowController : public RadialMenuController, public CollectionWindowControllerDelegate {
public:
  // Seconds after the fade-in during which the close button ignores clicks: the menu opens under the pointer,
  // and the click that was meant for what lay there before must not close it.
  static constexpr double kCloseButtonGuard = 0.75;
  // Seconds between the close of a collection's menu and the reload that shows its new icon.
  static constexpr double kReloadAfterCollectionDelay = 0.3;

  static std::shared_ptr<OrbelWindowController> create();
  ~OrbelWindowController() override;

  // The user's items in stored order, then the running programs that none of them represents.
  const MenuItemList& menuItems() const { return m_menuItems; }
  const RunningApplicationPointer& lastFrontmostApp() const { return m_lastFrontmostApp; }
  // When the fade-in finished, by the run loop's clock; none before.
  const std::optional<double>& menuShownTimestamp() const { return m_menuShownTimestamp; }
  const std::shared_ptr<CollectionWindowController>& collectionController() const {
    return m_collectionController;
  }

  // Over the menu's square frame, over an open collection's, or over a pop-up of theirs.
  bool mouseHoveringOverMenu() const;
  bool windowVisible() const override { return window().alphaValue() > 0.5; }

  void showWindowAtScreenPosition(Point point) override;
  // The display knows only now where the pointer is: the menu that was shown elsewhere comes to it. Nothing
  // happens while it is hidden or fades out.
  void moveWindowToScreenPosition(Point point);
  void hideWindow(bool activateLastApp) { hideWindow(activateLastApp, false); }
  // Force also closes an open collection's menu, without which nothing hides.
  void hideWindow(bool activateLastApp, bool force);

  // Loads the list anew from the store and reconciles it with what runs.
  void refreshItems();
  void persistItems() override;
  // Drops the programs that have ended from the list and appends those that have come.
  void reconcileRunningApplications();

  // Further entries of the context menus. Nothing hides the menu while a dialog of theirs is up.
  void renameCollectionClicked();
  void ungroupCollectionClicked();
  void keepAppClicked();
  void newCollectionClicked();
  // For the open panel of keepAppClicked(): only the target's own bundle.
  bool shouldEnableUrl(const std::string& path) const;

  std::shared_ptr<OrbelItem> item(ItemPath path) override;

  void didRightClickOutsideOfItem(ItemPath item) override;
  bool canDropItem(ItemPath dragged, ItemPath target) override;
  void didDropItem(ItemPath dragged, ItemPath target) override;
  bool canDrop(const DragInfo& drag, ItemPath target) override;
  bool didDrop(const DragInfo& drag, ItemPath target) override;

  void collectionWindowControllerShouldClose(const CollectionWindowController& sender) override;
  void collectionWindowControllerShouldPersistItems() override { persistItems(); }
  void collectionWindowControllerDidSelectItem(const CollectionWindowController& sender) override;

private:
  OrbelWindowController();
  std::shared_ptr<OrbelWindowController> self();
  void closeCollection();
  void followOpenCollection(const MenuItemList& earlier);
  void menuSizeSettingsChanged();

  const MenuItemList& items() const override { return m_menuItems; }
  void insertItem(const MenuItemPointer& item, std::size_t index) override;
  void removeItem(std::size_t index) override;
  // A running program that is no longer pinned comes back among the running ones: the reload from the store
  // finds it.
  void itemRemoved() override { refreshItems(); }
  void activate(const MenuItemPointer& item) override;
  void itemOpened() override { hideWindow(false); }
  bool hasContextMenu(const MenuItem& item) const override;
  std::vector<MenuEntry> itemMenuEntries() override;
  void closeButtonClicked() override;
  void cancel() override;
  void runningApplicationsChanged() override { reconcileRunningApplications(); }
  void fadedIn() override;
  void fadedOut() override;

  bool dotsHaveChanged() const;
  void openCollection(const std::shared_ptr<CollectionMenuItem>& collection);
  std::shared_ptr<RunningAppMenuItem> targetRunningApp() const;

  MenuItemList m_menuItems;
  std::vector<bool> m_shownDots; // by position, as last set in the view
  StoredMenuItems m_store;
  RunningApplicationPointer m_lastFrontmostApp;
  std::optional<double> m_menuShownTimestamp;
  std::unique_ptr<OpenContextMenu> m_outsideItemMenu;
  std::shared_ptr<CollectionWindowController> m_collectionController;
  std::weak_ptr<CollectionWindowController> m_closingCollection; // fading out
};

} // namespace orbel
