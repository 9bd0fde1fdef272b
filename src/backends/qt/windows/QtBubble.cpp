#include "backends/qt/windows/QtBubble.h"

#include "backends/qt/windows/QtWindowSystem.h"
#include "platform/Surface.h"

#include <utility>

namespace orbel::qt {

QtBubble::QtBubble(QtWindowSystem& system, std::string text) : m_system(system), m_text(std::move(text)) {}

QtBubble::~QtBubble() {
  close();
}

void QtBubble::show(const Surface& surface, const Rect& anchor) {
  const Point origin = surface.frame().origin;
  const Rect anchorOnScreen = anchor.offsetBy(origin.x, origin.y);
  if (m_window) {
    if (anchorOnScreen == m_anchor) return;
    m_anchor = anchorOnScreen;
    m_window->place(QString::fromStdString(m_text), m_anchor);
    return;
  }
  m_anchor = anchorOnScreen;
  m_window = m_system.takeBubbleWindow();
  m_window->place(QString::fromStdString(m_text), m_anchor);
  m_system.willShow(*m_window);
  m_window->setMapped(!m_system.hidesForDialog());
}

void QtBubble::close() {
  if (!m_window) return;
  m_window->setMapped(false);
  m_system.returnBubbleWindow(std::move(m_window));
}

} // namespace orbel::qt
