#include "backends/qt/settings/QtPopover.h"

#include <utility>

namespace orbel::qt {

QtPopover::QtPopover(const DisplayServer& display, RunLoop& runLoop, QWidget* parent, ControlFinder control,
                     std::function<void()> didClose)
    : m_widget(new PopoverWidget(display, runLoop, parent)), m_control(std::move(control)) {
  m_widget->setDidHide(std::move(didClose));
}

QtPopover::~QtPopover() {
  if (!m_widget) return;
  m_widget->setDidHide({});
  m_widget->hide();
  // Qt may be executing its code.
  m_widget->deleteLater();
}

void QtPopover::setContent(std::vector<HostedView> views, int columns) {
  if (m_widget) m_widget->setContent(std::move(views), columns);
}

void QtPopover::show(const std::string& besideControl) {
  const QWidget* control = m_control(besideControl);
  if (m_widget && control) m_widget->showBeside(*control);
}

void QtPopover::close() {
  if (m_widget) m_widget->hide();
}

} // namespace orbel::qt
