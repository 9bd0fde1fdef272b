#include "backends/qt/settings/FrostedWindow.h"

#include "backends/qt/settings/SettingsPalette.h"
#include "backends/qt/windows/DisplayServer.h"
#include "backends/qt/windows/ScreenSpace.h"

#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>

#include <cmath>
#include <vector>

namespace orbel::qt {

namespace {
// Of the glass over a live blur, where what is behind moves, and over a screen that is as sharp as ever.
constexpr int kAlphaOverBlur = 190;
constexpr int kAlphaOverSharp = 246;
// Around the glass, without which light glass would melt into a light window.
const QColor kHairline(0, 0, 0, 64);

std::vector<common::DeviceRect> deviceRows(const QRegion& region, double ratio) {
  std::vector<common::DeviceRect> rows;
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

FrostedWindow::FrostedWindow(DisplayServer& display)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint), m_display(display) {
  if (display.offersScreenPictures()) {
    setAttribute(Qt::WA_TranslucentBackground);
    m_frost.emplace(display);
  }
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

bool FrostedWindow::isOpaque() const {
  return !isGlassPossible() || !m_display.isCompositing();
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
    if (isOpaque()) painter.fillRect(rect(), palette().color(QPalette::Window));
    if (m_glass) paintGlass(painter);
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

void FrostedWindow::paintGlass(QPainter& painter) const {
  painter.save();
  const QPainterPath shape = outline();
  if (m_frost && !m_frost->isEmpty()) {
    // On a picture of its own whose corners are taken away after: clipping to a path has hard edges.
    QImage frost(size() * devicePixelRatioF(), QImage::Format_ARGB32_Premultiplied);
    frost.setDevicePixelRatio(devicePixelRatioF());
    {
      QPainter onFrost(&frost);
      m_frost->paint(onFrost, QRectF(rect()), ScreenSpace::toDevice(ScreenSpace::fromQt(geometry())),
                     m_glass->material);
      QPainterPath corners;
      corners.addRect(QRectF(rect()));
      onFrost.setRenderHint(QPainter::Antialiasing);
      onFrost.setCompositionMode(QPainter::CompositionMode_DestinationOut);
      onFrost.fillPath(corners.subtracted(shape), Qt::black);
    }
    painter.drawImage(0, 0, frost);
  } else {
    QColor glass = palette().color(QPalette::Window);
    if (!isOpaque()) glass.setAlpha(m_display.offersLiveBlur() ? kAlphaOverBlur : kAlphaOverSharp);
    painter.fillPath(shape, glass);
  }
  painter.restore();
}

// Without a compositor nothing can be translucent, and the corners are cut off instead.
void FrostedWindow::shapeWindow() {
  if (!m_glass) return;
  const QRegion region(outline().toFillPolygon().toPolygon());
  const auto rows = deviceRows(region, devicePixelRatioF());
  if (!m_display.isCompositing()) {
    m_display.setOutline(winId(), rows);
  } else {
    m_display.setOutline(winId(), std::nullopt);
  }
  m_display.setBlur(winId(), rows);
  m_display.flush();
}

void FrostedWindow::paintEvent(QPaintEvent* event) {
  if (m_background.isNull() || m_background.devicePixelRatio() != devicePixelRatioF()) drawBackground();
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawPixmap(0, 0, m_background);
}

void FrostedWindow::moveEvent(QMoveEvent* event) {
  QWidget::moveEvent(event);
  // Another part of the screen is behind it.
  if (m_frost && !m_frost->isEmpty()) repaintBackground();
}

void FrostedWindow::resizeEvent(QResizeEvent*) {
  if (m_delegate) m_delegate->windowDidResize();
  if (isVisible()) shapeWindow();
  repaintBackground();
}

void FrostedWindow::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) {
    m_display.disableShadow(winId());
    if (m_frost && !m_display.offersLiveBlur()) m_frost->take(devicePixelRatioF());
    shapeWindow();
    repaintBackground();
  }
  QWidget::showEvent(event);
}

void FrostedWindow::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  m_drags = false;
  if (event->spontaneous()) return;
  if (m_frost) m_frost->release();
  if (m_didHide) m_didHide();
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

} // namespace orbel::qt
