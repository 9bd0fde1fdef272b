#include "backends/qt/canvas/QtCanvas.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>

namespace orbel::qt {

namespace {
QColor toQt(const Color& color) {
  const auto cut = [](double component) { return static_cast<float>(std::clamp(component, 0.0, 1.0)); };
  return QColor::fromRgbF(cut(color.red), cut(color.green), cut(color.blue), cut(color.alpha));
}

// The pixel premultiplied by an alpha of 0 to 255, two channels at a time.
std::uint32_t multiplied(std::uint32_t pixel, std::uint32_t alpha) {
  constexpr std::uint32_t kEven = 0x00ff00ff;
  std::uint32_t even = (pixel & kEven) * alpha;
  even = ((even + ((even >> 8) & kEven) + 0x00800080) >> 8) & kEven;
  std::uint32_t odd = ((pixel >> 8) & kEven) * alpha;
  odd = (odd + ((odd >> 8) & kEven) + 0x00800080) & ~kEven;
  return even | odd;
}
} // namespace

QtCanvas::QtCanvas(QPainter& painter, QSize pixelSize, Size pointSize, Scratch& scratch)
    : m_painter(painter), m_scaleX(pointSize.width > 0 ? pixelSize.width() / pointSize.width : 1),
      m_scaleY(pointSize.height > 0 ? pixelSize.height() / pointSize.height : 1), m_height(pointSize.height),
      m_clip(QPoint(), pixelSize), m_scratch(scratch) {
  m_painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                           QPainter::SmoothPixmapTransform);
  if (m_painter.hasClipping()) m_clip &= m_painter.clipBoundingRect().toAlignedRect();
  m_scratch.states.clear();
}

void QtCanvas::save() {
  m_scratch.states.push_back(m_state);
}

void QtCanvas::restore() {
  if (m_scratch.states.empty()) return;
  m_state = m_scratch.states.back();
  m_scratch.states.pop_back();
  m_painter.setOpacity(m_state.opacity);
}

void QtCanvas::translate(Point offset) {
  m_state.origin.x += offset.x;
  m_state.origin.y += offset.y;
}

void QtCanvas::multiplyOpacity(double factor) {
  m_state.opacity *= std::clamp(factor, 0.0, 1.0);
  m_painter.setOpacity(m_state.opacity);
}

void QtCanvas::fillRect(const Rect& rect, const Color& color) {
  m_painter.fillRect(deviceRect(rect), toQt(color));
}

void QtCanvas::fillEllipse(const Rect& rect, const Color& color) {
  setFill(color);
  m_painter.drawEllipse(deviceRect(rect));
}

void QtCanvas::strokeEllipse(const Rect& rect, const Color& color, double lineWidth) {
  setStroke(color, lineWidth);
  m_painter.drawEllipse(deviceRect(rect));
}

void QtCanvas::fillRoundedRect(const Rect& rect, double radius, const Color& color) {
  setFill(color);
  drawRounded(rect, radius);
}

void QtCanvas::strokeRoundedRect(const Rect& rect, double radius, const Color& color, double lineWidth) {
  setStroke(color, lineWidth);
  drawRounded(rect, radius);
}

void QtCanvas::strokeLine(Point from, Point to, const Color& color, double lineWidth) {
  setStroke(color, lineWidth);
  m_painter.drawLine(devicePoint(from), devicePoint(to));
}

void QtCanvas::drawImage(const Image& image, const Rect& rect) {
  const QRect target = wholePixels(rect);
  if (!isVisible(target)) return;
  const Bitmap& bitmap = image.representation(target.width(), target.height());
  if (bitmap.isEmpty()) return;
  drawPixels(bitmap.pixels.data(), QSize(bitmap.width, bitmap.height), target);
}

