// For displays without a status area of the older kind.
#pragma once

#include "backends/qt/status/SystemTray.h"

namespace orbel::qt {

class NoSystemTray final : public SystemTray {
public:
  Identity current() const override { return kNone; }
  std::optional<QColor> foreground() override { return std::nullopt; }
  Registration observeChanges(std::function<void()>) override { return {}; }
  std::unique_ptr<TrayIcon> addIcon(TrayIcon::Contents) override { return nullptr; }
};

} // namespace orbel::qt
