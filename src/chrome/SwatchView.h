// A sample of a colour with rounded corners and a border: a disc when the corner radius is half its height.
// Used by the settings window's tint button and by the colours to choose from.
#pragma once

#include "foundation/Color.h"
#include "scene/View.h"

namespace orbel {

class SwatchView : public View {
public:
  using View::View;

  const Color& fillColor() const { return m_fillColor; }
  void setFillColor(const Color& color);
  double cornerRadius() const { return m_cornerRadius; } // points
  void setCornerRadius(double radius);
  // Drawn within the bounds; a width of 0, as at first, is no border.
  const Color& borderColor() const { return m_borderColor; }
  double borderWidth() const { return m_borderWidth; } // points
  void setBorder(const Color& color, double width);

  void draw(Canvas& canvas) override;

private:
  Color m_fillColor = Color::white(1);
  double m_cornerRadius = 0;
  Color m_borderColor = Color::clear();
  double m_borderWidth = 0;
};

} // namespace orbel
