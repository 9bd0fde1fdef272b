// Whether the user's desktop is light or dark: what the desktop's portal says, else the name of the theme
// that the desktop hands to all programs, else the colours that Qt was given. Main thread only.
#pragma once

#include "backends/qt/session/PortalSettings.h"
#include "platform/ManagedWindow.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string_view>

namespace orbel::qt {

class DisplayServer;

class DesktopColorScheme : public QObject {
public:
  // The display outlives the object. The block is called when the
  // desktop says that something about its look has changed.
  DesktopColorScheme(const DisplayServer& display, std::function<void()> mayHaveChanged);
  ~DesktopColorScheme() override;

  // Asked of the desktop now.
  ColorScheme current() const;

  // What a theme's name says: "Adwaita-dark", "Breeze-Dark", "Greybird-dark" are dark.
  static ColorScheme ofThemeNamed(std::string_view name);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  std::optional<ColorScheme> ofTheme() const;

  const DisplayServer& m_display;
  std::function<void()> m_mayHaveChanged;
  PortalSettings m_portal;
};

} // namespace orbel::qt
