// The settings window as the desktop draws it. It shows what the core describes and knows no setting: values
// come in by the identifiers of their controls, the user's actions leave through the description's blocks.
// Layout and look are the backend's. Loaded, hidden, by the settings window's controller when it is first
// shown. Main thread only.
#pragma once

#include "platform/ManagedWindow.h"
#include "platform/Popover.h"
#include "platform/SettingsFormDescription.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>

namespace orbel {

// Whether a check box is on, or the tag of a pop-up button's entry.
using SettingsValue = std::variant<bool, std::int64_t>;

class SettingsForm {
public:
  virtual ~SettingsForm() = default;

  virtual ManagedWindow& window() = 0;
  // Calls no block. At first a check box is off and a pop-up button shows its first entry.
  virtual void setValue(const std::string& identifier, SettingsValue value) = 0;
  // At first every control is visible.
  virtual void setVisible(const std::string& identifier, bool visible) = 0;
  // The block is called whenever the popover has closed, whoever closed it, but for its destruction.
  virtual std::unique_ptr<Popover> makePopover(std::function<void()> didClose) = 0;
};

class SettingsFormFactory {
public:
  virtual ~SettingsFormFactory() = default;
  // Never empty.
  virtual std::unique_ptr<SettingsForm> load(SettingsFormDescription description) = 0;
};

} // namespace orbel
