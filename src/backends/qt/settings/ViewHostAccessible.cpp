#include "backends/qt/settings/ViewHostAccessible.h"

#include "backends/qt/settings/ViewHost.h"

namespace orbel::qt {

namespace {
QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* host = dynamic_cast<ViewHost*>(object);
  return host ? new ViewHostAccessible(*host) : nullptr;
}
} // namespace

void ViewHostAccessible::install() {
  // Qt keeps each function once.
  QAccessible::installFactory(makeInterface);
}

ViewHostAccessible::ViewHostAccessible(ViewHost& host)
    : QAccessibleWidget(&host, host.hosted().press ? QAccessible::Button : QAccessible::Graphic),
      m_host(host) {}

QString ViewHostAccessible::text(QAccessible::Text kind) const {
  const QString value = m_host.accessibleValue();
  if (kind == QAccessible::Value) return value;
  // Buttons have no value that readers would say, so it is part of the name.
  if (kind == QAccessible::Name && !value.isEmpty()) {
    return QStringLiteral("%1: %2").arg(m_host.accessibleName(), value);
  }
  return QAccessibleWidget::text(kind);
}

QStringList ViewHostAccessible::actionNames() const {
  QStringList names = QAccessibleWidget::actionNames();
  if (m_host.hosted().press) names.prepend(pressAction());
  return names;
}

void ViewHostAccessible::doAction(const QString& name) {
  if (name == pressAction()) {
    m_host.press();
  } else {
    QAccessibleWidget::doAction(name);
  }
}

} // namespace orbel::qt
