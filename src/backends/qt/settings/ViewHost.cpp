#include "backends/qt/settings/ViewHost.h"

#include "backends/qt/settings/ViewHostAccessible.h"

#include <QCursor>
#include <QEnterEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orbel::qt {

namespace {
constexpr double kRingWidth = 2;

std::optional<PointerButton> buttonOf(const QMouseEvent& event) {
  if (event.button() == Qt::LeftButton) return PointerButton::primary;
  if (event.button() == Qt::RightButton) return PointerButton::secondary;
  return std::nullopt;
}
} // namespace

// The few things here that move do so for the eye's pleasure alone: without them nothing is lost.
ViewHost::ViewHost(HostedView hosted, RunLoop& runLoop, QWidget* parent)
    : QWidget(parent), m_hosted(std::move(hosted)), m_views(viewWindow(), runLoop, true) {
  ViewHostAccessible::install();
  m_hosted.view->setFrame(Rect({}, viewSize()));
  m_views.contentView().addSubview(m_hosted.view);
  setAccessibleName(QString::fromStdString(m_hosted.accessibleName));
  setMouseTracking(true);
  setFocusPolicy(m_hosted.press ? Qt::StrongFocus : Qt::NoFocus);
  setFixedSize(sizeHint());
}

ViewHost::~ViewHost() {
  // The view may live on with whoever made it; the tree must not.
  m_hosted.view->removeFromSuperview();
}

void ViewHost::press() {
  // A copy, because it may well end this widget.
  if (const auto press = m_hosted.press) press();
}

QString ViewHost::accessibleValue() const {
  return m_hosted.accessibleValue ? QString::fromStdString(m_hosted.accessibleValue()) : QString();
}

QSize ViewHost::sizeHint() const {
  return {static_cast<int>(std::ceil(viewSize().width)) + 2 * kRingMargin,
          static_cast<int>(std::ceil(viewSize().height)) + 2 * kRingMargin};
}

bool ViewHost::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto& help = static_cast<const QHelpEvent&>(*event);
  const std::string text = m_hosted.toolTipAt ? m_hosted.toolTipAt(viewPoint(help.pos())) : std::string();
  if (text.empty()) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(help.globalPos(), QString::fromStdString(text), this);
  }
  return true;
}

void ViewHost::paintEvent(QPaintEvent*) {
  // Drawn on a picture of its own: the canvas wants device pixels, and what the view draws ends at
  // its bounds.
  const double ratio = devicePixelRatioF();
  const QSize pixels(static_cast<int>(std::lround(viewSize().width * ratio)),
                     static_cast<int>(std::lround(viewSize().height * ratio)));
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  {
    QPainter onImage(&image);
    QtCanvas canvas(onImage, pixels, viewSize(), m_scratch);
    m_views.tree().paint(canvas, Rect({}, viewSize()));
  }
  image.setDevicePixelRatio(ratio);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.drawImage(QPointF(kRingMargin, kRingMargin), image);
  if (!hasFocus()) return;
  const QRectF ring =
      QRectF(rect()).adjusted(kRingWidth / 2, kRingWidth / 2, -kRingWidth / 2, -kRingWidth / 2);
  painter.setPen(QPen(palette().highlight(), kRingWidth));
  painter.drawRoundedRect(ring, ring.height() / 2, ring.height() / 2);
}

void ViewHost::mousePressEvent(QMouseEvent* event) {
  if (const auto button = buttonOf(*event))
    m_views.tree().pointerPressed(*button, mouseEvent(event->position(), event->buttons()));
}

void ViewHost::mouseMoveEvent(QMouseEvent* event) {
  m_views.tree().pointerMoved(mouseEvent(event->position(), event->buttons()));
}

void ViewHost::mouseReleaseEvent(QMouseEvent* event) {
  if (const auto button = buttonOf(*event))
    m_views.tree().pointerReleased(*button, mouseEvent(event->position(), event->buttons()));
}

// These two bring no buttons of their own.
void ViewHost::enterEvent(QEnterEvent* event) {
  m_views.tree().pointerMoved(mouseEvent(event->position(), QGuiApplication::mouseButtons()));
}

void ViewHost::leaveEvent(QEvent*) {
  const Point outside{-1, -1};
  m_views.tree().pointerExited({outside, 0, QGuiApplication::mouseButtons().testFlag(Qt::LeftButton)});
}

void ViewHost::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool presses = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  if (!presses || modifiers != Qt::NoModifier || !m_hosted.press) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (!event->isAutoRepeat()) press();
}

Point ViewHost::viewPoint(QPointF position) const {
  return {position.x() - kRingMargin, viewSize().height - (position.y() - kRingMargin)};
}

// The view's bounds are all that the tree knows of the widget.
ViewTreeAdapter::Window ViewHost::viewWindow() {
  return {
      .frame = [this] { return Rect({}, viewSize()); },
      .needsDisplay = [this](const Rect&) { update(); },
      .pointerLocation = [this] { return viewPoint(mapFromGlobal(QCursor::pos())); },
      .backingScale = [this] { return devicePixelRatioF(); },
  };
}

} // namespace orbel::qt
