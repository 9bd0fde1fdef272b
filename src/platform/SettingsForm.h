// The settings window as the desktop draws it: values go in, the user's actions come out. Layout, labels and
// keys are the backend's; what a value means and what follows from an action is the delegate's. Loaded,
// hidden, by the settings window's controller when it is first shown. Main thread only.
#pragma once

#include "foundation/Color.h"
#include "platform/HostedView.h"
#include "platform/ManagedWindow.h"
#include "platform/Popover.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel {

// One entry of a pop-up button.
struct SettingsChoice {
  std::int64_t tag = 0;
  std::string title; // in the user's language
};

struct SettingsFormContents {
  std::vector<SettingsChoice> gestures;
  std::vector<SettingsChoice> menuSizes;
  HostedView windowTintButton;
  HostedView shortcutView;
  HostedView closeButton;
  std::string version; // of the program
  std::string website; // as shown
};

struct SettingsValues {
  std::int64_t gesture = 1; // tags of the entries
  std::int64_t menuSize = 1;
  bool magnify = false;
  bool showRunningApps = false;
  bool startOnLogin = false;
  bool swiftMode = false;
  friend bool operator==(const SettingsValues&, const SettingsValues&) = default;
};

// What the user does. The form shows the new value already when it tells.
class SettingsFormDelegate {
public:
  virtual ~SettingsFormDelegate() = default;
  virtual void gesturePopUpClicked(std::int64_t selectedTag) = 0;
  virtual void magnifyCheckboxClicked(bool on) = 0;
  virtual void menuSizeClicked(std::int64_t selectedTag) = 0;
  virtual void showRunningAppsClicked(bool on) = 0;
  virtual void startOnLoginCheckboxClicked(bool on) = 0;
  virtual void swiftModeCheckboxClicked(bool on) = 0;
  virtual void swiftModeInfoClicked() = 0;
  virtual void helpClicked() = 0;
  virtual void websiteClicked() = 0;
  virtual void quitClicked() = 0;
};

class SettingsForm {
public:
  virtual ~SettingsForm() = default;

  virtual ManagedWindow& window() = 0;
  // Tells the delegate nothing.
  virtual void setValues(const SettingsValues& values) = 0;
  // Whether the button that shows how to make the gesture is there.
  virtual void setHelpButtonVisible(bool visible) = 0;
  // The block is called whenever the popover has closed, whoever closed it, but for its destruction.
  virtual std::unique_ptr<Popover> makePopover(std::function<void()> didClose) = 0;
};

class SettingsForms {
public:
  virtual ~SettingsForms() = default;
  // Never empty. The delegate outlives the form.
  virtual std::unique_ptr<SettingsForm> load(SettingsFormContents contents,
                                             SettingsFormDelegate& delegate) = 0;
};

} // namespace orbel
