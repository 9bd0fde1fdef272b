#include "controllers/OrbelWindowController.h"

#include "controllers/CompanionToolkit.h"
#include "controllers/MenuSizes.h"
#include "foundation/NotificationCenter.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/Notifications.h"

#include <utility>

namespace orbel {

OrbelWindowController::OrbelWindowController() : RadialMenuController(SurfaceLevel::menu) {}

OrbelWindowController::~OrbelWindowController() {
  disconnect();
  // Only its fade keeps it alive, and the end of that would not be seen any more.
  if (const auto closing = m_closingCollection.lock()) closing->window().setAlphaValue(0);
}

std::shared_ptr<OrbelWindowController> OrbelWindowController::create() {
  std::shared_ptr<OrbelWindowController> controller(new OrbelWindowController());
  // Ahead of its use, but not ahead of the menu: starting a program would delay the picture.
  Platform::current().runLoop.after(0, [] { CompanionToolkit::start(); });
  controller->connect();
  controller->observe(kOrbelMenuShowRunningAppsChangedNotification, &OrbelWindowController::refreshItems);
  controller->observe(kOrbelMenuMenuSizeSettingsChangedNotification,
                      &OrbelWindowController::menuSizeSettingsChanged);
  return controller;
}

std::shared_ptr<OrbelWindowController> OrbelWindowController::self() {
  return std::static_pointer_cast<OrbelWindowController>(shared_from_this());
}

void OrbelWindowController::closeButtonClicked() {
  if (!m_menuShownTimestamp) return;
  const double shownFor = Platform::current().runLoop.clock().now() - *m_menuShownTimestamp;
  if (shownFor > kCloseButtonGuard) hideWindow(true);
}

bool OrbelWindowController::mouseHoveringOverMenu() const {
  if (window().pointerIsOver()) return true;
  return m_collectionController && m_collectionController->window().pointerIsOver();
}

void OrbelWindowController::showWindowAtScreenPosition(Point point) {
  m_lastFrontmostApp = Platform::current().workspace.frontmostApplication();
  setWindowFrame(point, mainMenuSide(AppSettings::sharedInstance().menuSizeSettings()));
  refreshItems();
  fadeIn();
}

void OrbelWindowController::fadedIn() {
  m_menuShownTimestamp = Platform::current().runLoop.clock().now();
}

void OrbelWindowController::moveWindowToScreenPosition(Point point) {
  if (!window().isShown() || window().isFadingOut()) return;
  setWindowFrame(point, window().frame().size.width);
  // The pointer is at another place of the view now.
  orbelView().reloadData();
}

void OrbelWindowController::hideWindow(bool activateLastApp, bool force) {
  if (!canClose()) return;
  if (m_collectionController) {
    if (!force) return;
    closeCollection();
  }
  // Hiding already: to begin the fade anew would only draw it out, click after click.
  if (window().isFadingOut()) return;
  fadeOut();
  const RunningApplicationPointer lastFrontmostApp = std::exchange(m_lastFrontmostApp, nullptr);
  if (activateLastApp && lastFrontmostApp && !lastFrontmostApp->isTerminated()) {
    lastFrontmostApp->activate(ActivationReason::restore);
  }
}

void OrbelWindowController::fadedOut() {
  NotificationCenter::defaultCenter().post(kOrbelWindowControllerDidDisappearNotification, this);
}

// Escape dismisses at once, without the guard of the close button: the key is not pressed by accident.
void OrbelWindowController::cancel() {
  if (windowVisible() && !m_collectionController) hideWindow(true);
}

void OrbelWindowController::closeCollection() {
  // It keeps its delegate: a member that is dragged while the menus hide is still put down, and stored.
  m_collectionController->hideWindow();
  m_closingCollection = m_collectionController;
  m_collectionController = nullptr;
  orbelView().setEnabled(true);
}

void OrbelWindowController::menuSizeSettingsChanged() {
  if (window().alphaValue() > 0) showWindowAtScreenPosition(window().frame().center());
}

} // namespace orbel
