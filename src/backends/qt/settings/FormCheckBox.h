// A check box in the settings window's own look.
#pragma once

#include <QCheckBox>

namespace orbel::qt {

class FormCheckBox : public QCheckBox {
public:
  explicit FormCheckBox(const QString& text, QWidget* parent = nullptr);

  QSize sizeHint() const override;

protected:
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }
  void paintEvent(QPaintEvent* event) override;
};

} // namespace orbel::qt
