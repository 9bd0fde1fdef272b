// The contracts of what Qt implements without a display: text, drawing, menus and dialogs.
#include "backends/qt/canvas/QtGraphics.h"
#include "backends/qt/popups/QtContextMenus.h"
#include "backends/qt/popups/QtDialogs.h"
#include "backends/qt/text/QtTextServices.h"
#include "backends/qt/windows/ScreenSpace.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/backends/qt/TestPictures.h"
#include "tests/contracts/ContextMenusContract.h"
#include "tests/contracts/DialogsContract.h"
#include "tests/contracts/GraphicsContract.h"
#include "tests/contracts/TextServicesContract.h"
#include "tests/doubles/FakeWindowSystem.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace orbel::contracts {
using namespace qt;
namespace {

class QtTextServicesSubject {
public:
  TextServices& text() { return m_text; }

private:
  qt::QtTextServices m_text{QLocale("en_US")};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtTextServicesContract, TextServicesContract, QtTextServicesSubject);

class QtGraphicsSubject {
public:
  Graphics& graphics() { return m_graphics; }

private:
  qt::QtGraphics m_graphics;
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtGraphicsContract, GraphicsContract, QtGraphicsSubject);

class QtContextMenusSubject {
public:
  QtContextMenusSubject() { m_surface->setFrame({300, 400, 400, 400}); }
  ContextMenus& menus() { return m_menus; }
  const Surface& surface() const { return *m_surface; }
  static Point place() {
    const Rect frame = qt::ScreenSpace::fromQt(menu()->geometry());
    return {frame.minX(), frame.maxY()};
  }
  static bool isOpen() { return menu() != nullptr; }
  static std::vector<std::string> titles() {
    std::vector<std::string> all;
    for (const QAction* action : menu()->actions())
      all.push_back(action->isSeparator() ? "-" : action->text().toStdString());
    return all;
  }
  void choose(const std::string& title) {
    QMenu& shown = *menu();
    if (const int index = indexOf(shown, title); index >= 0) return click(shown, index);
    for (QAction* action : shown.actions()) {
      if (!action->menu() || indexOf(*action->menu(), title) < 0) continue;
      shown.setActiveAction(action);
      QTest::keyClick(&shown, Qt::Key_Right);
      ASSERT_EQ(menu(), action->menu());
      return click(*action->menu(), indexOf(*action->menu(), title));
    }
    FAIL() << "there is no entry " << title;
  }
  void tryToChoose(const std::string& title) { choose(title); }
  static void dismiss() { QTest::keyClick(menu(), Qt::Key_Escape); }

private:
  static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  static int indexOf(const QMenu& shown, const std::string& title) {
    const auto actions = shown.actions();
    for (int index = 0; index < actions.size(); ++index)
      if (actions.at(index)->text().toStdString() == title && !actions.at(index)->menu()) return index;
    return -1;
  }
  static void click(QMenu& shown, int index) {
    QTest::mouseClick(&shown, Qt::LeftButton, {}, shown.actionGeometry(shown.actions().at(index)).center());
  }
  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_surface = m_windows.makeSurface(SurfaceLevel::menu);
  qt::PopUpRegistry m_popUps;
  qt::QtContextMenus m_menus{m_popUps};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtContextMenusContract, ContextMenusContract, QtContextMenusSubject);

class QtDialogsSubject {
public:
  ~QtDialogsSubject() {
    m_dialogs.reset();
    EXPECT_TRUE(becomesTrue([] { return shownDialog() == nullptr; }, "all dialogs are closed"));
  }
  Dialogs& dialogs() { return *m_dialogs; }
  const Surface* owner() const { return m_surface.get(); }
  static bool isAnyOpen() { return shownDialog() != nullptr; }
  static void answerPrompt(const std::string& text) {
    auto* line = shownDialog()->findChild<QLineEdit*>();
    QTest::keyClicks(line, QString::fromStdString(text));
    QTest::keyClick(line, Qt::Key_Return);
  }
  static void cancelPrompt() { press(Qt::Key_Escape); }
  static void closeAlert() { press(Qt::Key_Return); }
  std::string file(const std::string& name) const {
    writeText(m_folder.path() / name, "x");
    return (m_folder.path() / name).string();
  }
  static bool choose(const std::string& path) {
    QDialog& panel = *shownDialog();
    auto* line = panel.findChild<QLineEdit*>();
    EXPECT_TRUE(becomesTrue([&] { return line->hasFocus(); }, "the line has the keyboard"));
    line->selectAll();
    QTest::keyClicks(line, QString::fromStdString(path.substr(path.rfind('/') + 1)));
    panel.accept(); // as its button does; Return belongs to the line's suggestions first
    return shownDialog() != &panel;
  }
  static void cancelPanel() { press(Qt::Key_Escape); }

private:
  static QDialog* shownDialog() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  static void press(Qt::Key key) { QTest::keyClick(shownDialog(), key); }

  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_surface = m_windows.makeSurface(SurfaceLevel::menu);
  qt::PopUpRegistry m_popUps;
  qt::QtTextServices m_text{QLocale("en_US")};
  std::unique_ptr<qt::QtDialogs> m_dialogs =
      std::make_unique<qt::QtDialogs>(m_popUps, m_text, qt::DialogHooks());
  test::TemporaryDirectory m_folder{"orbel-dialogs"};
};

INSTANTIATE_TYPED_TEST_SUITE_P(QtDialogsContract, DialogsContract, QtDialogsSubject);

} // namespace
} // namespace orbel::contracts
