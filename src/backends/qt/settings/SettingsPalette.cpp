#include "backends/qt/settings/SettingsPalette.h"

namespace orbel::qt {

QPalette SettingsPalette::of(ColorScheme scheme) {
  const bool dark = scheme == ColorScheme::dark;
  QPalette palette;
  const auto set = [&](QPalette::ColorRole role, QColor light, QColor darkColor) {
    palette.setColor(role, dark ? darkColor : light);
  };
  set(QPalette::Window, QColor(244, 245, 248), QColor(42, 43, 48));
  set(QPalette::WindowText, QColor(28, 29, 33), QColor(240, 241, 245));
  set(QPalette::PlaceholderText, QColor(84, 87, 96), QColor(170, 173, 182));
  set(QPalette::AlternateBase, QColor(255, 255, 255, 140), QColor(255, 255, 255, 20));
  set(QPalette::Base, QColor(252, 252, 254), QColor(58, 59, 65));
  set(QPalette::Text, QColor(28, 29, 33), QColor(240, 241, 245));
  set(QPalette::Button, QColor(255, 255, 255, 235), QColor(255, 255, 255, 34));
  set(QPalette::ButtonText, QColor(28, 29, 33), QColor(240, 241, 245));
  set(QPalette::Midlight, QColor(255, 255, 255), QColor(255, 255, 255, 52));
  set(QPalette::Dark, QColor(222, 224, 230), QColor(255, 255, 255, 18));
  set(QPalette::Mid, QColor(0, 0, 0, 46), QColor(255, 255, 255, 52));
  set(QPalette::Highlight, QColor(36, 113, 219), QColor(64, 138, 240));
  set(QPalette::HighlightedText, Qt::white, Qt::white);
  set(QPalette::Link, QColor(20, 90, 190), QColor(122, 178, 255));
  set(QPalette::ToolTipBase, QColor(252, 252, 254), QColor(58, 59, 65));
  set(QPalette::ToolTipText, QColor(28, 29, 33), QColor(240, 241, 245));
  return palette;
}

} // namespace orbel::qt
