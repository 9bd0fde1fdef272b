#include "backends/qt/status/QtStatusBar.h"

#include "backends/qt/status/QtStatusItem.h"

#include <utility>

namespace orbel::qt {

QtStatusBar::QtStatusBar(SystemTray& tray, QDBusConnection bus) : m_tray(tray), m_bus(std::move(bus)) {}

std::unique_ptr<StatusItem> QtStatusBar::makeStatusItem(StatusItemContents contents) {
  return std::make_unique<QtStatusItem>(std::move(contents), m_tray, m_bus);
}

} // namespace orbel::qt
