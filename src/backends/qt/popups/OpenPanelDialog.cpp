#include "backends/qt/popups/OpenPanelDialog.h"

#include "backends/qt/popups/ChoosableFilesModel.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QLabel>
#include <QLayout>
#include <QListView>
#include <QPushButton>
#include <QVBoxLayout>

namespace orbel::qt {

namespace {
constexpr int kMargin = 12;      // points
constexpr QSize kSize(640, 440); // points

std::string toPath(const QString& path) {
  return QFile::encodeName(path).toStdString();
}
} // namespace

OpenPanelDialog::OpenPanelDialog(const OpenPanel& panel, const TextServices& text)
    : m_shouldEnable(panel.shouldEnable) {
  const auto localized = [&](const char* english) { return QString::fromStdString(text.localized(english)); };
  setOption(QFileDialog::DontUseNativeDialog); // first: it decides what the others act on
  setOption(QFileDialog::ReadOnly);
  setFileMode(QFileDialog::ExistingFile);
  setAcceptMode(QFileDialog::AcceptOpen);
  setViewMode(QFileDialog::List);
  setProxyModel(new ChoosableFilesModel([this](const QString& path) { return canChoose(path); }, this));
  setWindowTitle(QString::fromStdString(panel.title));
  setLabelText(QFileDialog::Accept, QString::fromStdString(panel.prompt));
  setLabelText(QFileDialog::Reject, localized("Cancel"));
  setLabelText(QFileDialog::LookIn, localized("Look in:"));
  setLabelText(QFileDialog::FileName, localized("File name:"));
  // One file is to be confirmed: what serves browsing, other views and new files would only be in the way.
  for (const char* name : {"sidebar", "listModeButton", "detailModeButton", "newFolderButton",
                           "fileTypeLabel", "fileTypeCombo"}) {
    if (auto* control = findChild<QWidget*>(QLatin1String(name))) control->hide();
  }
  for (auto* button : findChildren<QPushButton*>())
    button->setIcon(QIcon());
  if (!panel.message.empty()) addMessage(QString::fromStdString(panel.message));
  resize(kSize);
  selectStart(QFile::decodeName(QByteArray::fromStdString(panel.startPath)));
}

void OpenPanelDialog::addMessage(const QString& message) {
  auto* label = new QLabel(message);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setContentsMargins(kMargin, kMargin, kMargin, 0);
  // The dialog's grid has no free row above; the place of a menu bar is one.
  layout()->setMenuBar(label);
}

void OpenPanelDialog::selectStart(const QString& startPath) {
  const QFileInfo start(QDir::cleanPath(startPath));
  if (startPath.isEmpty() || !start.exists()) return;
  if (start.isHidden()) setFilter(filter() | QDir::Hidden);
  setDirectory(start.absolutePath());
  selectFile(start.fileName());
  // Qt only writes the name into the line. The file can be marked once its folder is listed, in
  // the background.
  const auto* files = findChild<QFileSystemModel*>();
  auto* list = findChild<QListView*>(QStringLiteral("listView"));
  if (!files || !list) return;
  m_listing =
      connect(files, &QFileSystemModel::directoryLoaded, this, [this, start, list](const QString& folder) {
        if (QDir(folder) != QDir(start.absolutePath())) return;
        disconnect(m_listing); // later, the choice is the user's
        mark(*list, start.fileName());
      });
}

void OpenPanelDialog::mark(QListView& list, const QString& name) {
  const auto found = list.model()->match(list.model()->index(0, 0, list.rootIndex()), Qt::DisplayRole, name,
                                         1, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (found.isEmpty()) return;
  list.setCurrentIndex(found.first());
  const auto showIt = [&list] { list.scrollTo(list.currentIndex(), QAbstractItemView::PositionAtCenter); };
  showIt();
  // The folder is sorted only after it was listed, and the view lays itself out anew only after that.
  connect(list.model(), &QAbstractItemModel::layoutChanged, &list, showIt, Qt::QueuedConnection);
}

bool OpenPanelDialog::canChoose(const QString& path) const {
  return !m_shouldEnable || m_shouldEnable(toPath(path));
}

void OpenPanelDialog::accept() {
  const QString path = selectedFiles().value(0);
  const QFileInfo file(path);
  if (file.exists() && canChoose(path)) {
    m_chosenPath = path;
    QDialog::accept();
  } else if (file.isDir()) {
    QFileDialog::accept(); // enters the folder
  } else {
    QApplication::beep();
  }
}

} // namespace orbel::qt
