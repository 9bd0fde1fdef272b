#include "backends/qt/QtStatusItem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QIcon>
#include <QPixmap>

#include <utility>

namespace orbel {

namespace {
constexpr int kTraySides[] = {16, 22, 24, 32, 48, 64}; // pixels
}

QtStatusItem::QtStatusItem(StatusItemContents contents, SystemTrayWatch& tray, const QDBusConnection& bus)
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
  const xcb_window_t tray = m_usesTray ? m_tray.tray() : xcb_window_t{XCB_NONE};
  if (tray != m_iconsTray) {
    // The toolkit does not follow a tray that comes later or comes back: the icon is made anew for each.
    m_trayIcon.reset();
    m_iconsTray = tray;
    if (tray != XCB_NONE) putIntoTray();
  }
  redraw();
}

void QtStatusItem::putIntoTray() {
  m_trayIcon = std::make_unique<QSystemTrayIcon>();
  m_trayIcon->setToolTip(m_title);
  connect(m_trayIcon.get(), &QSystemTrayIcon::activated, this,
          [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason != QSystemTrayIcon::MiddleClick && m_clicked) m_clicked();
          });
  redraw();
  m_trayIcon->show();
}

void QtStatusItem::redraw() {
  std::optional<QColor> wish;
  if (const auto color = m_tray.foreground())
    wish = QColor::fromRgba64(QRgba64::fromRgba64(color->red, color->green, color->blue, 0xFFFF));
  const QColor color = StatusPicture::foreground(wish);
  m_notifierItem.setForeground(color);
  if (!m_trayIcon) return;
  QIcon icon;
  for (const int side : kTraySides)
    icon.addPixmap(QPixmap::fromImage(m_picture.image(side, color)));
  m_trayIcon->setIcon(icon);
}

bool QtStatusItem::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && object == QCoreApplication::instance()) redraw();
  return QObject::eventFilter(object, event);
}

} // namespace orbel
