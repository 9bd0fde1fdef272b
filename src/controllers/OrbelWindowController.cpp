#include "controllers/OrbelWindowController.h"

#include "controllers/CompanionToolkit.h"
#include "controllers/MenuSizes.h"
#include "foundation/NotificationCenter.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/Notifications.h"

#include <utility>

namespace orbel {

OrbelWindowController::OrbelWindowController() : m_menuWindow(SurfaceLevel::menu, *this, *this) {}

OrbelWindowController::~OrbelWindowController() {
  // It lives by its fade alone, which nobody would see the end of.
  if (const auto closing = m_closingCollection.lock()) closing->window().setAlphaValue(0);
}

std::shared_ptr<OrbelWindowController> OrbelWindowController::create() {
  std::shared_ptr<OrbelWindowController> controller(new OrbelWindowController());
  // Ahead of its use, but not ahead of the menu: starting a program would delay the picture.
  Platform::current().runLoop.after(0, [] { CompanionToolkit::start(); });
  controller->connect();
  return controller;
}

void OrbelWindowController::connect() {
  const auto self = weak_from_this();
  closeButton().setMouseClickBlock([self](const MouseEvent&) {
    const auto controller = self.lock();
    if (!controller || !controller->m_menuShownTimestamp) return;
    const double shownFor = Platform::current().runLoop.clock().now() - *controller->m_menuShownTimestamp;
    if (shownFor > kCloseButtonGuard) controller->hideWindow(true);
  });
  window().setCancelBlock(weakly(&OrbelWindowController::cancel));
  refreshWindowTint();

  NotificationCenter& center = NotificationCenter::defaultCenter();
  const auto observe = [&](const char* name, void (OrbelWindowController::*operation)()) {
    m_observations.push_back(
        center.observe(name, nullptr, [this, operation](const Notification&) { (this->*operation)(); }));
  };
  m_observations.push_back(
      center.observe(kOrbelMenuMagnifySettingsChangedNotification, nullptr,
                     [this](const Notification&) { m_menuWindow.magnificationChanged(); }));
  observe(kOrbelMenuWindowTintSettingsChangedNotification, &OrbelWindowController::refreshWindowTint);
  observe(kOrbelMenuShowRunningAppsChangedNotification, &OrbelWindowController::refreshItems);
  observe(kOrbelMenuMenuSizeSettingsChangedNotification, &OrbelWindowController::menuSizeSettingsChanged);
  m_observations.push_back(
      Platform::current().workspace.observeRunningApplications([this] { reconcileRunningApplications(); }));
}

std::function<void()> OrbelWindowController::weakly(void (OrbelWindowController::*operation)()) {
  return [self = weak_from_this(), operation] {
    if (const auto controller = self.lock()) (controller.get()->*operation)();
  };
}

bool OrbelWindowController::toolkitAvailable() const {
  return CompanionToolkit::isAvailable();
}

bool OrbelWindowController::mouseHoveringOverMenu() const {
  if (window().pointerIsOver()) return true;
  return m_collectionController && m_collectionController->window().pointerIsOver();
}

void OrbelWindowController::showWindowAtScreenPosition(Point point) {
  m_lastFrontmostApp = Platform::current().workspace.frontmostApplication();
  m_menuWindow.setFrame(point, mainMenuSide(AppSettings::sharedInstance().menuSizeSettings()));
  refreshItems();
  // Only the way out must outlast whoever lets go of the menu.
  window().animateAlphaValue(1, [self = weak_from_this()] {
    if (const auto controller = self.lock())
      controller->m_menuShownTimestamp = Platform::current().runLoop.clock().now();
  });
  window().show();
}

void OrbelWindowController::hideWindow(bool activateLastApp, bool force) {
  if (!m_canClose) return;
  if (m_collectionController) {
    if (!force) return;
    closeCollection();
  }
  // Hiding already: to begin the fade anew would only draw it out, click after click.
  if (window().isFadingOut()) return;
  // The titles are windows of their own and would outlast the fade.
  orbelView().closeAllTitles();
  window().animateAlphaValue(0, [self = shared_from_this()] {
    self->orbelView().resetLayout();
    self->window().orderOut();
    NotificationCenter::defaultCenter().post(kOrbelWindowControllerDidDisappearNotification, self.get());
  });
  const RunningApplicationPointer lastFrontmostApp = std::exchange(m_lastFrontmostApp, nullptr);
  if (activateLastApp && lastFrontmostApp && !lastFrontmostApp->isTerminated()) {
    lastFrontmostApp->activate(ActivationReason::restore);
  }
}

// Escape dismisses at once, without the guard of the close button: nobody presses it by accident.
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
