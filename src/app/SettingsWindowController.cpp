#include "app/SettingsWindowController.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"
#include "settings/SettingsKeys.h"

#include <string>
#include <utility>

namespace orbel {

namespace {
constexpr double kSwatchBorderWidth = 1;

constexpr const char* kHelpVideo = "ThreeFingerRest";
constexpr const char* kHelpVideoExtension = "mp4";
constexpr const char* kWebsite = "https://orbelmenu.org";

std::string localized(std::string_view english) {
  return Platform::current().text.localized(english);
}

AppSettings& settings() {
  return AppSettings::sharedInstance();
}

void showAlert(std::string message) {
  Alert alert;
  alert.message = std::move(message);
  Platform::current().dialogs.runAlert(alert, nullptr, {});
}
} // namespace

SettingsWindowController::SettingsWindowController(std::function<void()> terminate)
    : m_terminate(std::move(terminate)) {}

SettingsWindowController::~SettingsWindowController() = default;

std::shared_ptr<SettingsWindowController> SettingsWindowController::create(std::function<void()> terminate) {
  return std::shared_ptr<SettingsWindowController>(new SettingsWindowController(std::move(terminate)));
}

RoundedEffectsWindow& SettingsWindowController::window() {
  if (!m_window) loadWindow();
  return *m_window;
}

void SettingsWindowController::loadWindow() {
  m_form = Platform::current().settingsFormFactory.load(describeForm());
  m_window.emplace(m_form->window());
  windowDidLoad();
}

void SettingsWindowController::windowDidLoad() {
  const auto self = weak_from_this();
  m_threeFingerRestPopover = m_form->makePopover([self] {
    const auto controller = self.lock();
    if (controller) controller->popoverDidClose(*controller->m_threeFingerRestPopover);
  });
  m_shortcutView->setAssociatedUserDefaultsKey(kGlobalShortcutKey);
  m_closeButton->setDefaultColor(Color::darkGray());
  m_closeButton->setMouseClickBlock([self](const MouseEvent&) {
    if (const auto controller = self.lock()) controller->window().close();
  });
  m_windowTintButtonView->setCornerRadius(m_windowTintButtonView->frame().size.height / 2);
  m_windowTintButtonView->setBorder(Color::lightGray(), kSwatchBorderWidth);
  m_window->setColorSchemeChangeBlock(weakly(&SettingsWindowController::applyColorScheme));
  applyColorScheme();
  m_storeObservation = Platform::current().preferences.observeChanges([this] {
    if (m_window->isVisible()) reloadValues();
  });
}

void SettingsWindowController::applyColorScheme() {
  const ColorScheme scheme = m_window->colorScheme();
  m_windowTintDisc->setColorScheme(scheme);
  m_shortcutView->setColorScheme(scheme);
  // Dark grey cannot be seen on dark glass.
  const bool dark = scheme == ColorScheme::dark;
  m_closeButton->setDefaultColor(dark ? Color::lightGray() : Color::darkGray());
  m_closeButton->setHighlightColor(dark ? Color::darkGray() : Color::lightGray());
}

void SettingsWindowController::showWindow() {
  window().makeKeyAndOrderFront();
  // A control may have been changed in a way that it does not report, as by an assistive program.
  m_bindings.forget();
  reloadValues();
}

void SettingsWindowController::reloadValues() {
  if (!m_form) return;
  const AppSettings& stored = settings();
  m_bindings.update(*m_form);
  m_windowTintButtonView->setFillColor(stored.windowTintColor());
  updateHelpButton(stored.gestureSettings());
}

void SettingsWindowController::updateHelpButton(std::int64_t gesture) {
  m_form->setVisible(kHelpButton, gesture == static_cast<std::int64_t>(Gesture::threeFingersResting));
}

void SettingsWindowController::gesturePopUpClicked(std::int64_t selectedTag) {
  settings().setGestureSettings(selectedTag);
  settings().stopHandlers();
  settings().startHandlers();
  updateHelpButton(selectedTag);
}

void SettingsWindowController::magnifyCheckboxClicked(bool on) {
  settings().setMagnifySettings(on);
}

void SettingsWindowController::menuSizeClicked(std::int64_t selectedTag) {
  settings().setMenuSizeSettings(selectedTag);
}

void SettingsWindowController::showRunningAppsClicked(bool on) {
  settings().setShowRunningApps(on);
}

void SettingsWindowController::swiftModeCheckboxClicked(bool on) {
  settings().setSwiftMode(on);
}

void SettingsWindowController::startOnLoginCheckboxClicked(bool on) {
  settings().setLaunchAtLogin(on);
  reloadValues();
  if (!on || settings().launchAtLogin()) return;
  showAlert(localized(
      "To enable Launch at Login please make sure that the Orbel Menu App Bundle is located in your "
      "default Applications directory."));
}

void SettingsWindowController::swiftModeInfoClicked() {
  showAlert(localized(
      "When Swift Mode is active, every item in Orbel Menu is opened as soon as you move your mouse cursor "
      "over it. \n\nThis makes Orbel Menu a super fast App Switcher / Launcher.\n\nNote: To add items to "
      "Orbel "
      "Menu via Drag & Drop, please make sure Swift Mode is turned off."));
}

void SettingsWindowController::websiteClicked() {
  Log::warningIfFailed(Platform::current().workspace.openUrl(kWebsite));
}

void SettingsWindowController::quitClicked() {
  if (m_terminate) m_terminate();
}

void SettingsWindowController::windowTintClicked() {
  m_colorSelection = ColorSelectViewController::withDelegate(this);
  m_currentPopover = m_form->makePopover([self = weak_from_this()] {
    const auto controller = self.lock();
    if (controller && controller->m_currentPopover)
      controller->popoverDidClose(*controller->m_currentPopover);
  });
  m_currentPopover->setContent(m_colorSelection->content(settings().windowTintColor()),
                               ColorSelectViewController::kColumns);
  m_currentPopover->show(kWindowTintButton);
}

void SettingsWindowController::didSelectColor(const Color& color) {
  settings().setWindowTintColor(color);
  reloadValues();
  if (m_currentPopover) m_currentPopover->close();
}

void SettingsWindowController::helpClicked() {
  const auto self = weak_from_this();
  m_playerView = std::make_shared<BezelView>(Rect({}, kHelpVideoSize));
  // What is seen until the first frame comes, and where none ever does.
  m_playerView->setImage(Platform::current().videoPlayerFactory.still(kHelpVideo, kHelpVideoSize));
  auto player = Platform::current().videoPlayerFactory.load(
      kHelpVideo, kHelpVideoExtension,
      {.frameReady =
           [view = std::weak_ptr(m_playerView)](ImagePointer frame) {
             if (const auto playerView = view.lock()) playerView->setImage(std::move(frame));
           },
       .didPlayToEnd = weakly(&SettingsWindowController::videoPlayerItemDidReachEnd)});
  Log::warningIfFailed(player);
  m_threeFingerRestPlayer = std::move(player).valueOr(nullptr);
  m_threeFingerRestPopover->setContent(
      {{.view = m_playerView, .accessibleName = localized("How to rest three fingers")}}, 1);
  if (m_threeFingerRestPlayer) m_threeFingerRestPlayer->seekToStart();
  m_threeFingerRestPopover->show(kHelpButton);
  if (m_threeFingerRestPlayer) m_threeFingerRestPlayer->play();
}

void SettingsWindowController::videoPlayerItemDidReachEnd() {
  if (!m_threeFingerRestPlayer || !m_threeFingerRestPopover->isShown()) return;
  m_threeFingerRestPlayer->seekToStart();
  m_threeFingerRestPlayer->play();
}

void SettingsWindowController::popoverDidClose(const Popover& popover) {
  if (&popover == m_threeFingerRestPopover.get()) {
    m_threeFingerRestPopover->setContent({}, 1);
    m_playerView = nullptr;
    m_threeFingerRestPlayer = nullptr;
  } else if (&popover == m_currentPopover.get()) {
    m_currentPopover = nullptr;
    m_colorSelection = nullptr;
  }
}

std::function<void()> SettingsWindowController::weakly(void (SettingsWindowController::*operation)()) {
  return [self = weak_from_this(), operation] {
    if (const auto controller = self.lock()) (controller.get()->*operation)();
  };
}

} // namespace orbel
