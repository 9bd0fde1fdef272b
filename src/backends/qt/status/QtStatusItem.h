// One status icon in whichever way the desktop shows it at the moment. Owned by who asked the status bar
// for it.
#pragma once

#include "backends/qt/status/StatusNotifierItem.h"
#include "backends/qt/status/StatusNotifierRegistration.h"
#include "backends/qt/status/SystemTray.h"
#include "foundation/Registration.h"
#include "platform/StatusBar.h"

#include <QColor>
#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <memory>

namespace orbel::qt {

class QtStatusItem final : public QObject, public StatusItem {
public:
  QtStatusItem(StatusItemContents contents, SystemTray& tray, const QDBusConnection& bus);

  // Watches the program for a change of the desktop's colours.
  bool eventFilter(QObject* object, QEvent* event) override;

private:
  void trayChanged();
  Bitmap bitmap(int side) const;
  void redraw();

  StatusPicture m_picture;
  QString m_title;
  std::function<void()> m_clicked;
  SystemTray& m_tray;
  QColor m_foreground;
  StatusNotifierItem m_notifierItem;
  bool m_usesTray = false; // no panel draws notifier items
  std::unique_ptr<TrayIcon> m_trayIcon;
  SystemTray::Identity m_iconsTray = SystemTray::kNone; // the tray that the icon was put into
  Registration m_trayChanges;
  StatusNotifierRegistration m_registration;
};

} // namespace orbel::qt
