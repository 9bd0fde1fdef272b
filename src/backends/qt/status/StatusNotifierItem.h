// The program's icon as an object on the session bus (the StatusNotifierItem interface of the freedesktop and
// KDE desktops), which a panel draws. It has no menu: every click is reported. Owned by the status item.
#pragma once

#include "backends/qt/status/StatusPicture.h"

#include <QColor>
#include <QDBusConnection>
#include <QString>

#include <functional>
#include <memory>

namespace orbel::qt {

class StatusNotifierItem {
public:
  static constexpr const char* kObjectPath = "/StatusNotifierItem";

  // Is on the bus from then on, under serviceName(). The title is plain text.
  StatusNotifierItem(QDBusConnection bus, StatusPicture picture, const QString& title,
                     std::function<void()> clicked);
  ~StatusNotifierItem();
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  const QString& serviceName() const { return m_serviceName; }
  // The colour of a template's pixels, for panels that do not draw the theme's picture.
  void setForeground(const QColor& color);

private:
  class BusObject;

  QDBusConnection m_bus;
  QString m_serviceName;
  std::unique_ptr<BusObject> m_object;
};

} // namespace orbel::qt
