// A group of the settings window's controls: a pale card over the glass with labels at its left and controls
// at its right, one row each. Cards beside each other are aligned by giving all the same label width.
#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QWidget>

#include <vector>

namespace orbel::qt {

class FormCard : public QWidget {
public:
  explicit FormCard(QWidget* parent = nullptr);

  // The label's accelerator focuses the control. The companion, a small button behind it, may be null.
  void addRow(const QString& label, QWidget* control, QWidget* companion = nullptr);
  // A control that is its own label.
  void addRow(QWidget* control, QWidget* companion = nullptr);

  int widestLabel() const;
  void setLabelWidth(int width);

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  void placeControl(QWidget* control, QWidget* companion);

  QGridLayout* m_grid;
  std::vector<QLabel*> m_labels;
};

} // namespace orbel::qt
