// Makes the settings window when the core asks for it. Made by main; everything it is given outlives it, and
// it outlives its forms.
#pragma once

#include "backends/qt/settings/QtSettingsForm.h"
#include "platform/SettingsForm.h"

#include <memory>
#include <utility>

namespace orbel::qt {

class QtSettingsFormFactory : public SettingsFormFactory {
public:
  explicit QtSettingsFormFactory(SettingsFormEnvironment environment)
      : m_environment(std::move(environment)) {}

  std::unique_ptr<SettingsForm> load(SettingsFormDescription description) override {
    return std::make_unique<QtSettingsForm>(m_environment, description);
  }

private:
  SettingsFormEnvironment m_environment;
};

} // namespace orbel::qt
