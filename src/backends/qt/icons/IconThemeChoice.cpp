#include "backends/qt/icons/IconThemeChoice.h"

#include "backends/qt/icons/KeyFile.h"

#include <QFile>
#include <QIcon>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace orbel::qt {

namespace {
// Where a desktop keeps the name of its icon theme, below the configuration folder.
struct SettingsFile {
  const char* desktop; // as in XDG_CURRENT_DESKTOP: the file that counts first there
  const char* path;
  const char* group; // empty for a settings channel in XML
  const char* key;
};
constexpr std::array kSettingsFiles{
    SettingsFile{"KDE", "kdeglobals", "Icons", "Theme"},
    SettingsFile{"XFCE", "xfce4/xfconf/xfce-perchannel-xml/xsettings.xml", "", "IconThemeName"},
    SettingsFile{"LXQt", "lxqt/lxqt.conf", "General", "icon_theme"},
    SettingsFile{"GNOME", "gtk-4.0/settings.ini", "Settings", "gtk-icon-theme-name"},
    SettingsFile{"GNOME", "gtk-3.0/settings.ini", "Settings", "gtk-icon-theme-name"},
};
constexpr std::array kCompleteThemes{"Adwaita", "breeze", "Papirus", "elementary",
                                     "Yaru",    "Mint-Y", "gnome",   "oxygen"};

bool isCurrentDesktop(const char* desktop) {
  const auto names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
  return names.contains(QLatin1String(desktop), Qt::CaseInsensitive);
}

QString channelValue(const QString& path, const char* property) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QXmlStreamReader reader(&file);
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    const auto attributes = reader.attributes();
    if (attributes.value(QLatin1String("name")) == QLatin1String(property)) {
      return attributes.value(QLatin1String("value")).toString();
    }
  }
  return {};
}

QString themeIn(const QString& folder, const SettingsFile& settings) {
  const QString path = folder + QLatin1Char('/') + QLatin1String(settings.path);
  if (*settings.group == '\0') return channelValue(path, settings.key);
  return KeyFile(path).value(QLatin1String(settings.group), QLatin1String(settings.key));
}
} // namespace

QString IconThemeChoice::configured(const QString& configurationFolder, const IconTheme::Folders& folders) {
  auto files = kSettingsFiles;
  std::stable_partition(files.begin(), files.end(),
                        [](const SettingsFile& settings) { return isCurrentDesktop(settings.desktop); });
  for (const SettingsFile& settings : files) {
    QString theme = themeIn(configurationFolder, settings);
    if (IconTheme::isInstalled(theme, folders)) return theme;
  }
  return {};
}

QString IconThemeChoice::fallback(const IconTheme::Folders& folders) {
  if (isCurrentDesktop("KDE") && IconTheme::isInstalled(QStringLiteral("breeze"), folders)) {
    return QStringLiteral("breeze");
  }
  for (const char* theme : kCompleteThemes) {
    if (IconTheme::isInstalled(QLatin1String(theme), folders)) return QLatin1String(theme);
  }
  return {};
}

QString IconThemeChoice::current(const IconTheme::Folders& folders) {
  // With no theme set by us Qt reports the one it learnt from the desktop; "hicolor" means that it
  // learnt none.
  QIcon::setThemeName(QString());
  QString learnt = QIcon::themeName();
  if (learnt != QLatin1String("hicolor") && IconTheme::isInstalled(learnt, folders)) return learnt;
  for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation)) {
    QString theme = configured(folder, folders);
    if (!theme.isEmpty()) return theme;
  }
  const QString complete = fallback(folders);
  return complete.isEmpty() ? QStringLiteral("hicolor") : complete;
}

} // namespace orbel::qt
