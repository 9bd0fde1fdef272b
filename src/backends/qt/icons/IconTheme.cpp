#include "backends/qt/icons/IconTheme.h"

#include "backends/qt/icons/KeyFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace orbel::qt {

namespace {
// A theme that inherits from more than this is broken.
constexpr qsizetype kLargestChain = 32;
constexpr int kLargestNumber = 8192;
constexpr QLatin1String kThemeGroup("Icon Theme");
// Drawings first: in a folder that has both they are the same picture, and sharper.
constexpr std::array kExtensions{".svg", ".png", ".svgz", ".xpm"};

bool isDrawing(const char* extension) {
  return extension[1] == 's';
}

std::optional<QString> fileIn(const QString& folder, const QString& icon, const char* extension) {
  QString path = folder + QLatin1Char('/') + icon + QLatin1String(extension);
  if (QFileInfo::exists(path)) return path;
  return std::nullopt;
}

// How badly a file suits a size; less is better. What fits is preferred to what must be shrunk, and a drawing
// that must be magnified is preferred to a bitmap, which would be blurred.
struct Unfitness {
  int rank;
  int distance;
  friend auto operator<=>(const Unfitness&, const Unfitness&) =
      default; // NOLINT(modernize-use-nullptr): clang-tidy 14 means the generated comparison with 0
};

Unfitness unfitness(bool fits, bool drawing, int size, int pixelSize) {
  if (fits) return {0, std::abs(size - pixelSize)};
  if (size > pixelSize) return {1, size - pixelSize};
  return {drawing ? 2 : 3, pixelSize - size};
}

QString indexPath(const QString& theme, const QString& folder) {
  return folder + QLatin1Char('/') + theme + QLatin1String("/index.theme");
}

// Icon names come from other people's desktop entries; a path must not lead out of the theme.
bool isIconName(const QString& icon) {
  return !icon.isEmpty() && !icon.contains(QLatin1Char('/')) && !icon.startsWith(QLatin1Char('.'));
}
} // namespace

IconTheme::Folders IconTheme::systemFolders() {
  Folders folders;
  folders.themes << QDir::homePath() + QStringLiteral("/.icons");
  for (const QString& data : QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
    folders.themes << data + QStringLiteral("/icons");
    folders.loose << data + QStringLiteral("/pixmaps");
  }
  return folders;
}

bool IconTheme::isInstalled(const QString& theme, const Folders& folders) {
  if (!isIconName(theme)) return false;
  return std::any_of(folders.themes.begin(), folders.themes.end(),
                     [&](const QString& folder) { return QFileInfo::exists(indexPath(theme, folder)); });
}

IconTheme::IconTheme(const QString& name, const Folders& folders, const QString& fallback)
    : m_name(name), m_loose(folders.loose) {
  const QString hicolor = QStringLiteral("hicolor");
  // hicolor counts as visited until the end, because themes that inherit from it name it anywhere in
  // their lists.
  QStringList visited{hicolor};
  addTheme(name, folders, visited);
  addTheme(fallback, folders, visited);
  visited.removeFirst();
  addTheme(hicolor, folders, visited);
  for (const QString& folder : folders.themes)
    m_changeTimes.insert(folder, QFileInfo(folder).lastModified());
}

void IconTheme::addTheme(const QString& theme, const Folders& folders, QStringList& visited) {
  if (!isIconName(theme) || visited.contains(theme) || visited.size() > kLargestChain) return;
  visited << theme;
  QString index;
  for (const QString& folder : folders.themes) {
    const QString root = folder + QLatin1Char('/') + theme;
    m_changeTimes.insert(root, QFileInfo(root).lastModified());
    if (index.isEmpty() && QFileInfo::exists(indexPath(theme, folder))) index = indexPath(theme, folder);
  }
  if (index.isEmpty()) return;
  const KeyFile settings(index);
  addDirectories(settings, theme, folders);
  for (const QString& parent : settings.list(kThemeGroup, QStringLiteral("Inherits"))) {
    addTheme(parent, folders, visited);
  }
}

void IconTheme::addDirectories(const KeyFile& index, const QString& theme, const Folders& folders) {
  Directories directories;
  for (const QString& name : index.list(kThemeGroup, QStringLiteral("Directories")) +
                                 index.list(kThemeGroup, QStringLiteral("ScaledDirectories"))) {
    if (name.contains(QLatin1String(".."))) continue;
    const auto number = [&](const char* key, int absent) {
      const int value = index.value(name, QLatin1String(key)).toInt();
      return value > 0 && value <= kLargestNumber ? value : absent;
    };
    const int scale = number("Scale", 1);
    const int size = number("Size", 0);
    if (size == 0) continue;
    Directory directory;
    directory.size = directory.smallest = directory.largest = size * scale;
    const QString type = index.value(name, QStringLiteral("Type"));
    directory.isScalable = type == QLatin1String("Scalable");
    if (directory.isScalable) {
      directory.smallest = number("MinSize", size) * scale;
      directory.largest = number("MaxSize", size) * scale;
    } else if (type != QLatin1String("Fixed")) {
      directory.smallest = (size - number("Threshold", 2)) * scale;
      directory.largest = (size + number("Threshold", 2)) * scale;
    }
    // Most of the folders that hicolor lists exist nowhere; looking for each icon in them would be most of
    // the work.
    for (const QString& folder : folders.themes) {
      directory.path = folder + QLatin1Char('/') + theme + QLatin1Char('/') + name;
      if (QFileInfo(directory.path).isDir()) directories.push_back(directory);
    }
  }
  m_chain.push_back(std::move(directories));
}

std::optional<QString> IconTheme::bestFile(const Directories& directories, const QString& icon,
                                           int pixelSize) {
  std::optional<QString> best;
  Unfitness least{std::numeric_limits<int>::max(), 0};
  for (const Directory& directory : directories) {
    for (const char* extension : kExtensions) {
      // A bitmap in a folder for scalable icons has one size only, whatever the folder says.
      const bool fits = directory.fits(pixelSize) &&
                        (isDrawing(extension) || !directory.isScalable || directory.size >= pixelSize);
      const Unfitness candidate = unfitness(fits, isDrawing(extension), directory.size, pixelSize);
      if (candidate >= least) continue;
      if (auto file = fileIn(directory.path, icon, extension)) {
        best = std::move(file);
        least = candidate;
      }
    }
  }
  return best;
}

std::optional<QString> IconTheme::file(const QString& icon, int pixelSize) const {
  if (!isIconName(icon)) return std::nullopt;
  for (const Directories& directories : m_chain) {
    if (auto file = bestFile(directories, icon, pixelSize)) return file;
  }
  for (const QString& folder : m_loose) {
    for (const char* extension : kExtensions) {
      if (auto file = fileIn(folder, icon, extension)) return file;
    }
  }
  return std::nullopt;
}

bool IconTheme::isOutdated() const {
  for (auto folder = m_changeTimes.begin(); folder != m_changeTimes.end(); ++folder) {
    if (QFileInfo(folder.key()).lastModified() != folder.value()) return true;
  }
  return false;
}

} // namespace orbel::qt
