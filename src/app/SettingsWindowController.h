// Runs the settings window: every control shows its value from the settings store when the window is shown
// and writes it back at once when the user changes it; values changed from outside show while the window is
// open. Made once at launch by the application delegate; the window itself is loaded when it is first wanted.
// Held by shared_ptr, because popovers, videos and alerts answer later. Main thread only.
#pragma once

#include "app/ColorSelectViewController.h"
#include "app/SettingsBindings.h"
#include "chrome/BezelView.h"
#include "chrome/CloseButton.h"
#include "chrome/RoundVisualEffectView.h"
#include "chrome/RoundedEffectsWindow.h"
#include "chrome/SwatchView.h"
#include "foundation/Registration.h"
#include "platform/SettingsForm.h"
#include "platform/VideoPlayer.h"
#include "shortcut/MASShortcutView.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orbel {

class SettingsWindowController : public ColorSelectViewControllerDelegate,
                                 public std::enable_shared_from_this<SettingsWindowController> {
public:
  // Points, of the help video as it is shown.
  static constexpr Size kHelpVideoSize{282, 360};

  // The block ends the program in order.
  static std::shared_ptr<SettingsWindowController> create(std::function<void()> terminate);
  ~SettingsWindowController() override;

  // Loads it at the first call.
  RoundedEffectsWindow& window();
  bool isWindowLoaded() const { return m_window.has_value(); }
  // Once, by the controller itself, when the window has just been loaded: ties its parts together.
  void windowDidLoad();
  // In front, with the keyboard, and with the present values.
  void showWindow();
  // Every control shows the stored value again: at each show, when the store changes while the window is
  // open, and where a setting may refuse what was chosen. Nothing is sent to a control that shows its value
  // already. The window must be loaded.
  void reloadValues();

  // The window must be loaded.
  const std::shared_ptr<SwatchView>& windowTintButtonView() const { return m_windowTintButtonView; }
  const std::shared_ptr<MASShortcutView>& shortcutView() const { return m_shortcutView; }
  const std::shared_ptr<CloseButton>& closeButton() const { return m_closeButton; }
  // The open colour popover; null otherwise.
  Popover* currentPopover() const { return m_currentPopover.get(); }
  Popover& threeFingerRestPopover() const { return *m_threeFingerRestPopover; }
  // The player while the help popover is open and the video can be played.
  const VideoPlayer* threeFingerRestPlayer() const { return m_threeFingerRestPlayer.get(); }

  void gesturePopUpClicked(std::int64_t selectedTag);
  void magnifyCheckboxClicked(bool on);
  void menuSizeClicked(std::int64_t selectedTag);
  void showRunningAppsClicked(bool on);
  void startOnLoginCheckboxClicked(bool on);
  void swiftModeCheckboxClicked(bool on);
  void swiftModeInfoClicked();
  void helpClicked();
  void websiteClicked();
  void quitClicked();
  void windowTintClicked();
  void didSelectColor(const Color& color) override;

  // By the player, at the end of the help video: it begins again while its popover is open.
  void videoPlayerItemDidReachEnd();
  // Of either popover.
  void popoverDidClose(const Popover& popover);

private:
  // Of the controls that popovers stand beside.
  static constexpr const char* kHelpButton = "helpButton";
  static constexpr const char* kWindowTintButton = "windowTintButtonView";

  explicit SettingsWindowController(std::function<void()> terminate);
  void loadWindow();
  // The whole window, in SettingsWindowControllerForm.cpp: a new setting is one row more there.
  SettingsFormDescription describeForm();
  SettingsGroup describeSummoning();
  SettingsGroup describeAppearance();
  SettingsGroup describeBehavior();
  std::vector<SettingsKey> describeKeys();
  HostedView windowTintButton();
  HostedView shortcutControl();
  HostedView closeControl();
  void applyColorScheme();
  void updateHelpButton(std::int64_t gesture);
  // A block that does nothing once the controller has been destroyed.
  std::function<void()> weakly(void (SettingsWindowController::*operation)());

  std::function<void()> m_terminate;
  std::shared_ptr<RoundVisualEffectView> m_windowTintDisc; // holds the swatch
  std::shared_ptr<SwatchView> m_windowTintButtonView;
  std::shared_ptr<MASShortcutView> m_shortcutView;
  std::shared_ptr<CloseButton> m_closeButton;
  SettingsBindings m_bindings;
  std::unique_ptr<SettingsForm> m_form;
  std::optional<RoundedEffectsWindow> m_window;
  std::shared_ptr<ColorSelectViewController> m_colorSelection;
  std::unique_ptr<Popover> m_currentPopover;
  std::unique_ptr<Popover> m_threeFingerRestPopover;
  std::shared_ptr<BezelView> m_playerView;
  std::unique_ptr<VideoPlayer> m_threeFingerRestPlayer;
  Registration m_storeObservation;
};

} // namespace orbel
