// Reads the desktop's settings and index files: groups in brackets, lines of key=value. Nothing is cached.
// Used by the icon theme and its choice.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace orbel::qt {

class KeyFile {
public:
  // A file that cannot be read, or of more than 4 MiB, is empty.
  explicit KeyFile(const QString& path);

  // Trimmed and without enclosing quotes; empty when absent. The first of several equal keys counts.
  QString value(const QString& group, const QString& key) const;
  // A comma-separated list without its empty parts.
  QStringList list(const QString& group, const QString& key) const;

private:
  QHash<QString, QHash<QString, QString>> m_groups;
};

} // namespace orbel::qt
