// The picture of a bubble: a light rounded body with an arrow and one line of text, a hairline and a soft
// shadow. Sizes are points unless said otherwise.
#pragma once

#include "backends/common/DeviceRect.h"
#include "backends/qt/canvas/BubbleLayout.h"
#include "foundation/Geometry.h"

#include <QImage>
#include <QString>
#include <vector>

namespace orbel::qt {

class BubblePicture {
public:
  // Around body and arrow on every side, for the shadow.
  static constexpr double kMargin = 14;

  // Of the body that this text needs.
  static Size bodySize(const QString& text);

  enum class Edge {
    soft, // translucent, with a shadow
    hard, // every pixel is opaque or clear: for a screen without a compositor
  };
  // Body, arrow and margins; body and arrow as the layout says, wherever they stand. Premultiplied ARGB of
  // scale device pixels a point.
  static QImage draw(const QString& text, const BubbleLayout& layout, double scale, Edge edge);

  // The rows of opaque pixels of a picture with hard edges.
  static std::vector<common::DeviceRect> outline(const QImage& picture);
};

} // namespace orbel::qt
