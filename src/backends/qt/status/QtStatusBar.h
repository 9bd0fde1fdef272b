// The status icon: as a StatusNotifierItem where a panel draws those, else in the display's older system tray,
// else nowhere until one of them comes.
#pragma once

#include "backends/qt/status/SystemTray.h"
#include "platform/StatusBar.h"

#include <QDBusConnection>

#include <memory>

namespace orbel::qt {

class QtStatusBar final : public StatusBar {
public:
  // The tray outlives the status bar and its items.
  explicit QtStatusBar(SystemTray& tray, QDBusConnection bus = QDBusConnection::sessionBus());

  std::unique_ptr<StatusItem> makeStatusItem(StatusItemContents contents) override;

private:
  SystemTray& m_tray;
  QDBusConnection m_bus;
};

} // namespace orbel::qt
