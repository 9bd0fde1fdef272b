// The status icon: as a StatusNotifierItem where a panel draws those, else in the older system tray (XEmbed),
// else nowhere until one of them comes. Made by main.
#pragma once

#include "backends/x11/SystemTrayWatch.h"
#include "platform/StatusBar.h"

#include <QDBusConnection>

#include <memory>

namespace orbel {

class QtStatusBar final : public StatusBar {
public:
  // The tray outlives the status bar and its items.
  explicit QtStatusBar(SystemTrayWatch& tray, QDBusConnection bus = QDBusConnection::sessionBus());

  std::unique_ptr<StatusItem> makeStatusItem(StatusItemContents contents) override;

private:
  SystemTrayWatch& m_tray;
  QDBusConnection m_bus;
};

} // namespace orbel
