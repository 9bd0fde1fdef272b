// The drawing calls that a view may make. Coordinates are points of the drawing view with the y axis up; the
// backend's canvas flips once, anti-aliases, and rounds image rectangles to device pixels. Strokes are
// centred on their path.
#pragma once

#include "foundation/Color.h"
#include "foundation/Geometry.h"
#include "scene/Image.h"

#include <string>

namespace orbel {

enum class TextAlignment { left, center, right };

struct TextStyle {
  double pointSize = 13; // of the system's interface font
  Color color = Color::white(0);
  TextAlignment alignment = TextAlignment::center;
};

class Canvas {
public:
  virtual ~Canvas() = default;

  virtual void save() = 0; // origin and opacity
  virtual void restore() = 0;
  virtual void translate(Point offset) = 0;
  virtual void multiplyOpacity(double factor) = 0; // 0 to 1, of everything drawn until the matching restore

  virtual void fillRect(const Rect& rect, const Color& color) = 0;
  virtual void fillEllipse(const Rect& rect, const Color& color) = 0;
  virtual void strokeEllipse(const Rect& rect, const Color& color, double lineWidth) = 0;
  // Radii larger than half a side are cut to it.
  virtual void fillRoundedRect(const Rect& rect, double radius, const Color& color) = 0;
  virtual void strokeRoundedRect(const Rect& rect, double radius, const Color& color, double lineWidth) = 0;
  virtual void strokeLine(Point from, Point to, const Color& color, double lineWidth) = 0;

  virtual void drawImage(const Image& image, const Rect& rect) = 0;
  // The image's opaque parts filled with one colour: its silhouette.
  virtual void drawSilhouette(const Image& image, const Rect& rect, const Color& color) = 0;
  // One line, centred vertically, cut with an ellipsis where it is too wide.
  virtual void drawText(const std::string& text, const Rect& rect, const TextStyle& style) = 0;

  // Device pixels a point.
  virtual double scale() const = 0;
};

} // namespace orbel
