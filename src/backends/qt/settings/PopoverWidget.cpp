#include "backends/qt/settings/PopoverWidget.h"

#include "backends/qt/windows/DisplayServer.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace orbel::qt {

namespace {
constexpr int kArrowLength = 8;
constexpr int kArrowHeight = 18;
constexpr int kPadding = 10;
constexpr int kGap = 2; // between views
constexpr double kRadius = 10;
constexpr int kScreenGap = 6;
} // namespace

PopoverWidget::PopoverWidget(const DisplayServer& display, RunLoop& runLoop, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint), m_display(display),
      m_runLoop(runLoop) {
  setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_WindowPropagation); // the colours of the window it belongs to
  // The click that closes it is not for the control beneath, which would open it again.
  setAttribute(Qt::WA_NoMouseReplay);
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(kArrowLength + kPadding, kPadding, kArrowLength + kPadding, kPadding);
  grid->setSpacing(kGap);
  grid->setSizeConstraint(QLayout::SetFixedSize);
}

void PopoverWidget::setContent(std::vector<HostedView> views, int columns) {
  for (ViewHost* host : std::exchange(m_hosts, {})) {
    // Perhaps one of them is being clicked.
    host->hide();
    layout()->removeWidget(host);
    host->deleteLater();
  }
  m_columns = std::max(1, columns);
  auto& grid = static_cast<QGridLayout&>(*layout());
  for (HostedView& view : views) {
    const int index = static_cast<int>(m_hosts.size());
    m_hosts.push_back(new ViewHost(std::move(view), m_runLoop, this));
    grid.addWidget(m_hosts.back(), index / m_columns, index % m_columns);
  }
}

void PopoverWidget::showBeside(const QWidget& control) {
  adjustSize();
  const QRect anchor(control.mapToGlobal(QPoint(0, 0)), control.size());
  const QRect screen = control.screen()->availableGeometry();
  m_isRightOfControl = anchor.right() + 1 + width() <= screen.right() + 1 - kScreenGap;
  const int x = m_isRightOfControl ? anchor.right() + 1 : anchor.left() - width();
  const int y = std::clamp(anchor.center().y() - height() / 2, screen.top() + kScreenGap,
                           std::max(screen.top() + kScreenGap, screen.bottom() - kScreenGap - height()));
  const double furthest = height() - kRadius - kArrowHeight / 2.0;
  m_arrowY = std::clamp(anchor.center().y() + 0.5 - y, kRadius + kArrowHeight / 2.0, furthest);
  move(x, y);
  // Without a compositor what is clear would be black.
  if (!m_display.isCompositing()) {
    setMask(QRegion(outline().toFillPolygon().toPolygon()));
  } else {
    clearMask();
  }
  show();
  focusCurrent();
}

void PopoverWidget::focusCurrent() {
  auto current = std::find_if(m_hosts.begin(), m_hosts.end(),
                              [](const ViewHost* host) { return host->hosted().isCurrent; });
  if (current == m_hosts.end()) current = m_hosts.begin();
  if (current != m_hosts.end() && (*current)->focusPolicy() != Qt::NoFocus)
    (*current)->setFocus(Qt::PopupFocusReason);
}

QRectF PopoverWidget::body() const {
  return QRectF(rect()).adjusted(kArrowLength + 0.5, 0.5, -kArrowLength - 0.5, -0.5);
}

QPainterPath PopoverWidget::outline() const {
  const QRectF inner = body();
  QPainterPath path;
  path.addRoundedRect(inner, kRadius, kRadius);
  const double edge = m_isRightOfControl ? inner.left() : inner.right();
  const double out = m_isRightOfControl ? -1 : 1;
  const double half = kArrowHeight / 2.0;
  QPainterPath arrow;
  arrow.moveTo(edge - out, m_arrowY - half);
  arrow.lineTo(edge, m_arrowY - half);
  arrow.cubicTo(edge, m_arrowY - half * 0.45, edge + out * kArrowLength, m_arrowY - half * 0.28,
                edge + out * kArrowLength, m_arrowY);
  arrow.cubicTo(edge + out * kArrowLength, m_arrowY + half * 0.28, edge, m_arrowY + half * 0.45, edge,
                m_arrowY + half);
  arrow.lineTo(edge - out, m_arrowY + half);
  arrow.closeSubpath();
  return path.united(arrow);
}

void PopoverWidget::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  // Where nothing can be clear, the edge must not mix with the black beneath.
  if (!m_display.isCompositing()) painter.fillRect(rect(), palette().base());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  painter.setBrush(palette().base());
  painter.drawPath(outline());
}

void PopoverWidget::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  // A copy, because it may end this object's owner.
  if (const auto didHide = m_didHide; didHide && !event->spontaneous()) didHide();
}

// The arrow keys walk through the views as they stand.
void PopoverWidget::keyPressEvent(QKeyEvent* event) {
  const auto focused = std::find(m_hosts.begin(), m_hosts.end(), focusWidget());
  int step = 0;
  if (event->key() == Qt::Key_Right) step = 1;
  if (event->key() == Qt::Key_Left) step = -1;
  if (event->key() == Qt::Key_Down) step = m_columns;
  if (event->key() == Qt::Key_Up) step = -m_columns;
  if (step == 0 || focused == m_hosts.end()) {
    QWidget::keyPressEvent(event);
    return;
  }
  const auto target = focused - m_hosts.begin() + step;
  if (target >= 0 && target < static_cast<std::ptrdiff_t>(m_hosts.size()))
    m_hosts[static_cast<std::size_t>(target)]->setFocus(Qt::TabFocusReason);
}

} // namespace orbel::qt
