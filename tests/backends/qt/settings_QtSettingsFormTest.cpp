#include "tests/backends/qt/settings_FormFixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QWheelEvent>

namespace orbel::qt {
namespace {

using Done = std::vector<std::string>;

class QtSettingsFormTest : public FormFixture {
protected:
  void click(QWidget& widget) { QTest::mouseClick(&widget, Qt::LeftButton); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &form().widget(), key,
                    modifiers);
  }
};

TEST_F(QtSettingsFormTest, AClickOnACheckBoxTellsItsNewState) {
  shown();
  click(find<QCheckBox>("Magnify items under the pointer"));
  click(find<QCheckBox>("Show running applications"));
  click(find<QCheckBox>("Swift Mode"));
  click(find<QCheckBox>("Launch at login"));
  click(find<QCheckBox>("Launch at login"));
  EXPECT_EQ(done,
            (Done{"magnify 1", "showRunningApps 1", "swiftMode 1", "startOnLogin 1", "startOnLogin 0"}));
}

TEST_F(QtSettingsFormTest, TheWholeLineOfACheckBoxCanBeClicked) {
  shown();
  auto& box = find<QCheckBox>("Swift Mode");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 4, box.height() / 2));
  EXPECT_EQ(done, Done{"swiftMode 1"});
}

TEST_F(QtSettingsFormTest, SpaceTogglesTheCheckBoxWithTheFocus) {
  shown();
  find<QCheckBox>("Swift Mode").setFocus();
  press(Qt::Key_Space);
  EXPECT_EQ(done, Done{"swiftMode 1"});
}

TEST_F(QtSettingsFormTest, AcceleratorsReachTheirControls) {
  shown();
  // A button is seen pressed for a moment before it acts.
  for (const Qt::Key key : {Qt::Key_W, Qt::Key_M, Qt::Key_R, Qt::Key_L}) {
    const std::size_t before = done.size();
    press(key, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return done.size() > before; }));
  }
  EXPECT_EQ(done, (Done{"swiftMode 1", "magnify 1", "showRunningApps 1", "startOnLogin 1"}));
  press(Qt::Key_G, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &find<FormPopUpButton>("Gesture"));
  press(Qt::Key_Z, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &find<FormPopUpButton>("Menu size"));
  press(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &find<ViewHost>("tint"));
  press(Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &find<ViewHost>("shortcut"));
}

TEST_F(QtSettingsFormTest, TheArrowKeysChangeAPopUpButtonByItsTags) {
  shown();
  find<FormPopUpButton>("Gesture").setFocus();
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  find<FormPopUpButton>("Menu size").setFocus();
  press(Qt::Key_Down);
  EXPECT_EQ(done, (Done{"gesture 4", "gesture 2", "menuSize 2"}));
}

TEST_F(QtSettingsFormTest, AnEntryIsChosenFromTheListByMouse) {
  shown();
  auto& button = find<FormPopUpButton>("Menu size");
  // For as long as a double click may take, the list takes a release for the end of the press that opened it.
  const int interval = QApplication::doubleClickInterval();
  QApplication::setDoubleClickInterval(0);
  button.showPopup();
  QApplication::setDoubleClickInterval(interval);
  QCoreApplication::processEvents();
  auto* list = button.view();
  const QRect entry = list->visualRect(list->model()->index(2, 0));
  QTest::mouseMove(list->viewport(), entry.center());
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, entry.center());
  EXPECT_EQ(done, Done{"menuSize 3"});
  EXPECT_FALSE(list->isVisible());
}

TEST_F(QtSettingsFormTest, TheWheelChangesNothing) {
  form().setValue("menuSize", std::int64_t{2});
  shown();
  auto& button = find<FormPopUpButton>("Menu size");
  button.setFocus();
  QWheelEvent wheel(QPointF(5, 5), button.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&button, &wheel);
  EXPECT_EQ(button.currentText(), "Medium");
  EXPECT_TRUE(done.empty());
}

TEST_F(QtSettingsFormTest, ButtonsTellTheirAction) {
  shown();
  click(find<FormButton>("Show how to make the gesture"));
  click(find<FormButton>("What is Swift Mode?"));
  click(find<FormButton>("example.org"));
  click(find<FormButton>("Quit Orbel Menu"));
  EXPECT_EQ(done, (Done{"help", "swiftModeInfo", "website", "quit"}));
}

TEST_F(QtSettingsFormTest, ItsKeysDoWhatTheyAreThereFor) {
  shown();
  press(Qt::Key_Escape);
  press(Qt::Key_W, Qt::ControlModifier);
  press(Qt::Key_W, Qt::MetaModifier);
  press(Qt::Key_K, Qt::AltModifier | Qt::ShiftModifier);
  EXPECT_EQ(done, (Done{"Escape", "Control-W", "Super-W", "Alt-Shift-K"}));
  press(Qt::Key_W);
  press(Qt::Key_K, Qt::AltModifier);
  EXPECT_EQ(done.size(), 4u);
}

