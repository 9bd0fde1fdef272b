#include "backends/qt/popups/QtContextMenus.h"

#include "tests/backends/qt/TestDisplay.h"
#include "tests/doubles/FakeWindowSystem.h"

#include <QApplication>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace orbel::qt {
namespace {

class QtContextMenusTest : public testing::Test, public ContextMenuDelegate {
protected:
  void TearDown() override {
    m_open.reset();
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  }
  void menuWillOpen() override { m_calls += "open "; }
  void menuDidClose() override { m_calls += "close "; }

  MenuEntry entry(const std::string& title, std::int64_t tag = 0) {
    MenuEntry made;
    made.title = title;
    made.tag = tag;
    made.action = [this](const MenuEntry& chosen) {
      m_calls += "action " + chosen.title + " " + std::to_string(chosen.tag) + " ";
    };
    return made;
  }
  static MenuEntry separator() {
    MenuEntry made;
    made.isSeparator = true;
    return made;
  }
  QMenu& popUp(std::vector<MenuEntry> entries) {
    m_open = m_menus.popUp(std::move(entries), this, *m_surface, {0, 0});
    return *menu();
  }
  static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  static void choose(QMenu& shown, int index) {
    QTest::mouseClick(&shown, Qt::LeftButton, {}, shown.actionGeometry(shown.actions().at(index)).center());
  }

  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_surface = m_windows.makeSurface(SurfaceLevel::menu);
  PopUpRegistry m_popUps;
  QtContextMenus m_menus{m_popUps};
  std::unique_ptr<OpenContextMenu> m_open;
  std::string m_calls;
};

TEST_F(QtContextMenusTest, IsUsableByKeyboard) {
  QMenu& shown = popUp({entry("First"), separator(), entry("Second")});
  QTest::keyClick(&shown, Qt::Key_Down);
  QTest::keyClick(&shown, Qt::Key_Down);
  QTest::keyClick(&shown, Qt::Key_Return);
  EXPECT_EQ(m_calls, "open close action Second 0 ");
}

TEST_F(QtContextMenusTest, OpensSubmenusAndActsOnTheirEntries) {
  MenuEntry openWith = entry("Open With...");
  openWith.submenu = {entry("Editor", 0), separator(), entry("Viewer", 1)};
  QMenu& shown = popUp({openWith, entry("Remove")});
  shown.setActiveAction(shown.actions().at(0));
  QTest::keyClick(&shown, Qt::Key_Right);
  QMenu* submenu = menu();
  ASSERT_NE(submenu, &shown);
  ASSERT_EQ(submenu->actions().size(), 3);
  EXPECT_TRUE(submenu->actions().at(1)->isSeparator());
  choose(*submenu, 2);
  EXPECT_EQ(m_calls, "open close action Viewer 1 ");
}

TEST_F(QtContextMenusTest, ShowsTitlesAsTheyAreOnOneLineOfBearableWidth) {
  const QMenu& shown =
      popUp({entry("Save & Quit"), entry("Two\nlines\tand a tab"), entry(std::string(10000, 'w'))});
  EXPECT_EQ(shown.actions().at(0)->text(), "Save && Quit");
  EXPECT_EQ(shown.actions().at(1)->text(), "Two lines and a tab");
  EXPECT_LT(shown.width(), 600);
}

TEST_F(QtContextMenusTest, DrawsIconsAtSixteenPoints) {
  Bitmap pixels(64, 64);
  std::fill(pixels.pixels.begin(), pixels.pixels.end(), 0xffff0000U);
  MenuEntry iconic = entry("Editor");
  iconic.image = Image::withBitmap({320, 320}, pixels);
  const QMenu& shown = popUp({iconic, entry("Plain")});
  const QIcon icon = shown.actions().at(0)->icon();
  ASSERT_EQ(icon.availableSizes(), (QList<QSize>{QSize(16, 16)}));
  EXPECT_EQ(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
  EXPECT_TRUE(shown.actions().at(0)->isIconVisibleInMenu());
  EXPECT_TRUE(shown.actions().at(1)->icon().isNull());
}

TEST_F(QtContextMenusTest, ClosesWithoutACallWhenItIsDestroyedWhileOpen) {
  const QPointer<QMenu> shown = &popUp({entry("First")});
  m_open.reset();
  EXPECT_EQ(m_calls, "open ");
  EXPECT_EQ(menu(), nullptr);
  EXPECT_TRUE(becomesTrue([&] { return shown.isNull(); }, "the menu is gone"));
}

TEST_F(QtContextMenusTest, MayBeDestroyedFromWithinAnAction) {
  MenuEntry last = entry("Last");
  last.title = std::string(100, 'x'); // too long to be stored in place: a dangling copy would show
  last.action = [this](const MenuEntry& chosen) {
    m_open.reset();
    m_calls += "action " + chosen.title;
  };
  choose(popUp({last}), 0);
  EXPECT_EQ(m_calls, "open close action " + std::string(100, 'x'));
}

TEST_F(QtContextMenusTest, CountsAsAPopUpWhileItIsOpen) {
  const QMenu& shown = popUp({entry("First")});
  const QPoint inside = shown.geometry().center();
  EXPECT_TRUE(m_popUps.contains(inside));
  m_open->cancelTracking();
  EXPECT_FALSE(m_popUps.contains(inside));
}

} // namespace
} // namespace orbel::qt
