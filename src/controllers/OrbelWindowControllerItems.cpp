#include "controllers/OrbelWindowController.h"

#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"

#include <algorithm>
#include <utility>

namespace orbel {

namespace {
constexpr const char* kDefaultItems[] = {
    CoreMenuItem::kFinder, "Launchpad", "App Store", "iTunes", "Safari", "Mail"};

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

// The loaded item that stands for the earlier one. Of several that match it is the one that comes after as
// many others as the earlier one did, else the last.
MenuItemPointer counterpart(const MenuItemPointer& item, const MenuItemList& earlier,
                            const MenuItemList& loaded,
                            const std::function<bool(const MenuItemPointer&)>& matches) {
  auto matchesBefore =
      std::count_if(earlier.begin(), std::find(earlier.begin(), earlier.end(), item), matches);
  MenuItemPointer found;
  for (const MenuItemPointer& candidate : loaded) {
    if (!matches(candidate)) continue;
    found = candidate;
    if (matchesBefore-- == 0) break;
  }
  return found;
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
  const bool storeNeedsRewriting = loaded && loaded->droppedElements;
  const MenuItemList earlier = std::exchange(m_menuItems, loaded ? std::move(loaded->items) : MenuItemList());
  if (m_collectionController) followOpenCollection(earlier);
  if (m_menuItems.empty()) m_menuItems = defaultItems();
  orbelView().reloadData();
  reconcileRunningApplications();
  if (storeNeedsRewriting) persistItems();
}

// An open collection's menu continues with the object that was just loaded, or its changes would be saved
// nowhere. Collections with the same members are distinguished by their names, unless it was
// renamed meanwhile.
void OrbelWindowController::followOpenCollection(const MenuItemList& earlier) {
  const auto shown = m_collectionController->collectionItem();
  const auto holdsTheSame = [identity = shown->identity()](const MenuItemPointer& item) {
    return item->canHoldSubitems() && item->identity() == identity;
  };
  const auto isTheSame = [&](const MenuItemPointer& item) {
    return item->name() == shown->name() && holdsTheSame(item);
  };
  MenuItemPointer fresh = counterpart(shown, earlier, m_menuItems, isTheSame);
  if (!fresh) fresh = counterpart(shown, earlier, m_menuItems, holdsTheSame);
  if (auto collection = std::dynamic_pointer_cast<CollectionMenuItem>(fresh)) {
    m_collectionController->setCollectionItem(std::move(collection));
  } else {
    closeCollection();
  }
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

void OrbelWindowController::insertItem(const MenuItemPointer& item, std::size_t index) {
  m_menuItems.insert(m_menuItems.begin() + static_cast<std::ptrdiff_t>(index), item);
}

void OrbelWindowController::removeItem(std::size_t index) {
  m_menuItems.erase(m_menuItems.begin() + static_cast<std::ptrdiff_t>(index));
}

std::shared_ptr<OrbelItem> OrbelWindowController::item(ItemPath path) {
  auto view = RadialMenuController::item(path);
  m_shownDots.resize(m_menuItems.size());
  m_shownDots[static_cast<std::size_t>(path.position)] = view->highlighted();
  return view;
}

} // namespace orbel
