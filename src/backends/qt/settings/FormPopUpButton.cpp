#include "backends/qt/settings/FormPopUpButton.h"

#include "backends/qt/settings/ControlPainting.h"

#include <QAbstractItemView>
#include <QListView>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>

namespace orbel::qt {

namespace {
constexpr int kTextInset = 10;
constexpr int kArrowRoom = 26;
constexpr int kHeight = 26; // of the body
constexpr int kEntryHeight = 26;
constexpr double kArrowWidth = 1.6;
constexpr int kListRadius = 8;

QString cssColor(const QColor& color) {
  return QStringLiteral("rgba(%1,%2,%3,%4)")
      .arg(color.red())
      .arg(color.green())
      .arg(color.blue())
      .arg(color.alpha());
}

// Two small arrows, up and down: there is more above and below.
void drawArrows(QPainter& painter, const QRectF& body, const QColor& color) {
  const double x = body.right() - kArrowRoom / 2.0;
  const double y = body.center().y();
  QPainterPath arrows;
  for (const double direction : {-1.0, 1.0}) {
    arrows.moveTo(x - 3.2, y + direction * 2.4);
    arrows.lineTo(x, y + direction * 5.6);
    arrows.lineTo(x + 3.2, y + direction * 2.4);
  }
  painter.setPen(QPen(color, kArrowWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
  painter.drawPath(arrows);
}
} // namespace

FormPopUpButton::FormPopUpButton(QWidget* parent) : QComboBox(parent) {
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  // A list of its own, which the style does not turn into a menu that covers the field.
  setView(new QListView(this));
  styleList();
}

void FormPopUpButton::setTranslucentList(bool translucent) {
  m_translucentList = translucent;
  QWidget* window = view()->window();
  window->setWindowFlag(Qt::FramelessWindowHint);
  window->setWindowFlag(Qt::NoDropShadowWindowHint);
  window->setAttribute(Qt::WA_TranslucentBackground, translucent);
  styleList();
}

void FormPopUpButton::addEntry(const QString& title, std::int64_t tag) {
  addItem(title, QVariant::fromValue<qlonglong>(tag));
}

void FormPopUpButton::selectEntryWithTag(std::int64_t tag) {
  const int index = findData(QVariant::fromValue<qlonglong>(tag));
  if (index >= 0) setCurrentIndex(index);
}

std::int64_t FormPopUpButton::selectedTag() const {
  return currentData().toLongLong();
}

QSize FormPopUpButton::sizeHint() const {
  int widest = 0;
  for (int index = 0; index < count(); ++index)
    widest = std::max(widest, fontMetrics().horizontalAdvance(itemText(index)));
  constexpr int kMargins = 2 * ControlPainting::kMargin;
  return {widest + kTextInset + kArrowRoom + kMargins + 4,
          std::max(kHeight, fontMetrics().height() + 8) + kMargins};
}

void FormPopUpButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF body = ControlPainting::body(*this);
  const bool isOpen = view() && view()->isVisible();
  ControlPainting::drawField(painter, body, ControlPainting::kRadius,
                             ControlPainting::fieldColor(*this, isOpen), palette());
  drawArrows(painter, body, palette().color(QPalette::PlaceholderText));
  const QRectF words = body.adjusted(kTextInset, 0, -kArrowRoom, 0);
  painter.setPen(palette().color(QPalette::ButtonText));
  painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                   fontMetrics().elidedText(currentText(), Qt::ElideRight, static_cast<int>(words.width())));
  if (hasFocus()) ControlPainting::drawRing(painter, body, ControlPainting::kRadius, palette());
}

void FormPopUpButton::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void FormPopUpButton::changeEvent(QEvent* event) {
  QComboBox::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) styleList();
}

void FormPopUpButton::styleList() {
  const QPalette colors = palette();
  // The list's window has a frame of Qt's style, which would show behind the round corners.
  view()->window()->setStyleSheet(
      QStringLiteral("QComboBoxPrivateContainer { border: 0; background: transparent; }"));
  view()->setStyleSheet(
      QStringLiteral("QListView { background: %1; color: %2; border: 1px solid %3; border-radius: %7px; "
                     "padding: 3px; outline: 0; }"
                     "QListView::item { min-height: %6px; padding-left: 6px; border-radius: 5px; }"
                     "QListView::item:selected { background: %4; color: %5; }")
          .arg(cssColor(colors.color(QPalette::Base)), cssColor(colors.color(QPalette::Text)),
               cssColor(colors.color(QPalette::Mid)), cssColor(colors.color(QPalette::Highlight)),
               cssColor(colors.color(QPalette::HighlightedText)))
          .arg(kEntryHeight)
          .arg(m_translucentList ? kListRadius : 0));
}

} // namespace orbel::qt
