// Context menus as a person meets them: on a real X server, over the round menu's kind of window, with
// another program in front.
#include "backends/qt/popups/QtContextMenus.h"

#include "backends/qt/icons/QtIconLoader.h"
#include "backends/qt/windows/ScreenSpace.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/doubles/FakeWindowSystem.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QWidget>

#include <string>

namespace orbel::qt {
namespace {

class QtContextMenusOnDisplay : public testing::Test, public ContextMenuDelegate {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    m_program = std::make_unique<test::TestWindow>(*testDisplay(), test::TestWindowOptions{});
    ASSERT_TRUE(becomesTrue([&] { return session().windows().focusWindow() == m_program->id(); },
                            "it has the focus"));
    // What the round menu is to the window manager: nothing.
    m_surface.setWindowFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint |
                             Qt::WindowStaysOnTopHint);
    m_surface.setAttribute(Qt::WA_ShowWithoutActivating);
    m_surface.setGeometry(340, 240, 400, 400);
    m_surface.setStyleSheet("background: #30506a");
    m_surface.show();
    m_place->setFrame(ScreenSpace::fromQt(m_surface.geometry()));
    ASSERT_TRUE(becomesTrue([&] { return session().windows().isViewable(windowOf(m_surface)); },
                            "the surface is shown"));
    session().input().movePointer({540, 440});
    ASSERT_TRUE(becomesTrue([] { return QCursor::pos() == QPoint(540, 440); }, "the pointer is there"));
  }
  void menuDidClose() override { m_calls += "close "; }

  static test::DesktopSession& session() { return *testDisplay(); }
  static xcb_window_t windowOf(const QWidget& widget) { return static_cast<xcb_window_t>(widget.winId()); }
  static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  MenuEntry entry(const std::string& title, const std::string& icon = {}) {
    MenuEntry made;
    made.title = title;
    made.action = [this](const MenuEntry& chosen) { m_calls += chosen.title; };
    if (!icon.empty()) {
      made.image = std::make_shared<Image>(
          Size{16, 16}, [this, icon](int width, int) { return m_icons.themeIcon({icon}, width); });
    }
    return made;
  }
  void popUp() {
    MenuEntry separator;
    separator.isSeparator = true;
    MenuEntry openWith = entry("Open With...");
    openWith.submenu = {entry("Text Editor", "accessories-text-editor"), separator,
                        entry("Image Viewer", "image-x-generic"), entry("Terminal", "utilities-terminal")};
    m_open = m_menus.popUp({openWith, entry("Rename Collection"), entry("Remove from Orbel Menu")}, this,
                           *m_place, {200, 200});
    ASSERT_TRUE(becomesTrue([&] { return menu() && session().windows().isViewable(windowOf(*menu())); },
                            "it is open"));
  }
  bool isOnTop(const test::ScreenPoint& place) {
    return session().windows().windowAt(place) == windowOf(*menu());
  }

  QWidget m_surface;
  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_place = m_windows.makeSurface(SurfaceLevel::menu); // where the widget is
  QtIconLoader m_icons;
  PopUpRegistry m_popUps;
  QtContextMenus m_menus{m_popUps};
  std::unique_ptr<test::TestWindow> m_program;
  std::unique_ptr<OpenContextMenu> m_open;
  std::string m_calls;
};

TEST_F(QtContextMenusOnDisplay, OpensAtThePointerAboveTheMenuAndLeavesTheFocusWhereItIs) {
  popUp();
  EXPECT_TRUE(becomesTrue([&] { return isOnTop({545, 445}); }, "it is on top"));
  EXPECT_EQ(menu()->pos(), QPoint(540, 440));
  EXPECT_TRUE(m_popUps.contains(QPoint(545, 445)));
  EXPECT_EQ(session().windows().focusWindow(), m_program->id());
}

TEST_F(QtContextMenusOnDisplay, TakesTheKeysThatWouldGoToTheProgramInFront) {
  popUp();
  session().input().typeKey(XK_Down);
  session().input().typeKey(XK_Down);
  session().input().typeKey(XK_Return);
  EXPECT_TRUE(becomesTrue([&] { return m_calls == "close Rename Collection"; }, "the entry acted"));
  EXPECT_EQ(session().windows().focusWindow(), m_program->id());
}

TEST_F(QtContextMenusOnDisplay, IsWalkedThroughByMouseWithItsSubmenu) {
  popUp();
  session().input().movePointer({560, 450});
  session().input().movePointerBy(2, 1);
  ASSERT_TRUE(becomesTrue([&] { return menu() && menu()->actions().size() == 4; }, "the submenu is open"));
  ASSERT_TRUE(becomesTrue([&] { return session().windows().isViewable(windowOf(*menu())); }, "it is shown"));
  const QRect terminal = menu()->actionGeometry(menu()->actions().at(3));
  const QPoint place = menu()->mapToGlobal(terminal.center());
  session().input().movePointer({place.x(), place.y()});
  ASSERT_TRUE(becomesTrue([&] { return menu()->activeAction() == menu()->actions().at(3); },
                          "it is under the pointer"));
  session().screen().save("context-menu", {300, 200, 600, 460});
  session().input().click();
  EXPECT_TRUE(becomesTrue([&] { return m_calls == "close Terminal"; }, "the entry acted"));
}

TEST_F(QtContextMenusOnDisplay, EndsOnEscapeAndOnAClickElsewhere) {
  popUp();
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(becomesTrue([&] { return m_calls == "close "; }, "it closed"));
  popUp();
  session().input().clickAt({1200, 900});
  EXPECT_TRUE(becomesTrue([&] { return m_calls == "close close "; }, "it closed"));
}

} // namespace
} // namespace orbel::qt
