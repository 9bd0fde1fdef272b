// A colour of four components from 0 to 1, not premultiplied, in the device RGB space.
#pragma once

namespace orbel {

struct HueSaturationBrightness {
  double hue = 0; // 0 to 1, red at both ends
  double saturation = 0;
  double brightness = 0;
};

struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;

  static constexpr Color white(double level, double alpha = 1) { return {level, level, level, alpha}; }
  static constexpr Color clear() { return {0, 0, 0, 0}; }
  static constexpr Color darkGray() { return white(1.0 / 3.0); }
  static constexpr Color lightGray() { return white(2.0 / 3.0); }
  static constexpr Color gray() { return white(0.5); }

  static Color fromHueSaturationBrightness(const HueSaturationBrightness& components, double alpha);
  HueSaturationBrightness hueSaturationBrightness() const;

  // The white component after conversion to the device grey space. A colour that is grey already keeps its
  // level exactly, so a comparison with a limit is not decided by rounding.
  double whiteComponent() const;

  Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }

  friend bool operator==(const Color&, const Color&) = default;
};

} // namespace orbel
