#include "backends/qt/settings/QtManagedWindow.h"

#include "backends/qt/windows/ScreenSpace.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace orbel::qt {

QtManagedWindow::QtManagedWindow(DisplayServer& display, std::function<void(WId)> activate)
    : m_activate(std::move(activate)), m_widget(display),
      m_colorScheme(display, [this] { m_widget.setColorScheme(m_colorScheme.current()); }) {
  m_widget.setColorScheme(m_colorScheme.current());
}

QtManagedWindow::~QtManagedWindow() = default;

Rect QtManagedWindow::frame() const {
  return ScreenSpace::fromQt(m_widget.geometry());
}

void QtManagedWindow::setFrameOrigin(Point origin) {
  m_widget.move(ScreenSpace::toQt(Rect(origin, frame().size)).topLeft());
}

void QtManagedWindow::center() {
  m_widget.adjustSize();
  const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  QRect placed = m_widget.geometry();
  placed.moveCenter(screen->availableGeometry().center());
  m_widget.move(placed.topLeft());
}

void QtManagedWindow::makeKeyAndOrderFront() {
  // Not every desktop reports a change.
  m_widget.setColorScheme(m_colorScheme.current());
  m_widget.show();
  if (m_widget.isMinimized()) m_widget.showNormal();
  m_widget.raise();
  m_widget.activateWindow();
  if (m_activate) m_activate(m_widget.winId());
}

} // namespace orbel::qt
