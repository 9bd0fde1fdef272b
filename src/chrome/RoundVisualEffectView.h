// A piece of frosted glass shown as a disc with a white rim: what stands behind round elements of the
// settings window. The host clips it to its bounds, so of the rim the inner half is seen where they touch.
#pragma once

#include "platform/ManagedWindow.h"
#include "scene/View.h"

namespace orbel {

class RoundVisualEffectView : public View {
public:
  using View::View;

  // Light by default.
  void setColorScheme(ColorScheme scheme);
  void draw(Canvas& canvas) override;

private:
  ColorScheme m_colorScheme = ColorScheme::light;
};

} // namespace orbel
