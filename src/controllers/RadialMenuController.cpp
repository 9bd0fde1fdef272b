#include "controllers/RadialMenuController.h"

#include "controllers/CompanionToolkit.h"
#include "controllers/DroppedFiles.h"
#include "controllers/ItemLookup.h"
#include "controllers/MenuColors.h"
#include "model/RunningAppMenuItem.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/Notifications.h"

#include <algorithm>

namespace orbel {

RadialMenuController::~RadialMenuController() = default;

void RadialMenuController::connect() {
  m_menuWindow.attach(*this, *this);
  closeButton().setMouseClickBlock(
      [clicked = weakly(&RadialMenuController::closeButtonClicked)](const MouseEvent&) { clicked(); });
  window().setCancelBlock(weakly(&RadialMenuController::cancel));
  refreshWindowTint();

  observe(kOrbelMenuMagnifySettingsChangedNotification, &RadialMenuController::magnifySettingsChanged);
  observe(kOrbelMenuWindowTintSettingsChangedNotification, &RadialMenuController::refreshWindowTint);
  m_observations.push_back(
      Platform::current().workspace.observeRunningApplications([this] { runningApplicationsChanged(); }));
}

void RadialMenuController::disconnect() {
  m_observations.clear();
  m_menuWindow.detach();
}

bool RadialMenuController::toolkitAvailable() const {
  return CompanionToolkit::isAvailable();
}

void RadialMenuController::fadeIn() {
  // Only the fade-out must keep the controller alive after its owner has released it.
  window().animateAlphaValue(1, weakly(&RadialMenuController::fadedIn));
  window().show();
}

void RadialMenuController::fadeOut() {
  // The titles are windows of their own and would outlast the fade.
  orbelView().closeAllTitles();
  window().animateAlphaValue(0, [self = shared_from_this()] {
    self->orbelView().resetLayout();
    self->window().orderOut();
    self->fadedOut();
  });
}

MenuItemPointer RadialMenuController::menuItem(ItemPath path) const {
  const MenuItemList& list = items();
  if (path.position < 0 || path.position >= static_cast<std::int64_t>(list.size())) return nullptr;
  return list[static_cast<std::size_t>(path.position)];
}

std::size_t RadialMenuController::insertionIndex(std::int64_t position) const {
  return static_cast<std::size_t>(
      std::clamp<std::int64_t>(position, 0, static_cast<std::int64_t>(items().size())));
}

std::shared_ptr<OrbelItem> RadialMenuController::item(ItemPath path) {
  const MenuItemPointer menuItem = this->menuItem(path);
  auto view = std::make_shared<OrbelItem>(menuItem->image(), menuItem->name());
  view->setHighlighted(showsDot(*menuItem));
  view->setHighlightColor(highlightColorOnTint(AppSettings::sharedInstance().windowTintColor()));
  return view;
}

bool RadialMenuController::shouldDisplayTitle(ItemPath path) {
  // The titles are windows of their own and would stand opaque over a menu that is fading away. Nor does
  // moving on over it open anything: what was reached has been opened.
  if (window().isFadingOut()) return false;
  const MenuItemPointer reached = menuItem(path);
  if (!reached) return false;
  if (!AppSettings::sharedInstance().swiftMode() || !windowVisible() || !opensWhenReached(*reached))
    return true;
  didClickItem(path);
  return false;
}

void RadialMenuController::didClickItem(ItemPath path) {
  const MenuItemPointer clicked = menuItem(path);
  // The second half of a double click lands on a menu that is fading away; it must not open the item twice.
  if (!clicked || window().isFadingOut()) return;
  const auto self = shared_from_this();
  activate(clicked);
}

void RadialMenuController::activate(const MenuItemPointer& item) {
  item->open();
  itemOpened();
}

bool RadialMenuController::closeItemMenu() {
  if (!itemMenuVisible()) return false;
  m_itemMenu.cancelTracking();
  return true;
}

void RadialMenuController::didRightClickItem(ItemPath path) {
  if (closeItemMenu()) return;
  m_targetMenuItem = menuItem(path);
  if (m_targetMenuItem && hasContextMenu(*m_targetMenuItem)) m_itemMenu.popUp(itemMenuEntries(), window());
}

MenuEntry RadialMenuController::openWithEntry() {
  return ItemContextMenu::openWithEntry(*m_targetMenuItem, weakly(&RadialMenuController::openClicked));
}

MenuEntry RadialMenuController::quitEntry() {
  return ItemContextMenu::quitEntry(*m_targetMenuItem, toolkitAvailable(),
                                    weakly(&RadialMenuController::quitAppClicked));
}

MenuEntry RadialMenuController::removeEntry() {
  const bool isRunningApp = dynamic_cast<const RunningAppMenuItem*>(m_targetMenuItem.get()) != nullptr;
  return ItemContextMenu::entry("Remove from Orbel Menu", !isRunningApp,
                                weakly(&RadialMenuController::removeClicked));
}

void RadialMenuController::openClicked(std::int64_t tag) {
  if (m_targetMenuItem && ItemContextMenu::openWithTag(*m_targetMenuItem, tag)) itemOpened();
}

void RadialMenuController::quitAppClicked() {
  if (m_targetMenuItem) m_targetMenuItem->quit();
}

void RadialMenuController::removeClicked() {
  const auto index = indexOfItem(items(), m_targetMenuItem);
  if (!index) return;
  removeItem(*index);
  persistItems();
  itemRemoved();
}

void RadialMenuController::didMoveItem(ItemPath from, ItemPath to) {
  const MenuItemPointer moved = menuItem(from);
  if (!moved) return;
  removeItem(static_cast<std::size_t>(from.position));
  insertItem(moved, insertionIndex(to.position));
  persistItems();
}

bool RadialMenuController::didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) {
  if (const auto& paths = drag.filePaths()) {
    std::size_t index = insertionIndex(inFrontOf.position);
    for (const MenuItemPointer& dropped : menuItemsForDroppedPaths(*paths))
      insertItem(dropped, index++);
  }
  persistItems();
  orbelView().reloadData();
  return true;
}

bool RadialMenuController::canDrop(const DragInfo& drag, ItemPath target) {
  const MenuItemPointer opener = menuItem(target);
  return opener && canOpenAny(*opener, drag.filePaths());
}

bool RadialMenuController::didDrop(const DragInfo& drag, ItemPath target) {
  const MenuItemPointer opener = menuItem(target);
  const auto& paths = drag.filePaths();
  if (!opener || !paths) return false;
  const auto self = shared_from_this();
  bool opened = false;
  for (const std::string& path : *paths) {
    if (!opener->canOpenPath(path)) continue;
    opener->openPath(path);
    itemOpened();
    opened = true;
  }
  return opened;
}

} // namespace orbel
