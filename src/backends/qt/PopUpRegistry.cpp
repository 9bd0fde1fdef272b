#include "backends/qt/PopUpRegistry.h"

#include <QApplication>
#include <QCursor>

#include <algorithm>

namespace orbel {

Registration PopUpRegistry::add(QWidget& popUp) {
  m_popUps->push_back(&popUp);
  // A pop-up may outlive the registry at the end of the program.
  return Registration([popUps = std::weak_ptr<PopUps>(m_popUps), pointer = QPointer<QWidget>(&popUp)] {
    const auto list = popUps.lock();
    if (!list) return;
    const auto found = std::find(list->begin(), list->end(), pointer);
    if (found != list->end()) list->erase(found);
  });
}

bool PopUpRegistry::isPointerOver() const {
  return contains(QCursor::pos());
}

bool PopUpRegistry::contains(QPoint position) const {
  if (m_popUps->empty()) return false;
  const auto windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [&](const QWidget* window) {
    return window->isVisible() && window->frameGeometry().contains(position) && belongsToPopUp(window);
  });
}

bool PopUpRegistry::belongsToPopUp(const QWidget* window) const {
  for (const QWidget* widget = window; widget; widget = widget->parentWidget()) {
    if (std::any_of(m_popUps->begin(), m_popUps->end(), [&](const auto& popUp) { return popUp == widget; }))
      return true;
  }
  return false;
}

} // namespace orbel
