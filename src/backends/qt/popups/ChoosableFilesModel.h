// A folder's files, of which those that cannot be chosen are greyed; folders stay passable. Used by the
// open panel.
#pragma once

#include <QIdentityProxyModel>
#include <QString>

#include <functional>

namespace orbel::qt {

class ChoosableFilesModel final : public QIdentityProxyModel {
public:
  using Test = std::function<bool(const QString& path)>;

  // The source model has to be Qt's file system model.
  ChoosableFilesModel(Test canChoose, QObject* parent)
      : QIdentityProxyModel(parent), m_canChoose(std::move(canChoose)) {}

  Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
  Test m_canChoose;
};

} // namespace orbel::qt
