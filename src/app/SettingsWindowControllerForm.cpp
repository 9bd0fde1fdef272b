// What stands in the settings window: its groups, rows, texts and keys, each described here and nowhere else.
#include "app/SettingsWindowController.h"

#include "app/MainMenu.h"
#include "app/SettingsChoices.h"
#include "platform/Platform.h"
#include "settings/AppSettings.h"

#include <string>
#include <string_view>
#include <utility>

namespace orbel {

namespace {
constexpr double kTintDiscSide = 28;
constexpr double kTintSwatchSide = 22;
constexpr Rect kShortcutFrame{0, 0, 190, 24};
constexpr Rect kCloseFrame{0, 0, 20, 20};

constexpr const char* kShownWebsite = "orbelmenu.org";

std::string localized(std::string_view english) {
  return Platform::current().text.localized(english);
}

// A translated text with a word in its place for one.
std::string filledIn(std::string text, std::string_view word) {
  constexpr std::string_view kPlaceholder = "%@";
  if (const auto place = text.find(kPlaceholder); place != std::string::npos)
    text.replace(place, kPlaceholder.size(), word);
  return text;
}

AppSettings& settings() {
  return AppSettings::sharedInstance();
}

std::string toolTipAt(const MASShortcutView& view, Point place) {
  for (const auto& toolTip : view.toolTips()) {
    if (toolTip.area.contains(place)) return toolTip.text;
  }
  return {};
}
} // namespace

SettingsFormDescription SettingsWindowController::describeForm() {
  return {.windowTitle = localized("Settings"),
          .heading = localized("Orbel Menu"),
          .groups = {describeSummoning(), describeAppearance(), describeBehavior()},
          .footerAtLeft = {{"version", SettingsText{filledIn(localized("Version %@"), ORBEL_VERSION)}},
                           {"websiteButton",
                            SettingsButton{.style = SettingsButton::Style::link,
                                           .title = kShownWebsite,
                                           .explanation = filledIn(localized("Web site: %@"), kShownWebsite),
                                           .pressed = [this] { websiteClicked(); }}}},
          .footerAtRight = {{"quitButton", SettingsButton{.title = localized("&Quit Orbel Menu"),
                                                          .pressed = [this] { quitClicked(); }}}},
          .closeButton = {"closeButton", closeControl()},
          .keys = describeKeys()};
}

SettingsGroup SettingsWindowController::describeSummoning() {
  SettingsControl gesture = m_bindings.popUpButton(
      "gesturePopUpButton", localized("Gesture"), SettingsChoices::gestures(),
      [] { return settings().gestureSettings(); }, [this](std::int64_t tag) { gesturePopUpClicked(tag); });
  SettingsControl help{kHelpButton, SettingsButton{.style = SettingsButton::Style::disc,
                                                   .title = "?",
                                                   .explanation = localized("Show how to make the gesture"),
                                                   .pressed = [this] { helpClicked(); }}};
  return {.title = localized("Open the menu"),
          .rows = {{localized("&Shortcut:"), {"shortcutView", shortcutControl()}},
                   {localized("&Gesture:"), std::move(gesture), std::move(help)}}};
}

SettingsGroup SettingsWindowController::describeAppearance() {
  SettingsControl menuSize = m_bindings.popUpButton(
      "menuSizePopUpButton", localized("Menu size"), SettingsChoices::menuSizes(),
      [] { return settings().menuSizeSettings(); }, [this](std::int64_t tag) { menuSizeClicked(tag); });
  SettingsControl magnify = m_bindings.checkBox(
      "magnifyCheckbox", localized("&Magnify items under the pointer"),
      [] { return settings().magnifySettings(); }, [this](bool on) { magnifyCheckboxClicked(on); });
  return {.title = localized("Appearance"),
          .rows = {{localized("Menu si&ze:"), std::move(menuSize)},
                   {localized("Menu &color:"), {kWindowTintButton, windowTintButton()}},
                   {{}, std::move(magnify)}}};
}

SettingsGroup SettingsWindowController::describeBehavior() {
  SettingsControl runningApps = m_bindings.checkBox(
      "showRunningAppsCheckbox", localized("Show &running applications"),
      [] { return settings().showRunningApps(); }, [this](bool on) { showRunningAppsClicked(on); });
  SettingsControl swiftMode = m_bindings.checkBox(
      "swiftModeCheckbox", localized("S&wift Mode"), [] { return settings().swiftMode(); },
      [this](bool on) { swiftModeCheckboxClicked(on); });
  SettingsControl swiftModeInfo{"swiftModeInfoButton",
                                SettingsButton{.style = SettingsButton::Style::disc,
                                               .title = "i",
                                               .explanation = localized("What is Swift Mode?"),
                                               .pressed = [this] { swiftModeInfoClicked(); }}};
  SettingsControl startOnLogin = m_bindings.checkBox(
      "startOnLoginCheckbox", localized("&Launch at login"), [] { return settings().launchAtLogin(); },
      [this](bool on) { startOnLoginCheckboxClicked(on); });
  return {.title = localized("Behavior"),
          .rows = {{{}, std::move(runningApps)},
                   {{}, std::move(swiftMode), std::move(swiftModeInfo)},
                   {{}, std::move(startOnLogin)}}};
}

std::vector<SettingsKey> SettingsWindowController::describeKeys() {
  std::vector<SettingsKey> keys;
  for (const MainMenu::Key& key : MainMenu::keys()) {
    const auto pressed = [this, command = key.command] {
      if (command == MainMenu::Command::quit) {
        quitClicked();
      } else {
        window().close();
      }
    };
    keys.push_back({key.keyEquivalent, key.modifierFlags, pressed});
  }
  return keys;
}

HostedView SettingsWindowController::windowTintButton() {
  m_windowTintDisc = std::make_shared<RoundVisualEffectView>(Rect(0, 0, kTintDiscSide, kTintDiscSide));
  m_windowTintButtonView =
      std::make_shared<SwatchView>(Rect::centeredAt(m_windowTintDisc->bounds().center(), kTintSwatchSide));
  auto button = std::make_shared<MouseSensitiveView>(m_windowTintDisc->bounds());
  const auto clicked = weakly(&SettingsWindowController::windowTintClicked);
  button->setMouseClickBlock([clicked](const MouseEvent&) { clicked(); });
  m_windowTintDisc->addSubview(m_windowTintButtonView);
  m_windowTintDisc->addSubview(std::move(button));
  const auto colorName = [swatch = std::weak_ptr(m_windowTintButtonView)] {
    const auto view = swatch.lock();
    return view ? ColorSelectViewController::nameOf(view->fillColor()) : std::string();
  };
  return {.view = m_windowTintDisc,
          .accessibleName = localized("Menu color"),
          .accessibleValue = colorName,
          .toolTipAt = [](Point) { return localized("Choose the color of the menu"); },
          .press = clicked};
}

HostedView SettingsWindowController::shortcutControl() {
  m_shortcutView = std::make_shared<MASShortcutView>(kShortcutFrame, Platform::current().keyRecorder);
  const std::weak_ptr<MASShortcutView> weakView = m_shortcutView;
  return {.view = m_shortcutView,
          .accessibleName = localized("Keyboard shortcut"),
          .accessibleValue =
              [weakView] {
                const auto view = weakView.lock();
                return view && view->shortcutValue() ? view->shortcutValue()->description() : std::string();
              },
          .toolTipAt =
              [weakView](Point place) {
                const auto view = weakView.lock();
                return view ? toolTipAt(*view, place) : std::string();
              },
          .press =
              [weakView] {
                if (const auto view = weakView.lock()) view->setRecording(true);
              }};
}

HostedView SettingsWindowController::closeControl() {
  m_closeButton = std::make_shared<CloseButton>(kCloseFrame);
  return {.view = m_closeButton, .accessibleName = localized("Close"), .press = [self = weak_from_this()] {
            if (const auto controller = self.lock()) controller->window().close();
          }};
}

} // namespace orbel
