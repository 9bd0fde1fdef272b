#include "backends/qt/windows/FileDrag.h"

#include "foundation/Log.h"

#include <QSysInfo>

namespace orbel::qt {

namespace {
bool namesThisMachine(const QByteArray& host) {
  return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
         host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

// "file:///path", "file://host/path" and "file:/path". Bytes, because a file's name need not be text.
std::optional<std::string> localPath(const QByteArray& uri) {
  constexpr QByteArrayView kScheme("file:");
  if (QByteArrayView(uri).first(std::min(uri.size(), kScheme.size())).compare(kScheme, Qt::CaseInsensitive) !=
      0) {
    return std::nullopt;
  }
  QByteArray rest = uri.mid(kScheme.size());
  if (rest.startsWith("//")) {
    const qsizetype pathStart = rest.indexOf('/', 2);
    if (pathStart < 0 || !namesThisMachine(rest.mid(2, pathStart - 2))) return std::nullopt;
    rest.remove(0, pathStart);
  }
  const QByteArray path = QByteArray::fromPercentEncoding(rest);
  if (!path.startsWith('/') || path.contains('\0')) return std::nullopt;
  return path.toStdString();
}
} // namespace

FileDrag::FileDrag(const QMimeData& data) {
  if (!data.hasFormat(QStringLiteral("text/uri-list"))) return;
  std::vector<std::string> paths;
  // Read raw: Qt's own URLs would lose names that are no UTF-8.
  for (const QByteArray& line : data.data(QStringLiteral("text/uri-list")).split('\n')) {
    const QByteArray uri = line.trimmed();
    if (uri.isEmpty() || uri.startsWith('#') || uri == QByteArrayView("\0", 1)) continue;
    if (auto path = localPath(uri)) {
      paths.push_back(std::move(*path));
    } else {
      Log::information("a dragged item is no local file and is left out: " + uri.toStdString());
    }
  }
  if (!paths.empty()) m_paths = std::move(paths);
}

Qt::DropAction FileDrag::answer(DragOperation wanted, Qt::DropActions offered) {
  if (wanted == DragOperation::none) return Qt::IgnoreAction;
  const Qt::DropAction first = wanted == DragOperation::copy ? Qt::CopyAction : Qt::LinkAction;
  const Qt::DropAction second = wanted == DragOperation::copy ? Qt::LinkAction : Qt::CopyAction;
  if (offered.testFlag(first)) return first;
  if (offered.testFlag(second)) return second;
  return Qt::IgnoreAction;
}

} // namespace orbel::qt
