#include "backends/qt/settings/DesktopColorScheme.h"

#include "backends/qt/windows/DisplayServer.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cctype>
#include <string>
#include <utility>

namespace orbel::qt {

DesktopColorScheme::DesktopColorScheme(const DisplayServer& display, std::function<void()> mayHaveChanged)
    : m_display(display), m_mayHaveChanged(std::move(mayHaveChanged)),
      m_portal([this] { m_mayHaveChanged(); }) {
  qGuiApp->installEventFilter(this);
}

DesktopColorScheme::~DesktopColorScheme() = default;

ColorScheme DesktopColorScheme::current() const {
  if (const auto scheme = m_portal.colorScheme()) return *scheme;
  if (const auto scheme = ofTheme()) return *scheme;
  const QPalette palette = QGuiApplication::palette();
  const bool dark =
      palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
  return dark ? ColorScheme::dark : ColorScheme::light;
}

ColorScheme DesktopColorScheme::ofThemeNamed(std::string_view name) {
  std::string lowercased(name);
  std::transform(lowercased.begin(), lowercased.end(), lowercased.begin(),
                 [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
  return lowercased.find("dark") != std::string::npos ? ColorScheme::dark : ColorScheme::light;
}

std::optional<ColorScheme> DesktopColorScheme::ofTheme() const {
  const auto name = m_display.textSetting("Net/ThemeName");
  return name ? std::optional(ofThemeNamed(*name)) : std::nullopt;
}

bool DesktopColorScheme::eventFilter(QObject* watched, QEvent* event) {
  if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) m_mayHaveChanged();
  return false;
}

} // namespace orbel::qt
