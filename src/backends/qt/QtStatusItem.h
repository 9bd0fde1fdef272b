// One status icon in whichever way the desktop shows it at the moment. Owned by who asked the status bar for
// it.
#pragma once

#include "backends/qt/StatusNotifierItem.h"
#include "backends/qt/StatusNotifierRegistration.h"
#include "backends/x11/SystemTrayWatch.h"
#include "backends/x11/TrayIcon.h"
#include "foundation/Registration.h"
#include "platform/StatusBar.h"

#include <QColor>
#include <QDBusConnection>
#include <QObject>

#include <functional>
#include <memory>

namespace orbel {

class QtStatusItem final : public QObject, public StatusItem {
public:
  QtStatusItem(StatusItemContents contents, SystemTrayWatch& tray, const QDBusConnection& bus);

  // Watches the program for a change of the desktop's colours.
  bool eventFilter(QObject* object, QEvent* event) override;

private:
  void trayChanged();
  Bitmap bitmap(int side) const;
  void redraw();

  StatusPicture m_picture;
  QString m_title;
  std::function<void()> m_clicked;
  SystemTrayWatch& m_tray;
  QColor m_foreground;
  StatusNotifierItem m_notifierItem;
  bool m_usesTray = false; // no panel draws notifier items
  std::unique_ptr<TrayIcon> m_trayIcon;
  xcb_window_t m_iconsTray = XCB_NONE; // the tray that the icon was put into
  Registration m_trayChanges;
  StatusNotifierRegistration m_registration;
};

} // namespace orbel
