#include "foundation/Color.h"

#include <algorithm>
#include <cmath>

namespace orbel {

Color Color::fromHueSaturationBrightness(const HueSaturationBrightness& components, double alpha) {
  const double value = components.brightness;
  const double sector = (components.hue - std::floor(components.hue)) * 6;
  const double fraction = sector - std::floor(sector);
  const double low = value * (1 - components.saturation);
  const double falling = value * (1 - components.saturation * fraction);
  const double rising = value * (1 - components.saturation * (1 - fraction));
  switch (static_cast<int>(sector)) {
  case 0:
    return {value, rising, low, alpha};
  case 1:
    return {falling, value, low, alpha};
  case 2:
    return {low, value, rising, alpha};
  case 3:
    return {low, falling, value, alpha};
  case 4:
    return {rising, low, value, alpha};
  default:
    return {value, low, falling, alpha};
  }
}

HueSaturationBrightness Color::hueSaturationBrightness() const {
  const double high = std::max({red, green, blue});
  const double span = high - std::min({red, green, blue});
  HueSaturationBrightness result{0, high > 0 ? span / high : 0, high};
  if (span <= 0) return result;
  double sector = 0;
  if (high == red) {
    sector = (green - blue) / span;
  } else if (high == green) {
    sector = 2 + (blue - red) / span;
  } else {
    sector = 4 + (red - green) / span;
  }
  result.hue = sector / 6 - std::floor(sector / 6);
  return result;
}

double Color::whiteComponent() const {
  if (red == green && green == blue) return red;
  // Rec. 601 luma, the weights of a device RGB to device grey conversion.
  return 0.299 * red + 0.587 * green + 0.114 * blue;
}

} // namespace orbel
