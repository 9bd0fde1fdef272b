#include "backends/qt/icons/QtIconLoader.h"

#include "backends/qt/icons/IconThemeChoice.h"
#include "backends/qt/icons/PictureReader.h"
#include "backends/qt/resources/OwnResources.h"

#include <QFile>
#include <QIcon>
#include <QPixmapCache>

#include <array>
#include <utility>

namespace orbel::qt {

namespace {
// A theme changes when the user says so in the desktop's settings: seeing it within this is soon enough, and
// looking it up for each of forty icons would cost more than reading them.
constexpr qint64 kThemeCheckInterval = 3000; // milliseconds
constexpr int kQtPixmapCache = 512;          // KiB; the core keeps the pictures it shows
constexpr int kAnySize = 64;                 // pixels

QString ownPath(const std::string& name) {
  return QStringLiteral(":/icons/%1.svg").arg(QString::fromStdString(name));
}

// Entries name an icon, but some add the extension of the file they had in mind.
QString iconName(const std::string& name) {
  QString icon = QString::fromStdString(name);
  for (const char* extension : {".png", ".svg", ".xpm", ".svgz"}) {
    if (icon.endsWith(QLatin1String(extension))) icon.chop(static_cast<qsizetype>(qstrlen(extension)));
  }
  return icon;
}
} // namespace

QtIconLoader::QtIconLoader() : m_folders(IconTheme::systemFolders()), m_followsDesktop(true) {
  QPixmapCache::setCacheLimit(kQtPixmapCache);
  OwnResources::load();
}

QtIconLoader::QtIconLoader(QString theme, IconTheme::Folders folders) : m_folders(std::move(folders)) {
  OwnResources::load();
  m_theme.emplace(theme, m_folders);
}

IconTheme& QtIconLoader::theme() {
  if (m_theme && m_sinceThemeCheck.isValid() && !m_sinceThemeCheck.hasExpired(kThemeCheckInterval))
    return *m_theme;
  m_sinceThemeCheck.start();
  const QString name = m_followsDesktop ? IconThemeChoice::current(m_folders) : m_theme->name();
  const QString fallback = m_followsDesktop ? IconThemeChoice::fallback(m_folders) : QString();
  if (m_followsDesktop) {
    QIcon::setThemeName(name);
    QIcon::setFallbackThemeName(fallback);
  }
  if (!m_theme || m_theme->name() != name || m_theme->isOutdated())
    m_theme.emplace(name, m_folders, fallback);
  return *m_theme;
}

Bitmap QtIconLoader::themeIcon(const std::vector<std::string>& names, int pixelSize) {
  const IconTheme& current = theme();
  for (const std::string& name : names) {
    const auto file = current.file(iconName(name), pixelSize);
    if (!file) continue;
    // A file that turns out broken does not hide the next name's.
    Bitmap bitmap = PictureReader::read(*file, pixelSize);
    if (!bitmap.isEmpty()) return bitmap;
  }
  return {};
}

bool QtIconLoader::hasThemeIcon(const std::vector<std::string>& names) {
  const IconTheme& current = theme();
  for (const std::string& name : names) {
    if (current.file(iconName(name), kAnySize)) return true;
  }
  return false;
}

Bitmap QtIconLoader::pictureFile(const std::string& path, int pixelSize) {
  return PictureReader::read(QFile::decodeName(QByteArray::fromStdString(path)), pixelSize);
}

Bitmap QtIconLoader::ownPicture(const std::string& name, int pixelSize) {
  return hasOwnPicture(name) ? PictureReader::read(ownPath(name), pixelSize) : Bitmap();
}

bool QtIconLoader::hasOwnPicture(const std::string& name) {
  return QFile::exists(ownPath(name));
}

} // namespace orbel::qt
