// The window system on a platform of Qt without a display server: less, but whole.
#include "backends/qt/popups/QtContextMenus.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "backends/qt/windows/QtWindowSystem.h"
#include "tests/backends/qt/TestDisplay.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QWindow>

namespace orbel::qt {
namespace {

class SilentDelegate : public SurfaceDelegate {
public:
  void paint(Canvas& canvas, const Rect&) override {
    ++paintings;
    canvas.fillRect({0, 0, 10, 10}, Color{1, 0, 0});
  }
  void pointerMoved(const MouseEvent&) override {}
  void pointerExited(const MouseEvent&) override {}
  void pointerPressed(PointerButton, const MouseEvent&) override { ++presses; }
  void pointerReleased(PointerButton, const MouseEvent&) override { ++releases; }
  void cancelRequested() override {}
  DragOperation dragMoved(const DragInfo&) override { return DragOperation::none; }
  void dragExited() override {}
  bool dragPerformed(const DragInfo&) override { return false; }

  int paintings = 0;
  int presses = 0;
  int releases = 0;
};

// A surface with one of Qt's context menus, which has not grabbed the pointer yet, as for a moment after the
// menu was shown.
class PressBesideAMenuOffscreenTest : public testing::Test, public ContextMenuDelegate {
protected:
  void SetUp() override {
    if (testDisplay()) FAIL() << "needs the round without a display";
    m_surface->setDelegate(&m_delegate);
    m_surface->setFrame({100, 100, 200, 200});
    m_surface->show();
    for (QWindow* window : QGuiApplication::allWindows()) {
      if (window->isVisible()) m_window = window;
    }
    ASSERT_NE(m_window, nullptr);
  }
  void menuDidClose() override {
    ++m_closings;
    if (m_whenClosed) m_whenClosed();
  }
  void openMenu() {
    MenuEntry entry;
    entry.title = "Remove";
    entry.action = [this](const MenuEntry&) { ++m_actions; };
    MenuEntry withSubmenu = entry;
    withSubmenu.submenu = {entry};
    m_open = m_menus.popUp({withSubmenu, entry}, this, *m_surface, {100, 100});
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
  }
  void press(Qt::MouseButton button) { QTest::mousePress(m_window, button, {}, QPoint(100, 100)); }
  void release(Qt::MouseButton button) { QTest::mouseRelease(m_window, button, {}, QPoint(100, 100)); }

  PlainDisplayServer m_display;
  QtWindowSystem m_system{m_display, {}};
  SilentDelegate m_delegate;
  std::unique_ptr<Surface> m_surface = m_system.makeSurface(SurfaceLevel::menu);
  QWindow* m_window = nullptr;
  PopUpRegistry m_popUps;
  QtContextMenus m_menus{m_popUps};
  std::unique_ptr<OpenContextMenu> m_open;
  int m_closings = 0;
  int m_actions = 0;
  std::function<void()> m_whenClosed;
};

TEST_F(PressBesideAMenuOffscreenTest, EndsTheMenuAndIsNobodysWithItsRelease) {
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
    openMenu();
    press(button);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    release(button);
  }
  EXPECT_EQ(m_closings, 2);
  EXPECT_EQ(m_actions, 0);
  EXPECT_EQ(m_delegate.presses, 0);
  EXPECT_EQ(m_delegate.releases, 0);
  press(Qt::LeftButton);
  release(Qt::LeftButton);
  EXPECT_EQ(m_delegate.presses, 1) << "the next one counts";
  EXPECT_EQ(m_delegate.releases, 1);
}

TEST_F(PressBesideAMenuOffscreenTest, EndsItsSubmenuToo) {
  openMenu();
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  menu->setActiveAction(menu->actions().at(0));
  QTest::keyClick(menu, Qt::Key_Right);
  ASSERT_NE(QApplication::activePopupWidget(), menu);
  press(Qt::LeftButton);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(m_closings, 1);
  release(Qt::LeftButton);
  EXPECT_EQ(m_delegate.presses + m_delegate.releases, 0);
}

TEST_F(PressBesideAMenuOffscreenTest, TheReleaseOfThePressThatOpenedItIsHeard) {
  press(Qt::RightButton);
  openMenu();
  release(Qt::RightButton);
  EXPECT_EQ(m_delegate.releases, 1);
}

TEST_F(PressBesideAMenuOffscreenTest, MayEndTheSurfaceWithTheMenu) {
  openMenu();
  m_whenClosed = [this] { m_surface.reset(); };
  press(Qt::LeftButton);
  EXPECT_EQ(m_closings, 1);
  EXPECT_EQ(m_delegate.presses, 0);
}

TEST(QtWindowSystemOffscreenTest, SurfacesAndBubblesWorkWithoutAServer) {
  if (testDisplay()) FAIL() << "needs the round without a display";
  PlainDisplayServer display;
  QtWindowSystem system(display, {});
  SilentDelegate delegate;
  const auto surface = system.makeSurface(SurfaceLevel::menu);
  surface->setDelegate(&delegate);
  EXPECT_FALSE(surface->supportsBackdropBlur());
  surface->setRoundBackdrop(BackdropMaterial::lightFrost, 1);
  surface->setFrame({100, 100, 200, 200});
  EXPECT_EQ(surface->frame(), (Rect{100, 100, 200, 200}));
  surface->show();
  EXPECT_TRUE(surface->isShown());
  EXPECT_EQ(delegate.paintings, 1);
  surface->setAlpha(0.5);
  EXPECT_EQ(surface->alpha(), 0.5);
  surface->needsDisplay({0, 0, 10, 10});
  ASSERT_TRUE(becomesTrue([&] { return delegate.paintings == 2; }, "the damage is painted"));
  const auto bubble = system.makeBubble("Mail");
  bubble->show(*surface, {50, 50, 40, 40});
  EXPECT_TRUE(bubble->isShown());
  bubble->show(*surface, {60, 50, 40, 40});
  bubble->close();
  surface->orderOut();
  EXPECT_FALSE(surface->isShown());
  EXPECT_TRUE(system.pointerLocation().has_value());
  EXPECT_FALSE(system.prefersReducedMotion());
}

} // namespace
} // namespace orbel::qt
