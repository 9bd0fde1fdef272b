// How a hosted view looks to assistive programs: a button with a name and a value, which can be pressed; a
// picture where it takes no presses.
#pragma once

#include <QAccessibleWidget>
#include <QString>
#include <QStringList>

namespace orbel::qt {

class ViewHost;

class ViewHostAccessible : public QAccessibleWidget {
public:
  // Makes Qt use it for every ViewHost; a second call is harmless.
  static void install();

  explicit ViewHostAccessible(ViewHost& host);

  QString text(QAccessible::Text kind) const override;
  QStringList actionNames() const override;
  void doAction(const QString& name) override;

private:
  ViewHost& m_host;
};

} // namespace orbel::qt
