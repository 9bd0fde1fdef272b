// Draws the push-on/push-off button that the shortcut recorder looks like, or a part of it. Geometry in
// points. Used by MASShortcutView.
#pragma once

#include "platform/ManagedWindow.h"
#include "scene/Canvas.h"

#include <string>

namespace orbel {

enum class BezelStyle { roundRect, texturedRounded, rounded };
enum class ButtonState { off, on };

class ShortcutCell {
public:
  static constexpr double kFontSize = 11;

  BezelStyle bezelStyle() const { return m_bezelStyle; }
  void setBezelStyle(BezelStyle style) { m_bezelStyle = style; }
  // A disabled cell has a pale title.
  void setEnabled(bool enabled) { m_enabled = enabled; }
  // Light by default.
  void setColorScheme(ColorScheme scheme) { m_colorScheme = scheme; }

  void drawInRect(Canvas& canvas, const Rect& rect, const std::string& title, TextAlignment alignment,
                  ButtonState state) const;

private:
  double cornerRadius(const Rect& rect) const;

  BezelStyle m_bezelStyle = BezelStyle::roundRect;
  bool m_enabled = true;
  ColorScheme m_colorScheme = ColorScheme::light;
};

} // namespace orbel
