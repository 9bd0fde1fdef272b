#include "controllers/CollectionWindowController.h"

#include "app/settings/AppSettings.h"
#include "app/settings/Notifications.h"
#include "controllers/CompanionToolkit.h"
#include "controllers/DroppedFiles.h"
#include "controllers/ItemLookup.h"
#include "controllers/MenuColors.h"
#include "controllers/MenuSizes.h"
#include "foundation/NotificationCenter.h"
#include "model/AppMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
bool isRegular(const RunningApplicationPointer& application) {
  return application->activationPolicy() == ActivationPolicy::regular;
}

// A regular application among the first that is not among the second.
bool hasNewcomer(const std::vector<RunningApplicationPointer>& first,
                 const std::vector<RunningApplicationPointer>& second) {
  return std::any_of(first.begin(), first.end(), [&](const RunningApplicationPointer& application) {
    return isRegular(application) &&
           std::none_of(second.begin(), second.end(),
                        [&](const RunningApplicationPointer& other) { return application->isEqual(*other); });
  });
}
} // namespace

CollectionWindowController::CollectionWindowController(std::shared_ptr<CollectionMenuItem> item)
    : m_collectionItem(std::move(item)), m_menuWindow(SurfaceLevel::subMenu, *this, *this) {}

std::shared_ptr<CollectionWindowController>
CollectionWindowController::withCollectionItem(std::shared_ptr<CollectionMenuItem> item) {
  std::shared_ptr<CollectionWindowController> controller(new CollectionWindowController(std::move(item)));
  controller->closeButton().setMouseClickBlock([self = std::weak_ptr(controller)](const MouseEvent&) {
    const auto strong = self.lock();
    if (strong && strong->m_delegate) strong->m_delegate->collectionWindowControllerShouldClose();
  });
  controller->window().setCancelBlock([self = std::weak_ptr(controller)] {
    const auto strong = self.lock();
    if (strong && strong->m_delegate) strong->m_delegate->collectionWindowControllerShouldClose();
  });
  controller->refreshWindowTint();
  controller->observe();
  return controller;
}

CollectionWindowController::~CollectionWindowController() = default;

void CollectionWindowController::observe() {
  NotificationCenter& center = NotificationCenter::defaultCenter();
  m_observations.push_back(
      center.observe(kOrbelMenuMagnifySettingsChangedNotification, nullptr,
                     [this](const Notification&) { m_menuWindow.magnificationChanged(); }));
  m_observations.push_back(center.observe(kOrbelMenuWindowTintSettingsChangedNotification, nullptr,
                                          [this](const Notification&) { refreshWindowTint(); }));
  Workspace& workspace = Platform::current().workspace;
  m_knownApplications = workspace.runningApplications();
  m_observations.push_back(workspace.observeRunningApplications([this] { runningApplicationsChanged(); }));
}

void CollectionWindowController::runningApplicationsChanged() {
  const auto earlier =
      std::exchange(m_knownApplications, Platform::current().workspace.runningApplications());
  // Only the dots change; the members never do.
  if (hasNewcomer(m_knownApplications, earlier) || hasNewcomer(earlier, m_knownApplications)) {
    orbelView().reloadData();
  }
}

void CollectionWindowController::setCollectionItem(std::shared_ptr<CollectionMenuItem> item) {
  m_collectionItem = std::move(item);
  orbelView().reloadData();
}

void CollectionWindowController::showWindowAtScreenPosition(Point point) {
  m_menuWindow.setFrame(point, collectionMenuSide(AppSettings::sharedInstance().menuSizeSettings()));
  orbelView().reloadData();
  // Only the way out must outlast whoever lets go of the menu.
  window().animateAlphaValue(1, [self = weak_from_this()] {
    if (const auto controller = self.lock()) controller->m_windowVisible = true;
  });
  window().show();
}

void CollectionWindowController::hideWindow() {
  if (!m_canClose) return;
  orbelView().closeAllTitles();
  m_windowVisible = false;
  window().animateAlphaValue(0, [self = shared_from_this()] {
    self->orbelView().resetLayout();
    self->window().orderOut();
  });
}

bool CollectionWindowController::toolkitAvailable() const {
  return CompanionToolkit::isAvailable();
}

void CollectionWindowController::persistItems() {
  if (m_delegate) m_delegate->collectionWindowControllerShouldPersistItems();
}

void CollectionWindowController::didSelectItem() {
  if (m_delegate) m_delegate->collectionWindowControllerDidSelectItem();
}

MenuItemPointer CollectionWindowController::subitem(ItemPath path) const {
  const auto subitems = m_collectionItem->subitems();
  if (!subitems || path.position < 0 || path.position >= static_cast<std::int64_t>(subitems->size()))
    return nullptr;
  return (*subitems)[static_cast<std::size_t>(path.position)];
}

std::int64_t CollectionWindowController::numberOfItems(std::int64_t) {
  return static_cast<std::int64_t>(m_collectionItem->subitems()->size());
}

