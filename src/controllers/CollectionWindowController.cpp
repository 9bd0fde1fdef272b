#include "controllers/CollectionWindowController.h"

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
#include "settings/AppSettings.h"
#include "settings/Notifications.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
std::vector<RunningApplicationPointer> regularApplications() {
  auto applications = Platform::current().workspace.runningApplications();
  std::erase_if(applications, [](const RunningApplicationPointer& application) {
    return application->activationPolicy() != ActivationPolicy::regular;
  });
  return applications;
}

bool haveSameMembers(const std::vector<RunningApplicationPointer>& first,
                     const std::vector<RunningApplicationPointer>& second) {
  return std::is_permutation(first.begin(), first.end(), second.begin(), second.end(),
                             [](const auto& one, const auto& other) { return one->isEqual(*other); });
}
} // namespace

CollectionWindowController::CollectionWindowController(std::shared_ptr<CollectionMenuItem> item)
    : m_collectionItem(std::move(item)), m_menuWindow(SurfaceLevel::subMenu, *this, *this) {}

std::shared_ptr<CollectionWindowController>
CollectionWindowController::withCollectionItem(std::shared_ptr<CollectionMenuItem> item) {
  std::shared_ptr<CollectionWindowController> controller(new CollectionWindowController(std::move(item)));
  const auto askToClose = [self = std::weak_ptr(controller)] {
    if (const auto strong = self.lock()) strong->askToClose();
  };
  controller->closeButton().setMouseClickBlock([askToClose](const MouseEvent&) { askToClose(); });
  controller->window().setCancelBlock(askToClose);
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
  m_knownRegularApplications = regularApplications();
  m_observations.push_back(
      Platform::current().workspace.observeRunningApplications([this] { runningApplicationsChanged(); }));
}

void CollectionWindowController::runningApplicationsChanged() {
  const auto earlier = std::exchange(m_knownRegularApplications, regularApplications());
  // Only the dots change; the members never do.
  if (!haveSameMembers(earlier, m_knownRegularApplications)) orbelView().reloadData();
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
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerShouldPersistItems();
}

void CollectionWindowController::askToClose() {
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerShouldClose(*this);
}

void CollectionWindowController::didSelectItem() {
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerDidSelectItem(*this);
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
  m_itemMenu->popUp({
      ItemContextMenu::openWithEntry(target,
                                     [self](std::int64_t tag) {
                                       if (const auto controller = self.lock()) controller->openClicked(tag);
                                     }),
      ItemContextMenu::entry("Quit Application", target.canQuit() && toolkitAvailable(),
                             call(&CollectionWindowController::quitAppClicked)),
      ItemContextMenu::entry("Remove from Orbel Menu", !dynamic_cast<const RunningAppMenuItem*>(&target),
                             call(&CollectionWindowController::removeClicked)),
  });
}

void CollectionWindowController::openClicked(std::int64_t tag) {
  if (m_targetMenuItem && ItemContextMenu::openWithTag(*m_targetMenuItem, tag)) didSelectItem();
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
  if (const auto& paths = drag.filePaths()) {
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
  return menuItem && canOpenAny(*menuItem, drag.filePaths());
}

bool CollectionWindowController::didDrop(const DragInfo& drag, ItemPath target) {
  const MenuItemPointer menuItem = subitem(target);
  const auto& paths = drag.filePaths();
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
