// The colours of the settings window on a light and on a dark desktop, as a palette that its controls paint
// themselves with: the family of the menu, soft and low in contrast but for the text.
#pragma once

#include "platform/ManagedWindow.h"

#include <QPalette>

namespace orbel::qt {

class SettingsPalette {
public:
  // Window and WindowText: the glass where nothing shines through, and what is written on it.
  // PlaceholderText: headings and other quiet texts. AlternateBase: a group's card, over the glass.
  // Button and ButtonText: fields and buttons. Midlight and Dark: those under the pointer, and pressed.
  // Mid: hairlines. Highlight and HighlightedText: what is on or chosen. Link: texts to click.
  static QPalette of(ColorScheme scheme);
};

} // namespace orbel::qt