void QtCanvas::drawSilhouette(const Image& image, const Rect& rect, const Color& color) {
  const QRect target = wholePixels(rect);
  if (!isVisible(target)) return;
  const Bitmap& bitmap = image.representation(target.width(), target.height());
  if (bitmap.isEmpty()) return;

  const QRgb filling = qPremultiply(toQt(color).rgba());
  auto& pixels = m_scratch.silhouette;
  if (pixels.size() < bitmap.pixels.size()) pixels.resize(bitmap.pixels.size());
  std::transform(bitmap.pixels.begin(), bitmap.pixels.end(), pixels.begin(),
                 [filling](std::uint32_t pixel) { return multiplied(filling, pixel >> 24); });
  drawPixels(pixels.data(), QSize(bitmap.width, bitmap.height), target);
}

void QtCanvas::drawText(const std::string& text, const Rect& rect, const TextStyle& style) {
  const QRectF target = deviceRect(rect);
  const QFont font = interfaceFont(style.pointSize * m_scaleY);
  const QString shown = QFontMetricsF(font, m_painter.device())
                            .elidedText(QString::fromStdString(text), Qt::ElideRight, target.width());
  int alignment = Qt::AlignVCenter | Qt::TextSingleLine;
  switch (style.alignment) {
  case TextAlignment::left:
    alignment |= Qt::AlignLeft;
    break;
  case TextAlignment::center:
    alignment |= Qt::AlignHCenter;
    break;
  case TextAlignment::right:
    alignment |= Qt::AlignRight;
    break;
  }
  m_painter.setFont(font);
  m_painter.setPen(toQt(style.color));
  m_painter.drawText(target, alignment, shown);
}

QFont QtCanvas::interfaceFont(double pixelSize) {
  QFont font = QGuiApplication::font();
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixelSize))));
  return font;
}

QPointF QtCanvas::devicePoint(Point point) const {
  return {(m_state.origin.x + point.x) * m_scaleX, (m_height - m_state.origin.y - point.y) * m_scaleY};
}

QRectF QtCanvas::deviceRect(const Rect& rect) const {
  const QPointF topLeft = devicePoint({rect.minX(), rect.maxY()});
  return {topLeft, QSizeF(rect.size.width * m_scaleX, rect.size.height * m_scaleY)};
}

QRect QtCanvas::wholePixels(const Rect& rect) const {
  const QPointF middle = devicePoint(rect.center());
  const int width = static_cast<int>(std::lround(rect.size.width * m_scaleX));
  const int height = static_cast<int>(std::lround(rect.size.height * m_scaleY));
  return {static_cast<int>(std::lround(middle.x() - width / 2.0)),
          static_cast<int>(std::lround(middle.y() - height / 2.0)), width, height};
}

bool QtCanvas::isVisible(const QRect& rect) const {
  return m_state.opacity > 0 && m_clip.intersects(rect);
}

void QtCanvas::setFill(const Color& color) {
  m_painter.setPen(Qt::NoPen);
  m_painter.setBrush(toQt(color));
}

void QtCanvas::setStroke(const Color& color, double lineWidth) {
  m_painter.setPen(QPen(toQt(color), lineWidth * (m_scaleX + m_scaleY) / 2, Qt::SolidLine, Qt::FlatCap));
  m_painter.setBrush(Qt::NoBrush);
}

void QtCanvas::drawRounded(const Rect& rect, double radius) {
  const double cut = std::max(0.0, std::min({radius, rect.size.width / 2, rect.size.height / 2}));
  m_painter.drawRoundedRect(deviceRect(rect), cut * m_scaleX, cut * m_scaleY);
}

void QtCanvas::drawPixels(const std::uint32_t* pixels, QSize size, const QRect& target) {
  const QImage image(reinterpret_cast<const uchar*>(pixels), size.width(), size.height(),
                     size.width() * static_cast<int>(sizeof(*pixels)), QImage::Format_ARGB32_Premultiplied);
  if (size == target.size()) {
    m_painter.drawImage(target.topLeft(), image);
  } else {
    m_painter.drawImage(target, image);
  }
}

} // namespace orbel::qt
