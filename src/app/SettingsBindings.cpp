#include "app/SettingsBindings.h"

#include <utility>

namespace orbel {

SettingsControl SettingsBindings::checkBox(const std::string& identifier, std::string title,
                                           std::function<bool()> read, std::function<void(bool)> write) {
  Binding& binding = m_bindings.emplace_back(Binding{identifier, std::move(read), {}});
  // What is shown is noted before it is written, because the store answers with an update.
  const auto clicked = [&binding, write = std::move(write)](bool on) {
    binding.shown = on;
    write(on);
  };
  return {identifier, SettingsCheckBox{std::move(title), clicked}};
}

SettingsControl SettingsBindings::popUpButton(const std::string& identifier, std::string accessibleName,
                                              std::vector<SettingsChoice> choices,
                                              std::function<std::int64_t()> read,
                                              std::function<void(std::int64_t)> write) {
  Binding& binding = m_bindings.emplace_back(Binding{identifier, std::move(read), {}});
  const auto chosen = [&binding, write = std::move(write)](std::int64_t tag) {
    binding.shown = tag;
    write(tag);
  };
  return {identifier, SettingsPopUpButton{std::move(accessibleName), std::move(choices), chosen}};
}

void SettingsBindings::update(SettingsForm& form) {
  for (Binding& binding : m_bindings) {
    const SettingsValue value = binding.read();
    if (binding.shown == value) continue;
    binding.shown = value;
    form.setValue(binding.identifier, value);
  }
}

void SettingsBindings::forget() {
  for (Binding& binding : m_bindings)
    binding.shown.reset();
}

} // namespace orbel
