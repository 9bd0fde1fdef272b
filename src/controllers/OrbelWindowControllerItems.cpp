#include "controllers/OrbelWindowController.h"

#include "app/settings/AppSettings.h"
#include "controllers/ItemLookup.h"
#include "controllers/MenuColors.h"
#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "platform/Platform.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
constexpr const char* kDefaultItems[] = {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"};

MenuItemList defaultItems() {
  MenuItemList items;
  for (const char* name : kDefaultItems)
    items.push_back(CoreMenuItem::withName(name));
  return items;
}

bool isRepresented(const RunningApplication& application, const MenuItemList& items) {
  return std::any_of(items.begin(), items.end(), [&](const MenuItemPointer& item) {
    const auto* representing = dynamic_cast<const RepresentsRunningApplication*>(item.get());
    return representing && representing->representsRunningApplication(application);
  });
}

bool hasEnded(const MenuItemPointer& item, const std::vector<RunningApplicationPointer>& running) {
  const auto* runningItem = dynamic_cast<const RunningAppMenuItem*>(item.get());
  return runningItem &&
         std::none_of(running.begin(), running.end(), [&](const RunningApplicationPointer& application) {
           return runningItem->representsRunningApplication(*application);
         });
}
} // namespace

void OrbelWindowController::refreshItems() {
  auto loaded = m_store.load();
  bool storeNeedsRewriting = false;
  if (loaded) {
    m_menuItems = std::move(loaded->items);
    storeNeedsRewriting = loaded->droppedElements;
  } else {
    m_menuItems.clear();
  }
  if (m_collectionController) followOpenCollection();
  if (m_menuItems.empty()) m_menuItems = defaultItems();
  orbelView().reloadData();
  reconcileRunningApplications();
  if (storeNeedsRewriting) persistItems();
}

// An open collection's menu goes on with the object that was just loaded, or its changes would be saved
// nowhere.
void OrbelWindowController::followOpenCollection() {
  const auto shown = m_collectionController->collectionItem();
  const auto hand = [this](const MenuItemPointer& item) {
    auto collection = std::dynamic_pointer_cast<CollectionMenuItem>(item);
    if (!collection) return false;
    m_collectionController->setCollectionItem(std::move(collection));
    return true;
  };
  // Two collections with the same members are told apart by their names.
  if (const auto index = indexOfItem(m_menuItems, shown)) {
    hand(m_menuItems[*index]);
    return;
  }
  const std::string openIdentity = shown->identity();
  bool found = false;
  for (const MenuItemPointer& item : m_menuItems) {
    if (item->canHoldSubitems() && item->identity() == openIdentity) found = hand(item) || found;
  }
  if (!found) closeCollection();
}

void OrbelWindowController::reconcileRunningApplications() {
  const auto running = Platform::current().workspace.runningApplications();
  std::vector<RunningApplicationPointer> fresh;
  for (const auto& application : running) {
    if (!isRepresented(*application, m_menuItems)) fresh.push_back(application);
  }
  const auto removed =
      std::erase_if(m_menuItems, [&](const MenuItemPointer& item) { return hasEnded(item, running); });
  const bool showsRunningApps = AppSettings::sharedInstance().showRunningApps();
  for (const auto& application : fresh) {
    if (application->activationPolicy() != ActivationPolicy::regular || !showsRunningApps) continue;
    m_menuItems.push_back(RunningAppMenuItem::withRunningApplication(application));
  }
  if (removed > 0 || !fresh.empty() || dotsHaveChanged()) orbelView().reloadData();
}

// A pinned program that starts or ends changes no entry, only its dot.
bool OrbelWindowController::dotsHaveChanged() const {
  for (std::size_t index = 0; index < m_shownDots.size() && index < m_menuItems.size(); ++index) {
    if (m_shownDots[index] != m_menuItems[index]->isRunning()) return true;
  }
  return false;
}

void OrbelWindowController::persistItems() {
  m_store.save(m_menuItems);
}

MenuItemPointer OrbelWindowController::menuItem(ItemPath path) const {
  if (path.position < 0 || path.position >= static_cast<std::int64_t>(m_menuItems.size())) return nullptr;
  return m_menuItems[static_cast<std::size_t>(path.position)];
}

std::size_t OrbelWindowController::insertionIndex(std::int64_t position) const {
  return static_cast<std::size_t>(
      std::clamp<std::int64_t>(position, 0, static_cast<std::int64_t>(m_menuItems.size())));
}

std::shared_ptr<OrbelItem> OrbelWindowController::item(ItemPath path) {
  const MenuItemPointer menuItem = this->menuItem(path);
  auto view = std::make_shared<OrbelItem>(menuItem->image(), menuItem->name());
  view->setHighlighted(menuItem->isRunning());
  view->setHighlightColor(highlightColorOnTint(AppSettings::sharedInstance().windowTintColor()));
  m_shownDots.resize(m_menuItems.size());
  m_shownDots[static_cast<std::size_t>(path.position)] = view->highlighted();
  return view;
}

bool OrbelWindowController::shouldDisplayTitle(ItemPath path) {
  // The titles are windows of their own and would stand opaque over a menu that is fading away. Nor does
  // moving on over it open anything: what was reached has been opened.
  if (window().isFadingOut()) return false;
  if (!AppSettings::sharedInstance().swiftMode() || !windowVisible()) return true;
  didClickItem(path);
  return false;
}

} // namespace orbel
