#include "app/AppDelegate.h"

#include "app/MainMenu.h"
#include "app/TouchpadAccessNotice.h"
#include "controllers/CompanionToolkit.h"
#include "foundation/Log.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "shortcut/MASShortcut.h"

#include <utility>

namespace orbel {

namespace {
constexpr const char* kStatusImage = "small";

bool isFromKeyboard(const Notification& notification) {
  const auto type = notification.userInfo.find(kShowEventType);
  return type != notification.userInfo.end() && type->second == PropertyList(kShowEventShortcut);
}
} // namespace

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
  MASShortcut::setMainMenu(MainMenu::entries());
  makeTrustedIfNeccessary();
  AppSettings::sharedInstance().startHandlers();
  m_settingsWindowController = SettingsWindowController::create(m_terminate);
  makeStatusItem();
  observeNotifications();
  showSettingsAtFirstLaunch();
}

void AppDelegate::makeStatusItem() {
  const Platform& platform = Platform::current();
  m_statusItem = platform.statusBar.makeStatusItem({.image = kStatusImage,
                                                    .isTemplate = true,
                                                    .title = platform.text.localized("Orbel Menu"),
                                                    .clicked = [this] { statusItemClicked(); }});
}

void AppDelegate::observeNotifications() {
  NotificationCenter& center = NotificationCenter::defaultCenter();
  m_observations.push_back(
      center.observe(kOrbelMenuShouldShowNotification, nullptr,
                     [this](const Notification& notification) { orbelMenuShouldShow(notification); }));
  m_observations.push_back(center.observe(kOrbelMenuShouldHideNotification, nullptr,
                                          [this](const Notification&) { orbelMenuShouldHide(); }));
  m_observations.push_back(center.observe(kOrbelWindowControllerDidDisappearNotification, nullptr,
                                          [this](const Notification&) { orbelWindowDidDisappear(); }));
}

void AppDelegate::showSettingsAtFirstLaunch() {
  PreferencesStore& preferences = Platform::current().preferences;
  if (preferences.boolean(kLaunchedBeforeKey)) return;
  openSettings();
  preferences.setObject(kLaunchedBeforeKey, true);
}

void AppDelegate::applicationWillTerminate() {
  m_observations.clear();
  withdrawSummons();
  if (const auto controller = std::exchange(m_windowController, nullptr)) {
    // Ends a fade that is under way, whose completion would keep the controller and its window alive.
    controller->window().setAlphaValue(0);
  }
  m_statusItem = nullptr;
  m_settingsWindowController = nullptr;
  MASShortcut::setMainMenu({});
  static_cast<void>(Platform::current().preferences.synchronize()); // the store logs a failure
  CompanionToolkit::terminate();
}

void AppDelegate::makeTrustedIfNeccessary() {
  EventTaps& eventTaps = Platform::current().eventTaps;
  if (eventTaps.isTrusted()) return;
  Log::warning("we're not trusted");
  if (!eventTaps.checkTouchpadAccess()) TouchpadAccessNotice::deliverOnce(m_touchpadAccessCommand);
}

void AppDelegate::openSettings() {
  if (!m_settingsWindowController) return;
  m_settingsWindowController->window().center();
  m_settingsWindowController->showWindow();
}

void AppDelegate::orbelMenuShouldShow(const Notification& notification) {
  summon(isFromKeyboard(notification));
}

void AppDelegate::showMenuAtPointer() {
  summon(true);
}

void AppDelegate::hideMenu() {
  withdrawSummons();
  if (m_windowController && m_windowController->windowVisible()) m_windowController->hideWindow(true, true);
}

void AppDelegate::summon(bool fromKeyboard) {
  withdrawSummons();
  m_summons.emplace(Summons{fromKeyboard, false, {}});
  m_pointerRequest =
      Platform::current().windows.locatePointer([this](Point pointer) { pointerLocated(pointer); });
}

void AppDelegate::withdrawSummons() {
  m_pointerRequest.reset();
  m_summons.reset();
}

void AppDelegate::pointerLocated(Point pointer) {
  if (!m_summons) return;
  if (!std::exchange(m_summons->isAnswered, true)) {
    const auto menu = showMenu(pointer, m_summons->fromKeyboard);
    if (m_summons) m_summons->menu = menu;
  } else if (const auto menu = m_summons->menu.lock()) {
    menu->moveWindowToScreenPosition(pointer);
  }
}

std::shared_ptr<OrbelWindowController> AppDelegate::showMenu(Point pointer, bool fromKeyboard) {
  const bool pointerInsideVisibleMenu = m_windowController && m_windowController->windowVisible() &&
                                        m_windowController->window().frame().contains(pointer);
  if (!pointerInsideVisibleMenu) {
    if (!m_windowController) m_windowController = OrbelWindowController::create();
    m_windowController->showWindowAtScreenPosition(pointer);
    return m_windowController;
  }
  // The shortcut toggles the menu; a gesture over the open menu does nothing.
  if (fromKeyboard) m_windowController->hideWindow(true);
  return nullptr;
}

void AppDelegate::orbelMenuShouldHide() {
  if (m_windowController && !m_windowController->mouseHoveringOverMenu() &&
      m_windowController->windowVisible()) {
    withdrawSummons();
    m_windowController->hideWindow(true, true);
  }
}

void AppDelegate::orbelWindowDidDisappear() {
  m_windowController = nullptr;
}

} // namespace orbel
