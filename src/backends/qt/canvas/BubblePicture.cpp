#include "backends/qt/canvas/BubblePicture.h"

#include "backends/qt/canvas/QtCanvas.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace orbel::qt {

namespace {
constexpr double kTextSize = 13;
constexpr double kHorizontalPadding = 10;
constexpr double kVerticalPadding = 5;
constexpr double kLongestText = 360; // a longer one is cut with an ellipsis

const QColor kBody(252, 252, 252, 250);
const QColor kHairline(0, 0, 0, 46);
const QColor kHardHairline(176, 176, 178);
const QColor kText(0, 0, 0, 216);

constexpr double kShadowBlur = 9;
constexpr double kShadowDrop = 2.5;
constexpr double kShadowAlpha = 0.30;

// Body and arrow in one outline, y down, the body's top-left corner at the margins.
QPainterPath shape(const BubbleLayout& layout) {
  const double top = BubblePicture::kMargin + (layout.pointsUp ? BubbleLayout::kArrowHeight : 0);
  const QRectF body(BubblePicture::kMargin, top, layout.body.size.width, layout.body.size.height);
  QPainterPath path;
  path.addRoundedRect(body, BubbleLayout::kCornerRadius, BubbleLayout::kCornerRadius);

  // The sides of the arrow are curves that leave the body's edge flat and meet in a slightly blunted tip.
  const double middle = body.left() + layout.arrow;
  const double edge = layout.pointsUp ? body.top() : body.bottom();
  const double out = layout.pointsUp ? -1 : 1;
  const double half = BubbleLayout::kArrowWidth / 2;
  const double tip = edge + out * BubbleLayout::kArrowHeight;
  QPainterPath arrow;
  arrow.moveTo(middle - half, edge - out);
  arrow.lineTo(middle - half, edge);
  arrow.cubicTo(middle - half * 0.45, edge, middle - half * 0.28, tip, middle, tip);
  arrow.cubicTo(middle + half * 0.28, tip, middle + half * 0.45, edge, middle + half, edge);
  arrow.lineTo(middle + half, edge - out);
  arrow.closeSubpath();
  return path.united(arrow);
}

// Outlines of growing width laid over each other fall off like a blurred shape, at a fraction of its price.
void drawShadow(QPainter& painter, const QPainterPath& path) {
  constexpr int kSteps = 12;
  painter.save();
  painter.translate(0, kShadowDrop);
  for (int step = kSteps; step >= 1; --step) {
    const double distance = kShadowBlur * step / kSteps;
    const double weight = 1 - static_cast<double>(step - 1) / kSteps;
    painter.setPen(QPen(QColor::fromRgbF(0, 0, 0, static_cast<float>(kShadowAlpha * 2 * weight / kSteps)),
                        2 * distance, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
  }
  painter.restore();
}
} // namespace

Size BubblePicture::bodySize(const QString& text) {
  const QFontMetricsF metrics(QtCanvas::interfaceFont(kTextSize));
  const double width = std::ceil(std::min(metrics.horizontalAdvance(text), kLongestText));
  return {
      std::max(width + 2 * kHorizontalPadding, BubbleLayout::kArrowWidth + 2 * BubbleLayout::kCornerRadius),
      std::ceil(metrics.height()) + 2 * kVerticalPadding};
}

QImage BubblePicture::draw(const QString& text, const BubbleLayout& layout, double scale, Edge edge) {
  const Size body = layout.body.size;
  QImage picture(
      static_cast<int>(std::lround((body.width + 2 * kMargin) * scale)),
      static_cast<int>(std::lround((body.height + BubbleLayout::kArrowHeight + 2 * kMargin) * scale)),
      QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  const bool soft = edge == Edge::soft;
  painter.setRenderHint(QPainter::Antialiasing, soft);
  painter.scale(scale, scale);
  const QPainterPath path = shape(layout);
  if (soft) drawShadow(painter, path);
  // The body replaces the shadow below it, which would show through as grey.
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.fillPath(path, Qt::black);
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  painter.setBrush(soft ? kBody : QColor(kBody.rgb()));
  painter.setPen(QPen(soft ? kHairline : kHardHairline, soft ? 0.5 : 1));
  painter.drawPath(path);

  painter.resetTransform();
  const double top = kMargin + (layout.pointsUp ? BubbleLayout::kArrowHeight : 0);
  const QRectF line(kMargin * scale, top * scale, body.width * scale, body.height * scale);
  const QFont font = QtCanvas::interfaceFont(kTextSize * scale);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setFont(font);
  painter.setPen(kText);
  painter.drawText(
      line, Qt::AlignCenter | Qt::TextSingleLine,
      QFontMetricsF(font).elidedText(text, Qt::ElideRight, (body.width - kHorizontalPadding) * scale));
  return picture;
}

std::vector<common::DeviceRect> BubblePicture::outline(const QImage& picture) {
  std::vector<common::DeviceRect> rows;
  for (int y = 0; y < picture.height(); ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    for (int x = 0; x < picture.width();) {
      const int start = x;
      while (x < picture.width() && qAlpha(row[x]) > 0)
        ++x;
      if (x > start) rows.push_back({start, y, x - start, 1});
      while (x < picture.width() && qAlpha(row[x]) == 0)
        ++x;
    }
  }
  return rows;
}

} // namespace orbel::qt
