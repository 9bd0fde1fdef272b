// Ties controls of the settings form to their settings: what the user changes is written at once, and the
// form is sent a setting only where it differs from what the control shows. Owned by the settings window's
// controller, which outlives the form; an object serves one form. Main thread only.
#pragma once

#include "platform/SettingsForm.h"

#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <vector>

namespace orbel {

class SettingsBindings {
public:
  SettingsBindings() = default;
  SettingsBindings(const SettingsBindings&) = delete;
  SettingsBindings& operator=(const SettingsBindings&) = delete;

  // These make a control for the form's description. Reading is done at every update.
  SettingsControl checkBox(const std::string& identifier, std::string title, std::function<bool()> read,
                           std::function<void(bool)> write);
  SettingsControl popUpButton(const std::string& identifier, std::string accessibleName,
                              std::vector<SettingsChoice> choices, std::function<std::int64_t()> read,
                              std::function<void(std::int64_t)> write);

  // Sends the form the settings that its controls do not show.
  void update(SettingsForm& form);
  // The next update sends every setting: what the controls show is no longer certain.
  void forget();

private:
  struct Binding {
    std::string identifier;
    std::function<SettingsValue()> read;
    std::optional<SettingsValue> shown; // none before the first update
  };
  // The blocks of the form's controls refer to its elements.
  std::list<Binding> m_bindings;
};

} // namespace orbel
