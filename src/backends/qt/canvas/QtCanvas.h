// Draws on a QPainter what views ask for: flips the y axis once, anti-aliases, and keeps images on whole
// device pixels. Made for one painting and destroyed after it; what would be allocated in every frame lives
// in its scratch.
#pragma once

#include "scene/Canvas.h"

#include <QFont>
#include <QPainter>
#include <cstdint>
#include <vector>

namespace orbel::qt {

class QtCanvas : public Canvas {
public:
  struct State {
    Point origin;
    double opacity = 1;
  };
  // Memory that outlives the canvas, so that a frame finds it there.
  struct Scratch {
    std::vector<State> states;
    std::vector<std::uint32_t> silhouette;
  };

  // The painter must address device pixels (no transform, a device pixel ratio of 1) and may be clipped. The
  // canvas spans pointSize over the whole of pixelSize. Painter and scratch outlive the canvas.
  QtCanvas(QPainter& painter, QSize pixelSize, Size pointSize, Scratch& scratch);

  void save() override;
  void restore() override;
  void translate(Point offset) override;
  void multiplyOpacity(double factor) override;

  void fillRect(const Rect& rect, const Color& color) override;
  void fillEllipse(const Rect& rect, const Color& color) override;
  void strokeEllipse(const Rect& rect, const Color& color, double lineWidth) override;
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override;
  void strokeRoundedRect(const Rect& rect, double radius, const Color& color, double lineWidth) override;
  void strokeLine(Point from, Point to, const Color& color, double lineWidth) override;

  void drawImage(const Image& image, const Rect& rect) override;
  void drawSilhouette(const Image& image, const Rect& rect, const Color& color) override;
  void drawText(const std::string& text, const Rect& rect, const TextStyle& style) override;

  double scale() const override { return m_scaleX; }

  // The interface font with letters of that many pixels.
  static QFont interfaceFont(double pixelSize);

private:
  QPointF devicePoint(Point point) const;
  QRectF deviceRect(const Rect& rect) const;
  // Keeps its size while it moves: size and middle are rounded, not the edges.
  QRect wholePixels(const Rect& rect) const;
  bool isVisible(const QRect& rect) const;
  void setFill(const Color& color);
  void setStroke(const Color& color, double lineWidth);
  void drawRounded(const Rect& rect, double radius);
  void drawPixels(const std::uint32_t* pixels, QSize size, const QRect& target);

  QPainter& m_painter;
  double m_scaleX;
  double m_scaleY;
  double m_height; // points
  QRect m_clip;    // device pixels
  State m_state;
  Scratch& m_scratch;
};

} // namespace orbel::qt
