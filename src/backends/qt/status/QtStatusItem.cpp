#include "backends/qt/status/QtStatusItem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QImage>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace orbel::qt {

QtStatusItem::QtStatusItem(StatusItemContents contents, SystemTray& tray, const QDBusConnection& bus)
    : m_picture(QString::fromStdString(contents.image), contents.isTemplate),
      m_title(QString::fromStdString(contents.title)), m_clicked(std::move(contents.clicked)), m_tray(tray),
      m_notifierItem(bus, m_picture, m_title, m_clicked),
      m_trayChanges(tray.observeChanges([this] { trayChanged(); })),
      m_registration(bus, m_notifierItem.serviceName(), [this](bool hasHost) {
        m_usesTray = !hasHost;
        trayChanged();
      }) {
  QCoreApplication::instance()->installEventFilter(this);
}

void QtStatusItem::trayChanged() {
  const SystemTray::Identity tray = m_usesTray ? m_tray.current() : SystemTray::kNone;
  const bool isAnother = tray != m_iconsTray;
  if (isAnother) m_trayIcon.reset();
  m_iconsTray = tray;
  redraw();
  if (!isAnother || tray == SystemTray::kNone) return;
  m_trayIcon = m_tray.addIcon({m_title.toStdString(), [this](int side) { return bitmap(side); }, m_clicked});
}

Bitmap QtStatusItem::bitmap(int side) const {
  const QImage image = m_picture.image(side, m_foreground);
  Bitmap bitmap(image.width(), image.height());
  for (int y = 0; y < image.height(); ++y)
    std::copy_n(reinterpret_cast<const std::uint32_t*>(image.constScanLine(y)), image.width(),
                bitmap.pixels.begin() + static_cast<std::ptrdiff_t>(y) * image.width());
  return bitmap;
}

void QtStatusItem::redraw() {
  m_foreground = StatusPicture::foreground(m_tray.foreground());
  m_notifierItem.setForeground(m_foreground);
  if (m_trayIcon) m_trayIcon->redraw();
}

bool QtStatusItem::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && object == QCoreApplication::instance()) redraw();
  return QObject::eventFilter(object, event);
}

} // namespace orbel::qt
