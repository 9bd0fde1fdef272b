#include "controllers/CollectionWindowController.h"

#include "controllers/MenuSizes.h"
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
    : RadialMenuController(SurfaceLevel::subMenu), m_collectionItem(std::move(item)),
      m_knownRegularApplications(regularApplications()) {}

std::shared_ptr<CollectionWindowController>
CollectionWindowController::withCollectionItem(std::shared_ptr<CollectionMenuItem> item) {
  std::shared_ptr<CollectionWindowController> controller(new CollectionWindowController(std::move(item)));
  controller->connect();
  return controller;
}

CollectionWindowController::~CollectionWindowController() {
  disconnect();
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
  setWindowFrame(point, collectionMenuSide(AppSettings::sharedInstance().menuSizeSettings()));
  orbelView().reloadData();
  fadeIn();
}

void CollectionWindowController::hideWindow() {
  if (!canClose()) return;
  m_windowVisible = false;
  fadeOut();
}

void CollectionWindowController::persistItems() {
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerShouldPersistItems();
}

void CollectionWindowController::askToClose() {
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerShouldClose(*this);
}

void CollectionWindowController::itemOpened() {
  if (const auto delegate = this->delegate()) delegate->collectionWindowControllerDidSelectItem(*this);
}

void CollectionWindowController::insertItem(const MenuItemPointer& item, std::size_t index) {
  m_collectionItem->insertSubitem(item, index);
}

void CollectionWindowController::removeItem(std::size_t index) {
  const MenuItemPointer removed = items()[index]; // held while the list that it stands in changes
  m_collectionItem->removeSubitem(removed);
}

bool CollectionWindowController::showsDot(const MenuItem& item) const {
  // Only kinds that stand for a program light up here; a nested collection does not.
  const bool standsForProgram = dynamic_cast<const CoreMenuItem*>(&item) ||
                                dynamic_cast<const AppMenuItem*>(&item) ||
                                dynamic_cast<const RunningAppMenuItem*>(&item);
  return standsForProgram && item.isRunning();
}

} // namespace orbel
