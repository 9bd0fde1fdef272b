#include "backends/qt/settings/FrostedWindow.h"

#include "backends/qt/DisplayServer.h"
#include "backends/qt/settings/SettingsPalette.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>

#include <cmath>
#include <vector>

namespace orbel {

namespace {
// Of the glass over a live blur, and over a screen that is as sharp as ever, where letters must not be
// disturbed by what is behind them.
constexpr int kAlphaOverBlur = 196;
constexpr int kAlphaOverSharp = 244;
// Around the glass, without which light glass would melt into a light window.
const QColor kHairline(0, 0, 0, 64);

std::vector<DeviceRect> deviceRows(const QRegion& region, double ratio) {
  std::vector<DeviceRect> rows;
  for (const QRect& rect : region) {
    const int left = static_cast<int>(std::lround(rect.x() * ratio));
    const int top = static_cast<int>(std::lround(rect.y() * ratio));
    const int right = static_cast<int>(std::lround((rect.x() + rect.width()) * ratio));
    const int bottom = static_cast<int>(std::lround((rect.y() + rect.height()) * ratio));
    rows.push_back({left, top, right - left, bottom - top});
  }
  return rows;
}
} // namespace

FrostedWindow::FrostedWindow(DisplayServer* display)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), m_display(display) {
  if (isGlassPossible()) setAttribute(Qt::WA_TranslucentBackground);
  setAttribute(Qt::WA_QuitOnClose, false);
  setPalette(SettingsPalette::of(m_colorScheme));
}

FrostedWindow::~FrostedWindow() = default;

void FrostedWindow::setGlass(BackdropMaterial material, double inset, double cornerRadius) {
  m_glass = Glass{material, inset, cornerRadius};
  if (isVisible()) shapeWindow();
  repaintBackground();
}

void FrostedWindow::setColorScheme(ColorScheme scheme) {
  if (m_colorScheme == scheme) return;
  m_colorScheme = scheme;
  setPalette(SettingsPalette::of(scheme));
  repaintBackground();
  if (m_delegate) m_delegate->colorSchemeDidChange();
}

void FrostedWindow::repaintBackground() {
  m_background = {};
  update();
}

FrostedWindow::Behind FrostedWindow::behind() const {
  if (!m_display || !m_display->isCompositing()) return Behind::nothing;
  return m_display->blur().isOffered() ? Behind::blurred : Behind::asItIs;
}

QPainterPath FrostedWindow::outline() const {
  QPainterPath path;
  const double inset = m_glass ? m_glass->inset : 0;
  const double radius = m_glass ? m_glass->cornerRadius : 0;
  path.addRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
  return path;
}

void FrostedWindow::drawBackground() {
  const double ratio = devicePixelRatioF();
  const QSize pixels(static_cast<int>(std::lround(width() * ratio)),
                     static_cast<int>(std::lround(height() * ratio)));
  QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor glass = palette().color(QPalette::Window);
    switch (m_glass ? behind() : Behind::nothing) {
    case Behind::nothing:
      painter.fillRect(rect(), glass);
      break;
    case Behind::blurred:
      glass.setAlpha(kAlphaOverBlur);
      painter.fillPath(outline(), glass);
      break;
    case Behind::asItIs:
      glass.setAlpha(kAlphaOverSharp);
      painter.fillPath(outline(), glass);
      break;
    }
    if (m_glass) painter.strokePath(outline(), QPen(kHairline, m_glass->inset));
  }
  if (m_delegate) {
    image.setDevicePixelRatio(1);
    QPainter painter(&image);
    const Size size{static_cast<double>(width()), static_cast<double>(height())};
    QtCanvas canvas(painter, pixels, size, m_scratch);
    m_delegate->paint(canvas, Rect({}, size));
  }
  m_background = QPixmap::fromImage(std::move(image));
  m_background.setDevicePixelRatio(ratio);
}

// Without a compositor nothing can be translucent, and the corners are cut off instead.
void FrostedWindow::shapeWindow() {
  if (!m_display || !m_glass) return;
  const QRegion region(outline().toFillPolygon().toPolygon());
  const auto window = static_cast<xcb_window_t>(winId());
  const auto rows = deviceRows(region, devicePixelRatioF());
  if (behind() == Behind::nothing) {
    m_display->shape().setBounding(window, rows);
  } else {
    m_display->shape().clearBounding(window);
  }
  m_display->blur().set(window, rows);
  m_display->flush();
}

void FrostedWindow::paintEvent(QPaintEvent* event) {
  if (m_background.isNull() || m_background.devicePixelRatio() != devicePixelRatioF()) drawBackground();
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawPixmap(0, 0, m_background);
}

void FrostedWindow::resizeEvent(QResizeEvent*) {
  if (m_delegate) m_delegate->windowDidResize();
  if (isVisible()) shapeWindow();
  repaintBackground();
}

void FrostedWindow::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) {
    if (m_display) m_display->disableShadow(winId());
    shapeWindow();
    repaintBackground();
  }
  QWidget::showEvent(event);
}

void FrostedWindow::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  m_drags = false;
  if (!event->spontaneous() && m_didHide) m_didHide();
}

void FrostedWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  m_drags = true;
  if (m_delegate) m_delegate->backgroundPressed(mouseEvent(*event));
}

void FrostedWindow::mouseMoveEvent(QMouseEvent* event) {
  if (m_drags && m_delegate) m_delegate->backgroundDragged(mouseEvent(*event));
}

void FrostedWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_drags = false;
}

MouseEvent FrostedWindow::mouseEvent(const QMouseEvent& event) const {
  return {{event.position().x(), height() - event.position().y()}};
}

} // namespace orbel
