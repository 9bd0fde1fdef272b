// A round-ended outline with a cross in it, in one colour at rest and another while it is pressed.
// Square frames give a circle, wider ones a capsule. Placed and given its action by the window's controller.
#pragma once

#include "chrome/MouseSensitiveView.h"
#include "foundation/Color.h"

#include <optional>

namespace orbel {

class CloseButton : public MouseSensitiveView {
public:
  explicit CloseButton(const Rect& frame);

  void setHighlighted(bool highlighted) override;

  const Color& defaultColor() const { return m_defaultColor; } // dark grey
  void setDefaultColor(const Color& color);
  const Color& highlightColor() const { return m_highlightColor; } // light grey
  void setHighlightColor(const Color& color);
  // The colour of the present drawing.
  const Color& strokeColor() const { return m_strokeColor; }
  // None leaves the drawing as it is.
  void setStrokeColor(const std::optional<Color>& color);

  void draw(Canvas& canvas) override;

private:
  Color m_defaultColor = Color::darkGray();
  Color m_highlightColor = Color::lightGray();
  Color m_strokeColor = Color::darkGray();
};

} // namespace orbel
