// Asks the desktop's portal whether the user wants light or dark windows (org.freedesktop.portal.Settings),
// and is notified when that changes. A portal that does not run is not started for it. Main thread only.
#pragma once

#include "platform/ManagedWindow.h"

#include <functional>
#include <optional>

struct _GDBusConnection;

namespace orbel::qt {

class PortalSettings {
public:
  // The block is called after a change.
  explicit PortalSettings(std::function<void()> changed);
  ~PortalSettings();
  PortalSettings(const PortalSettings&) = delete;
  PortalSettings& operator=(const PortalSettings&) = delete;

  // None when there is no portal or the user has no preference.
  std::optional<ColorScheme> colorScheme() const;

private:
  std::function<void()> m_changed;
  _GDBusConnection* m_bus = nullptr; // null where there is no session bus
  unsigned int m_subscription = 0;
};

} // namespace orbel::qt
