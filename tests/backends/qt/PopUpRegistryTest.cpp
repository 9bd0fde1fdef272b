#include "backends/qt/popups/PopUpRegistry.h"

#include <QCloseEvent>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QWidget>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

namespace orbel::qt {
namespace {

class PopUpRegistryTest : public testing::Test {
protected:
  PopUpRegistryTest() {
    m_window.setWindowFlags(Qt::FramelessWindowHint);
    m_window.setGeometry(100, 100, 200, 100);
  }
  PopUpRegistry m_registry;
  QWidget m_window;
};

TEST_F(PopUpRegistryTest, CountsAWindowOnlyWhileItIsShownAndRegistered) {
  const QPoint inside(150, 150);
  EXPECT_FALSE(m_registry.contains(inside));
  Registration registration = m_registry.add(m_window);
  EXPECT_FALSE(m_registry.contains(inside));
  m_window.show();
  EXPECT_TRUE(m_registry.contains(inside));
  EXPECT_FALSE(m_registry.contains(QPoint(350, 150)));
  registration.reset();
  EXPECT_FALSE(m_registry.contains(inside));
}

TEST_F(PopUpRegistryTest, CountsWhatHangsOnAPopUp) {
  const Registration registration = m_registry.add(m_window);
  m_window.show();
  QMenu submenu(&m_window);
  submenu.addAction("Entry");
  submenu.popup(QPoint(400, 300));
  EXPECT_TRUE(m_registry.contains(submenu.geometry().center()));
  submenu.close();
  EXPECT_FALSE(m_registry.contains(submenu.geometry().center()));
}

// A click on a pop-up closes it; asked only then, the taps would take it for a click elsewhere.
TEST_F(PopUpRegistryTest, DrainsTheTapsBeforeAPopUpHearsOfAReleaseOrItsClosing) {
  int drained = 0;
  PopUpRegistry registry([&] { ++drained; });
  QPushButton button(&m_window);
  bool wasDrained = false;
  QObject::connect(&button, &QPushButton::clicked, [&] { wasDrained = drained > 0; });
  const auto send = [&](QEvent::Type type, Qt::MouseButtons held) {
    const QPoint place = button.geometry().center();
    QMouseEvent event(type, place, m_window.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window.windowHandle(), &event);
  };
  m_window.show();
  send(QEvent::MouseButtonPress, Qt::LeftButton);
  send(QEvent::MouseButtonRelease, Qt::NoButton);
  EXPECT_EQ(drained, 0);

  const Registration registration = registry.add(m_window);
  send(QEvent::MouseButtonPress, Qt::LeftButton);
  EXPECT_EQ(drained, 0);
  send(QEvent::MouseButtonRelease, Qt::NoButton);
  EXPECT_EQ(drained, 1);
  EXPECT_TRUE(wasDrained);
  QCloseEvent closing;
  QCoreApplication::sendEvent(m_window.windowHandle(), &closing);
  EXPECT_EQ(drained, 2);
}

TEST_F(PopUpRegistryTest, ForgetsAWindowThatWentFirst) {
  auto window = std::make_unique<QWidget>();
  window->setGeometry(500, 500, 50, 50);
  Registration registration = m_registry.add(*window);
  window->show();
  window.reset();
  EXPECT_FALSE(m_registry.contains(QPoint(510, 510)));
  registration.reset();
}

TEST_F(PopUpRegistryTest, MayGoBeforeItsRegistrations) {
  auto registry = std::make_unique<PopUpRegistry>();
  Registration registration = registry->add(m_window);
  registry.reset();
  registration.reset();
  EXPECT_FALSE(registration);
}

TEST_F(PopUpRegistryTest, TellsWhereThePointerIs) {
  const Registration registration = m_registry.add(m_window);
  m_window.show();
  QCursor::setPos(150, 150);
  EXPECT_TRUE(m_registry.isPointerOver());
  QCursor::setPos(10, 10);
  EXPECT_FALSE(m_registry.isPointerOver());
}

} // namespace
} // namespace orbel::qt