TEST_F(QtSettingsFormTest, TabVisitsEveryControlFromTopToBottomAndComesBack) {
  form().setVisible("help", true);
  shown();
  find<ViewHost>("shortcut").setFocus();
  std::vector<const QWidget*> visited;
  for (int step = 0; step < 13; ++step) {
    visited.push_back(QApplication::focusWidget());
    press(Qt::Key_Tab);
  }
  const std::vector<const QWidget*> wanted{
      &find<ViewHost>("shortcut"),
      &find<FormPopUpButton>("Gesture"),
      &find<FormButton>("Show how to make the gesture"),
      &find<FormPopUpButton>("Menu size"),
      &find<ViewHost>("tint"),
      &find<QCheckBox>("Magnify items under the pointer"),
      &find<QCheckBox>("Show running applications"),
      &find<QCheckBox>("Swift Mode"),
      &find<FormButton>("What is Swift Mode?"),
      &find<QCheckBox>("Launch at login"),
      &find<FormButton>("example.org"),
      &find<FormButton>("Quit Orbel Menu"),
      &find<ViewHost>("close"),
  };
  EXPECT_EQ(visited, wanted);
  EXPECT_EQ(QApplication::focusWidget(), wanted.front());
}

TEST_F(QtSettingsFormTest, EveryControlHasANameForReaders) {
  int controls = 0;
  for (QWidget* widget : form().widget().findChildren<QWidget*>()) {
    if (widget->focusPolicy() == Qt::NoFocus || widget->isWindow() || widget->window() != &form().widget())
      continue;
    ++controls;
    const auto* accessible = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(accessible, nullptr);
    EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
  }
  EXPECT_GE(controls, 13);
}

TEST_F(QtSettingsFormTest, HostedViewsArePressedBySpaceAndReturn) {
  shown();
  find<ViewHost>("tint").setFocus();
  press(Qt::Key_Space);
  press(Qt::Key_Return);
  find<ViewHost>("close").setFocus();
  press(Qt::Key_Enter);
  EXPECT_EQ(done, (Done{"tint", "tint", "close"}));
}

TEST_F(QtSettingsFormTest, SaysWhichVersionItIs) {
  bool found = false;
  for (const QLabel* label : form().widget().findChildren<QLabel*>())
    found = found || label->text() == "Version 1.2.3";
  EXPECT_TRUE(found);
}

TEST_F(QtSettingsFormTest, APopoverShowsItsViewsAndTellsWhenItCloses) {
  shown();
  int closed = 0;
  const auto popover = form().makePopover([&] { ++closed; });
  popover->setContent({hosted("a", {0, 0, 20, 20}), hosted("b", {0, 0, 20, 20}), hosted("c", {0, 0, 20, 20})},
                      2);
  popover->show("tint");
  EXPECT_TRUE(popover->isShown());
  EXPECT_EQ(find<ViewHost>("a").y(), find<ViewHost>("b").y());
  EXPECT_GT(find<ViewHost>("c").y(), find<ViewHost>("a").y());
  popover->close();
  EXPECT_FALSE(popover->isShown());
  EXPECT_EQ(closed, 1);
}

TEST_F(QtSettingsFormTest, EscapeInAPopoverClosesItAndLeavesTheWindow) {
  shown();
  int closed = 0;
  const auto popover = form().makePopover([&] { ++closed; });
  popover->setContent({hosted("a", {0, 0, 20, 20})}, 1);
  popover->show("help");
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  EXPECT_FALSE(popover->isShown());
  EXPECT_EQ(closed, 1);
  EXPECT_TRUE(form().window().isVisible());
}

TEST_F(QtSettingsFormTest, TheArrowKeysWalkThroughAPopover) {
  shown();
  const auto popover = form().makePopover({});
  std::vector<HostedView> views;
  for (const char* name : {"a", "b", "c", "d", "e"})
    views.push_back(hosted(name, {0, 0, 20, 20}));
  popover->setContent(std::move(views), 3);
  popover->show("tint");
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Left}) {
    QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), key);
  }
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(done, Done{"d"});
}

TEST_F(QtSettingsFormTest, APopoverBeginsAtItsCurrentView) {
  shown();
  const auto popover = form().makePopover({});
  auto current = hosted("b", {0, 0, 20, 20});
  current.isCurrent = true;
  popover->setContent({hosted("a", {0, 0, 20, 20}), current}, 2);
  popover->show("tint");
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(done, Done{"b"});
}

TEST_F(QtSettingsFormTest, APopoverMayEndWhileItTellsThatItHasClosed) {
  shown();
  std::unique_ptr<Popover> popover;
  popover = form().makePopover([&] { popover.reset(); });
  auto view = hosted("a", {0, 0, 20, 20});
  view.press = [&] { popover->close(); };
  popover->setContent({view}, 1);
  popover->show("tint");
  QTest::keyClick(&find<ViewHost>("a"), Qt::Key_Space);
  EXPECT_EQ(popover, nullptr);
}

} // namespace
} // namespace orbel::qt