std::shared_ptr<OrbelItem> CollectionWindowController::item(ItemPath path) {
  const MenuItemPointer menuItem = subitem(path);
  auto view = std::make_shared<OrbelItem>(menuItem->image(), menuItem->name());
  // Only kinds that stand for a program light up here; a nested collection does not.
  const bool standsForProgram = dynamic_cast<const CoreMenuItem*>(menuItem.get()) ||
                                dynamic_cast<const AppMenuItem*>(menuItem.get()) ||
                                dynamic_cast<const RunningAppMenuItem*>(menuItem.get());
  view->setHighlighted(standsForProgram && menuItem->isRunning());
  view->setHighlightColor(highlightColorOnTint(AppSettings::sharedInstance().windowTintColor()));
  return view;
}

bool CollectionWindowController::shouldDisplayTitle(ItemPath path) {
  // The titles are windows of their own and would stand opaque over a menu that is fading away.
  if (window().isFadingOut()) return false;
  const MenuItemPointer menuItem = subitem(path);
  if (!menuItem) return false;
  if (menuItem->canHoldSubitems()) return true;
  if (AppSettings::sharedInstance().swiftMode() && m_windowVisible) {
    didClickItem(path);
    return false;
  }
  return true;
}

void CollectionWindowController::didClickItem(ItemPath path) {
  const MenuItemPointer menuItem = subitem(path);
  // The second half of a double click lands on a menu that is fading away; it must not open the item twice.
  if (!menuItem || window().isFadingOut()) return;
  const auto self = shared_from_this();
  menuItem->open();
  didSelectItem();
}

void CollectionWindowController::didRightClickItem(ItemPath path) {
  if (itemMenuVisible()) {
    m_itemMenu->cancelTracking();
    return;
  }
  m_targetMenuItem = subitem(path);
  if (!m_targetMenuItem) return;

  const auto self = std::weak_ptr(shared_from_this());
  const auto call = [self](void (CollectionWindowController::*operation)()) {
    return [self, operation] {
      if (const auto controller = self.lock()) (controller.get()->*operation)();
    };
  };
  const MenuItem& target = *m_targetMenuItem;
  auto openWith = ItemContextMenu::openWithEntries(target, [self](std::int64_t tag) {
    if (const auto controller = self.lock()) controller->openClicked(tag);
  });
  MenuEntry openWithEntry = ItemContextMenu::entry("Open With...", !openWith.empty(), nullptr);
  openWithEntry.submenu = std::move(openWith);
  m_itemMenu->popUp({
      std::move(openWithEntry),
      ItemContextMenu::entry("Quit Application", target.canQuit() && toolkitAvailable(),
                             call(&CollectionWindowController::quitAppClicked)),
      ItemContextMenu::entry("Remove from Orbel Menu", !dynamic_cast<const RunningAppMenuItem*>(&target),
                             call(&CollectionWindowController::removeClicked)),
  });
}

void CollectionWindowController::openClicked(std::int64_t tag) {
  if (!m_targetMenuItem) return;
  const auto paths = m_targetMenuItem->openWithAppPaths();
  if (!paths || tag < 0 || tag >= static_cast<std::int64_t>(paths->size())) return;
  m_targetMenuItem->openWithAppPath((*paths)[static_cast<std::size_t>(tag)]);
  didSelectItem();
}

void CollectionWindowController::quitAppClicked() {
  if (m_targetMenuItem) m_targetMenuItem->quit();
}

void CollectionWindowController::removeClicked() {
  const MenuItemList subitems = m_collectionItem->subitems().value_or(MenuItemList());
  const auto index = indexOfItem(subitems, m_targetMenuItem);
  if (!index) return;
  m_collectionItem->removeSubitem(subitems[*index]);
  persistItems();
  orbelView().reloadData();
}

void CollectionWindowController::didMoveItem(ItemPath from, ItemPath to) {
  const MenuItemPointer menuItem = subitem(from);
  if (!menuItem) return;
  m_collectionItem->removeSubitem(menuItem);
  m_collectionItem->insertSubitem(menuItem, static_cast<std::size_t>(std::max<std::int64_t>(to.position, 0)));
  persistItems();
}

bool CollectionWindowController::didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) {
  if (const auto paths = drag.filePaths()) {
    auto index = static_cast<std::size_t>(std::max<std::int64_t>(inFrontOf.position, 0));
    for (const MenuItemPointer& item : menuItemsForDroppedPaths(*paths))
      m_collectionItem->insertSubitem(item, index++);
  }
  persistItems();
  orbelView().reloadData();
  return true;
}

bool CollectionWindowController::canDrop(const DragInfo& drag, ItemPath target) {
  const MenuItemPointer menuItem = subitem(target);
  const auto paths = drag.filePaths();
  return menuItem && paths && std::any_of(paths->begin(), paths->end(), [&](const std::string& path) {
           return menuItem->canOpenPath(path);
         });
}

bool CollectionWindowController::didDrop(const DragInfo& drag, ItemPath target) {
  const MenuItemPointer menuItem = subitem(target);
  const auto paths = drag.filePaths();
  if (!menuItem || !paths) return false;
  const auto self = shared_from_this();
  bool taken = false;
  for (const std::string& path : *paths) {
    if (!menuItem->canOpenPath(path)) continue;
    menuItem->openPath(path);
    taken = true;
    didSelectItem();
  }
  return taken;
}

} // namespace orbel
