#include "backends/qt/icons/KeyFile.h"

#include <QFile>
#include <QFileInfo>

namespace orbel::qt {

namespace {
constexpr qint64 kLargestFile = 4 << 20;
}

KeyFile::KeyFile(const QString& path) {
  QFile file(path);
  // Not a pipe or a device, whose reading would not end.
  if (!QFileInfo(path).isFile() || file.size() > kLargestFile || !file.open(QIODevice::ReadOnly)) return;
  QString group;
  while (!file.atEnd()) {
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (line.startsWith(QLatin1Char('[')) && line.endsWith(QLatin1Char(']'))) {
      group = line.mid(1, line.size() - 2);
      continue;
    }
    const qsizetype equals = line.indexOf(QLatin1Char('='));
    if (equals <= 0 || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';'))) continue;
    QString value = line.mid(equals + 1).trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"'))) {
      value = value.mid(1, value.size() - 2);
    }
    auto& keys = m_groups[group];
    const QString key = line.left(equals).trimmed();
    if (!keys.contains(key)) keys.insert(key, value);
  }
}

QString KeyFile::value(const QString& group, const QString& key) const {
  return m_groups.value(group).value(key);
}

QStringList KeyFile::list(const QString& group, const QString& key) const {
  QStringList parts;
  for (const QString& part : value(group, key).split(QLatin1Char(','), Qt::SkipEmptyParts))
    parts << part.trimmed();
  return parts;
}

} // namespace orbel::qt
