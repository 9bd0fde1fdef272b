// An image view that shows decoration and never takes a click.
#pragma once

#include "scene/View.h"

namespace orbel {

class BezelView : public View {
public:
  using View::View;

  const ImagePointer& image() const { return m_image; }
  void setImage(ImagePointer image);

  // Nothing for every point, so clicks reach what lies below.
  View* hitTest(Point) override { return nullptr; }
  void draw(Canvas& canvas) override;

private:
  ImagePointer m_image;
};

} // namespace orbel
