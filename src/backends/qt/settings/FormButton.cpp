#include "backends/qt/settings/FormButton.h"

#include "backends/qt/settings/ControlPainting.h"

#include <QFont>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace orbel::qt {

namespace {
constexpr int kFieldInset = 14; // beside the words
constexpr int kFieldHeight = 26;
constexpr int kDiscSide = 20;
} // namespace

FormButton::FormButton(Shape shape, const QString& text, QWidget* parent)
    : QPushButton(text, parent), m_shape(shape) {
  setAttribute(Qt::WA_Hover);
  setAutoDefault(true);
  if (shape == Shape::link) setCursor(Qt::PointingHandCursor);
  if (shape == Shape::disc) {
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
  }
}

QSize FormButton::sizeHint() const {
  constexpr int kMargins = 2 * ControlPainting::kMargin;
  const QSize words = fontMetrics().size(Qt::TextShowMnemonic, text());
  switch (m_shape) {
  case Shape::field:
    return {words.width() + 2 * kFieldInset + kMargins,
            std::max(kFieldHeight, words.height() + 8) + kMargins};
  case Shape::disc:
    return {kDiscSide + kMargins, kDiscSide + kMargins};
  case Shape::link:
    return {words.width() + kMargins, words.height() + kMargins};
  }
  return {};
}

void FormButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF body = ControlPainting::body(*this);
  const double radius = m_shape == Shape::disc ? body.height() / 2 : ControlPainting::kRadius;
  if (m_shape != Shape::link) {
    ControlPainting::drawField(painter, body, radius, ControlPainting::fieldColor(*this, isDown()),
                               palette());
  }
  QPalette::ColorRole role = QPalette::ButtonText;
  if (m_shape == Shape::disc) role = QPalette::PlaceholderText;
  if (m_shape == Shape::link) {
    role = QPalette::Link;
    QFont words = font();
    words.setUnderline(underMouse());
    painter.setFont(words);
  }
  const bool showsMnemonic = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
  style()->drawItemText(&painter, body.toRect(),
                        Qt::AlignCenter | (showsMnemonic ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                        palette(), isEnabled(), text(), role);
  if (hasFocus()) ControlPainting::drawRing(painter, body, radius, palette());
}

} // namespace orbel::qt
