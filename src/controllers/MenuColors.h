// The colours of what stands on the disc, chosen so that they can be seen on its tint.
#pragma once

#include "foundation/Color.h"

namespace orbel {

// Above this grey level a tint counts as light; the level itself does not.
constexpr double kLightTintLimit = 0.66;

inline bool isLightTint(const Color& tint) {
  return tint.whiteComponent() > kLightTintLimit;
}

// The dot of a running program.
inline Color highlightColorOnTint(const Color& tint) {
  return Color::white(isLightTint(tint) ? 0 : 1);
}

// The close button is a little softer than the dots on a light disc.
inline Color closeButtonColorOnTint(const Color& tint) {
  return isLightTint(tint) ? Color::darkGray() : Color::white(1);
}

} // namespace orbel
