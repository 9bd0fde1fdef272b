#include "backends/qt/windows/MenuWindow.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QRectF>
#include <cmath>
#include <optional>

namespace orbel::qt {

namespace {
std::optional<PointerButton> buttonOf(const QMouseEvent& event) {
  switch (event.button()) {
  case Qt::LeftButton:
    return PointerButton::primary;
  case Qt::RightButton:
    return PointerButton::secondary;
  default:
    return std::nullopt;
  }
}

// The smallest rectangle of whole units that holds all of it.
QRect scaled(const QRect& rect, double factor) {
  return QRectF(rect.x() * factor, rect.y() * factor, rect.width() * factor, rect.height() * factor)
      .toAlignedRect();
}
} // namespace

MenuWindow::MenuWindow() : m_backingStore(this) {
  QSurfaceFormat translucent = format();
  translucent.setAlphaBufferSize(8);
  setFormat(translucent);
  // Bypassing the window manager is what makes the place exact and the mapping quick, and keeps the focus
  // where it is.
  setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
           Qt::WindowDoesNotAcceptFocus);
  setTitle(QGuiApplication::applicationDisplayName());
  create();
}

MenuWindow::~MenuWindow() = default;

void MenuWindow::addDamage(const QRect& rect) {
  m_damage |= rect & QRect(QPoint(), deviceSize());
  if (m_damage.isEmpty() || m_paintPosted || !isVisible()) return;
  m_paintPosted = true;
  // Posted, since asking Qt for an update waits five milliseconds.
  QCoreApplication::postEvent(this, new QEvent(QEvent::UpdateRequest));
}

void MenuWindow::paintNow() {
  QRect damage = m_damage & QRect(QPoint(), deviceSize());
  m_damage = {};
  if (damage.isEmpty() || !m_owner || !isVisible()) return;
  const QRect all(QPoint(), size());
  QRect points = all;
  if (m_backingStore.size() == all.size()) {
    points &= scaled(damage, 1 / devicePixelRatio());
  } else {
    m_backingStore.resize(all.size());
  }

  m_backingStore.beginPaint(points); // clears a store that has transparency
  QPaintDevice* device = m_backingStore.paintDevice();
  if (device && device->devType() == QInternal::Image) {
    // The same pixels without Qt's scaling: the canvas scales by itself and keeps images on whole pixels.
    auto& store = *static_cast<QImage*>(device);
    QImage pixels(store.bits(), store.width(), store.height(), store.bytesPerLine(), store.format());
    QPainter painter(&pixels);
    damage = scaled(points, devicePixelRatio()) & pixels.rect();
    painter.setClipRect(damage);
    if (!pixels.hasAlphaChannel()) painter.fillRect(damage, Qt::black);
    m_owner->paintWindow(painter, damage);
  }
  m_backingStore.endPaint();
  m_backingStore.flush(points);
}

QSize MenuWindow::deviceSize() const {
  const double ratio = devicePixelRatio();
  return {static_cast<int>(std::lround(width() * ratio)), static_cast<int>(std::lround(height() * ratio))};
}

bool MenuWindow::event(QEvent* event) {
  switch (event->type()) {
  case QEvent::UpdateRequest:
    m_paintPosted = false;
    paintNow();
    return true;
  case QEvent::Expose:
    // What was painted when the window was mapped is still there; it need not be painted again.
    if (isExposed() && !m_backingStore.size().isEmpty()) m_backingStore.flush(QRect(QPoint(), size()));
    return true;
  default:
    return m_owner && deliver(*event) ? true : QWindow::event(event);
  }
}

// Nothing of this window may be touched after its owner was called: that may have given it to another one.
bool MenuWindow::deliver(QEvent& event) {
  switch (event.type()) {
  case QEvent::Enter: {
    const auto& enter = static_cast<const QEnterEvent&>(event);
    // The event carries no buttons; these are as Qt last received them, and the next move brings the
    // exact ones.
    m_owner->windowPointerMoved(enter.position(), enter.modifiers(), QGuiApplication::mouseButtons());
    return true;
  }
  case QEvent::MouseMove: {
    const auto& move = static_cast<const QMouseEvent&>(event);
    m_owner->windowPointerMoved(move.position(), move.modifiers(), move.buttons());
    return true;
  }
  case QEvent::Leave:
    m_owner->windowPointerLeft();
    return true;
  case QEvent::MouseButtonPress: {
    const auto& press = static_cast<const QMouseEvent&>(event);
    if (const auto button = buttonOf(press))
      m_owner->windowPressed(*button, press.position(), press.modifiers());
    return true;
  }
  case QEvent::MouseButtonRelease: {
    const auto& release = static_cast<const QMouseEvent&>(event);
    if (const auto button = buttonOf(release)) {
      m_owner->windowReleased(*button, release.position(), release.modifiers());
    }
    return true;
  }
  case QEvent::DragEnter:
  case QEvent::DragMove:
  case QEvent::Drop:
    m_owner->windowDragged(static_cast<QDropEvent&>(event));
    return true;
  case QEvent::DragLeave:
    m_owner->windowDragLeft();
    return true;
  default:
    return false;
  }
}

} // namespace orbel::qt
