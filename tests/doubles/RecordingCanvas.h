// A canvas that writes down what was drawn, with translations applied to every rectangle and point.
#pragma once

#include "scene/Canvas.h"

#include <string>
#include <vector>

namespace orbel {

class RecordingCanvas : public Canvas {
public:
  struct Call {
    std::string name; // of the drawing operation
    Rect rect;        // for a line, from its start to its end: the size may be negative
    Color color;
    double lineWidth = 0;
    double radius = 0;
    double opacity = 1;
    const Image* image = nullptr;
    std::string text;
  };

  void save() override { m_states.push_back(m_state); }
  void restore() override {
    m_state = m_states.back();
    m_states.pop_back();
  }
  void translate(Point offset) override {
    m_state.origin.x += offset.x;
    m_state.origin.y += offset.y;
  }
  void multiplyOpacity(double factor) override { m_state.opacity *= factor; }
  void fillRect(const Rect& rect, const Color& color) override { add("fillRect", rect).color = color; }
  void fillEllipse(const Rect& rect, const Color& color) override { add("fillEllipse", rect).color = color; }
  void strokeEllipse(const Rect& rect, const Color& color, double lineWidth) override {
    Call& call = add("strokeEllipse", rect);
    call.color = color;
    call.lineWidth = lineWidth;
  }
  void fillRoundedRect(const Rect& rect, double radius, const Color& color) override {
    Call& call = add("fillRoundedRect", rect);
    call.color = color;
    call.radius = radius;
  }
  void strokeRoundedRect(const Rect& rect, double radius, const Color& color, double lineWidth) override {
    Call& call = add("strokeRoundedRect", rect);
    call.color = color;
    call.radius = radius;
    call.lineWidth = lineWidth;
  }
  void strokeLine(Point from, Point to, const Color& color, double lineWidth) override {
    Call& call = add("strokeLine", {from.x, from.y, to.x - from.x, to.y - from.y});
    call.color = color;
    call.lineWidth = lineWidth;
  }
  void drawImage(const Image& image, const Rect& rect) override { add("drawImage", rect).image = &image; }
  void drawSilhouette(const Image& image, const Rect& rect, const Color& color) override {
    Call& call = add("drawSilhouette", rect);
    call.image = &image;
    call.color = color;
  }
  void drawText(const std::string& text, const Rect& rect, const TextStyle& style) override {
    Call& call = add("drawText", rect);
    call.text = text;
    call.color = style.color;
  }
  double scale() const override { return backingScale; }

  std::vector<Call> named(const std::string& name) const {
    std::vector<Call> found;
    for (const Call& call : calls) {
      if (call.name == name) found.push_back(call);
    }
    return found;
  }

  std::vector<Call> calls;
  double backingScale = 1;

private:
  struct State {
    Point origin;
    double opacity = 1;
  };
  Call& add(const std::string& name, const Rect& rect) {
    calls.push_back(
        {name, rect.offsetBy(m_state.origin.x, m_state.origin.y), {}, 0, 0, m_state.opacity, nullptr, {}});
    return calls.back();
  }
  State m_state;
  std::vector<State> m_states;
};

} // namespace orbel
