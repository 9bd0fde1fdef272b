#include "backends/qt/popups/PopUpRegistry.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace orbel::qt {

// At the application, because Qt delivers a click to the control under the pointer and not to the window.
class PopUpRegistry::EventWatch : public QObject {
public:
  explicit EventWatch(const PopUpRegistry& registry) : m_registry(registry) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool endsClick = event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::Close;
    if (endsClick && watched->isWindowType() && !m_registry.m_popUps.empty()) m_registry.m_drainTaps();
    return false;
  }

private:
  const PopUpRegistry& m_registry;
};

PopUpRegistry::PopUpRegistry(std::function<void()> drainTaps) : m_drainTaps(std::move(drainTaps)) {}

PopUpRegistry::~PopUpRegistry() = default;

Registration PopUpRegistry::add(QWidget& popUp) {
  if (m_drainTaps && !m_eventWatch) m_eventWatch = std::make_unique<EventWatch>(*this);
  m_popUps.push_back(&popUp);
  return Registration([this, life = m_lifetime.watch(), pointer = QPointer<QWidget>(&popUp)] {
    if (life.hasEnded()) return;
    const auto found = std::find(m_popUps.begin(), m_popUps.end(), pointer);
    if (found != m_popUps.end()) m_popUps.erase(found);
  });
}

bool PopUpRegistry::isPointerOver() const {
  return contains(QCursor::pos());
}

bool PopUpRegistry::contains(QPoint position) const {
  if (m_popUps.empty()) return false;
  const auto windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [&](const QWidget* window) {
    return window->isVisible() && window->frameGeometry().contains(position) && belongsToPopUp(window);
  });
}

bool PopUpRegistry::belongsToPopUp(const QWidget* window) const {
  for (const QWidget* widget = window; widget; widget = widget->parentWidget()) {
    if (std::any_of(m_popUps.begin(), m_popUps.end(), [&](const auto& popUp) { return popUp == widget; }))
      return true;
  }
  return false;
}

} // namespace orbel::qt
