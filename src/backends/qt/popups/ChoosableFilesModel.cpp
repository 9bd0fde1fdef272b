#include "backends/qt/popups/ChoosableFilesModel.h"

#include <QFileSystemModel>

namespace orbel::qt {

Qt::ItemFlags ChoosableFilesModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags all = QIdentityProxyModel::flags(index);
  const auto* files = qobject_cast<const QFileSystemModel*>(sourceModel());
  if (!files || !index.isValid()) return all;
  const QModelIndex source = mapToSource(index);
  if (files->isDir(source) || m_canChoose(files->filePath(source))) return all;
  return all & ~(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
}

} // namespace orbel::qt
