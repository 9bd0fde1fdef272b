#include "backends/qt/settings/FormCard.h"

#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace orbel::qt {

namespace {
constexpr int kHorizontalPadding = 14;
constexpr int kVerticalPadding = 9;
constexpr int kRowGap = 2;
constexpr int kColumnGap = 9;
constexpr int kRowHeight = 32;
constexpr double kRadius = 9;
} // namespace

FormCard::FormCard(QWidget* parent) : QWidget(parent), m_grid(new QGridLayout(this)) {
  m_grid->setContentsMargins(kHorizontalPadding, kVerticalPadding, kHorizontalPadding, kVerticalPadding);
  m_grid->setHorizontalSpacing(kColumnGap);
  m_grid->setVerticalSpacing(kRowGap);
  m_grid->setColumnStretch(1, 1);
}

void FormCard::addRow(const QString& label, QWidget* control, QWidget* companion) {
  auto* words = new QLabel(label, this);
  words->setBuddy(control);
  words->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_labels.push_back(words);
  m_grid->addWidget(words, m_grid->rowCount(), 0);
  placeControl(control, companion);
}

void FormCard::addRow(QWidget* control, QWidget* companion) {
  // An empty label, because the grid leaves out the gap beside an empty column.
  m_grid->addWidget(new QLabel(this), m_grid->rowCount(), 0);
  placeControl(control, companion);
}

void FormCard::placeControl(QWidget* control, QWidget* companion) {
  const int row = m_grid->rowCount() - 1;
  auto* line = new QHBoxLayout;
  line->setSpacing(4);
  line->addWidget(control, 0, Qt::AlignVCenter);
  if (companion) line->addWidget(companion, 0, Qt::AlignVCenter);
  line->addStretch(1);
  m_grid->addLayout(line, row, 1);
  m_grid->setRowMinimumHeight(row, kRowHeight);
}

int FormCard::widestLabel() const {
  int widest = 0;
  for (const QLabel* label : m_labels)
    widest = std::max(widest, label->sizeHint().width());
  return widest;
}

void FormCard::setLabelWidth(int width) {
  m_grid->setColumnMinimumWidth(0, width);
}

void FormCard::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor line = palette().color(QPalette::Mid);
  line.setAlpha(line.alpha() / 2);
  painter.setPen(QPen(line, 1));
  painter.setBrush(palette().alternateBase());
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

} // namespace orbel::qt
