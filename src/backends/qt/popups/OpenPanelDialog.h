// The panel in which the user chooses one file among those that the asker allows. Qt's own file dialog,
// because the desktop's cannot grey files. Nothing can be created, renamed or deleted in it. Made
// by QtDialogs.
#pragma once

#include "platform/Dialogs.h"
#include "platform/TextServices.h"

#include <QFileDialog>
#include <QString>

#include <functional>
#include <string>

class QListView;

namespace orbel::qt {

class OpenPanelDialog final : public QFileDialog {
public:
  OpenPanelDialog(const OpenPanel& panel, const TextServices& text);

  // Once accepted: the absolute path.
  QString chosenPath() const { return m_chosenPath; }

  // Also guards what was typed into the panel's line.
  void accept() override;

private:
  void addMessage(const QString& message);
  void selectStart(const QString& startPath);
  static void mark(QListView& list, const QString& name);
  bool canChoose(const QString& path) const;

  std::function<bool(const std::string&)> m_shouldEnable;
  QString m_chosenPath;
  QMetaObject::Connection m_listing;
};

} // namespace orbel::qt
