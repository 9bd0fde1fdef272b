// One icon theme of the freedesktop icon theme standard with the themes it inherits from: which file shows a
// name best at a size. It differs from the standard's lookup in one point: among files of other sizes a
// larger one or a drawing is preferred to a smaller bitmap, because icons of a menu are magnified. Reads
// folders only; keeps no pixels.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace orbel::qt {

class KeyFile;

class IconTheme {
public:
  struct Folders {
    QStringList themes; // hold theme folders; earlier ones win
    QStringList loose;  // hold icons without a theme, such as /usr/share/pixmaps; asked last
  };
  // The user's and the system's folders by the XDG base folders.
  static Folders systemFolders();
  static bool isInstalled(const QString& theme, const Folders& folders);

  // hicolor is always asked after the theme and what it inherits; the fallback theme just before it.
  IconTheme(const QString& name, const Folders& folders, const QString& fallback = {});

  const QString& name() const { return m_name; }
  // The best file for an icon name without extension, for a square of that many pixels.
  std::optional<QString> file(const QString& icon, int pixelSize) const;
  // Whether a theme folder was changed, added or removed since this object was made.
  bool isOutdated() const;

private:
  struct Directory {
    QString path;
    bool isScalable = false;
    int size = 0; // all in pixels
    int smallest = 0;
    int largest = 0;
    bool fits(int pixelSize) const { return pixelSize >= smallest && pixelSize <= largest; }
  };
  using Directories = std::vector<Directory>;

  void addTheme(const QString& theme, const Folders& folders, QStringList& visited);
  void addDirectories(const KeyFile& index, const QString& theme, const Folders& folders);
  static std::optional<QString> bestFile(const Directories& directories, const QString& icon, int pixelSize);

  QString m_name;
  std::vector<Directories> m_chain; // the theme first, hicolor last
  QStringList m_loose;
  QHash<QString, QDateTime> m_changeTimes;
};

} // namespace orbel::qt
