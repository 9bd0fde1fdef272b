// What the main menu's and a collection's controller share: a radial menu's window that fades in and out, the
// items that it shows, their context menu with the commands that both offer, and the settings and running
// programs that it follows. A kind says what its list is (items(), insertItem(), removeItem(), persistItems())
// and what follows from what the user does (itemOpened(), cancel(), ...). Held by shared_ptr, because fades,
// dialogs and delays outlast one call; connect() makes a new one ready. Points are screen points, y up. The
// view has one section, so every position is an index into items().
#pragma once

#include "controllers/ItemContextMenu.h"
#include "controllers/RadialMenuWindow.h"
#include "foundation/NotificationCenter.h"
#include "foundation/Registration.h"
#include "model/MenuItem.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class RadialMenuController : public OrbelViewDataSource,
                             public OrbelViewDelegate,
                             public std::enable_shared_from_this<RadialMenuController> {
public:
  ~RadialMenuController() override;
  RadialMenuController(const RadialMenuController&) = delete;
  RadialMenuController& operator=(const RadialMenuController&) = delete;

  OrbelWindow& window() const { return m_menuWindow.window(); }
  OrbelView& orbelView() const { return m_menuWindow.orbelView(); }
  CloseButton& closeButton() const { return m_menuWindow.closeButton(); }
  // The item that the last context menu was opened for; its entries act on it.
  const MenuItemPointer& targetMenuItem() const { return m_targetMenuItem; }
  bool itemMenuVisible() const { return m_itemMenu.itemMenuVisible(); }
  // While false nothing hides the menu.
  bool canClose() const { return m_canClose; }
  void setCanClose(bool canClose) { m_canClose = canClose; }
  bool toolkitAvailable() const;
  virtual bool windowVisible() const = 0;

  virtual void showWindowAtScreenPosition(Point point) = 0;
  void refreshWindowTint() { m_menuWindow.refreshTint(); }
  virtual void persistItems() = 0;

  // Entries of the context menu.
  void openClicked(std::int64_t tag);
  void quitAppClicked();
  void removeClicked();

  std::int64_t numberOfSections() override { return 1; }
  std::int64_t numberOfItems(std::int64_t) override { return static_cast<std::int64_t>(items().size()); }
  std::shared_ptr<OrbelItem> item(ItemPath path) override;
  bool sectionSupportsDrop(std::int64_t) override { return true; }
  // In Swift Mode reaching an item opens it instead.
  bool shouldDisplayTitle(ItemPath path) override;

  void didClickItem(ItemPath item) override;
  void didRightClickItem(ItemPath item) override;
  void didMoveItem(ItemPath from, ItemPath to) override;
  bool didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) override;
  // Files are dropped onto what can open them.
  bool canDrop(const DragInfo& drag, ItemPath target) override;
  bool didDrop(const DragInfo& drag, ItemPath target) override;

protected:
  explicit RadialMenuController(SurfaceLevel level) : m_menuWindow(level) {}
  // Once, when the controller is held by a shared_ptr: fills the view and follows what it depends on.
  void connect();
  // The reverse, called first by every subclass's destructor: nothing asks for a list that is being destroyed.
  void disconnect();

  virtual const MenuItemList& items() const = 0;
  // The index is at most the number of items.
  virtual void insertItem(const MenuItemPointer& item, std::size_t index) = 0;
  virtual void removeItem(std::size_t index) = 0;
  // After removeClicked() has saved the list.
  virtual void itemRemoved() { orbelView().reloadData(); }

  // What a click on the item does: opens it.
  virtual void activate(const MenuItemPointer& item);
  // After an item was opened, by a click, by an "Open With..." entry, or with a dropped file (for each one).
  virtual void itemOpened() = 0;
  virtual bool opensWhenReached(const MenuItem&) const { return true; }
  virtual bool showsDot(const MenuItem& item) const { return item.isRunning(); }
  virtual bool hasContextMenu(const MenuItem&) const { return true; }
  virtual std::vector<MenuEntry> itemMenuEntries() = 0;
  virtual void closeButtonClicked() = 0;
  virtual void cancel() = 0; // Escape
  virtual void runningApplicationsChanged() = 0;

  MenuItemPointer menuItem(ItemPath path) const; // empty for a place that does not exist
  void setTargetMenuItem(MenuItemPointer item) { m_targetMenuItem = std::move(item); }
  // Whether one was open; the click that opens another one is then only the one that closes it.
  bool closeItemMenu();
  MenuEntry openWithEntry();
  MenuEntry quitEntry();
  MenuEntry removeEntry();

  void setWindowFrame(Point center, double side) { m_menuWindow.setFrame(center, side); }
  void fadeIn();
  void fadeOut();
  virtual void fadedIn() = 0;
  virtual void fadedOut() {}

  // The operation as a block that does nothing once the controller is destroyed.
  template <class Controller, class... Arguments>
  std::function<void(Arguments...)> weakly(void (Controller::*operation)(Arguments...)) {
    return [self = weak_from_this(), operation](Arguments... arguments) {
      if (const auto controller = self.lock())
        (static_cast<Controller&>(*controller).*operation)(arguments...);
    };
  }
  // Calls the operation for every notification of that name while the controller lives.
  template <class Controller>
  void observe(const char* name, void (Controller::*operation)()) {
    auto* const controller = static_cast<Controller*>(this);
    m_observations.push_back(NotificationCenter::defaultCenter().observe(
        name, nullptr, [controller, operation](const Notification&) { (controller->*operation)(); }));
  }

private:
  void magnifySettingsChanged() { m_menuWindow.magnificationChanged(); }
  std::size_t insertionIndex(std::int64_t position) const;

  RadialMenuWindow m_menuWindow;
  ItemContextMenu m_itemMenu;
  MenuItemPointer m_targetMenuItem;
  bool m_canClose = true;
  std::vector<Registration> m_observations;
};

} // namespace orbel
