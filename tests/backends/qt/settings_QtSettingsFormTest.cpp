#include "tests/backends/qt/settings_FormFixture.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QWheelEvent>

#include <set>

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

TEST_F(QtSettingsFormTest, ShowsTheValuesItIsGivenAndTellsNobody) {
  form().setValues({.gesture = 4,
                    .menuSize = 3,
                    .magnify = true,
                    .showRunningApps = false,
                    .startOnLogin = true,
                    .swiftMode = true});
  EXPECT_EQ(find<FormPopUpButton>("Gesture").currentText(), "Four");
  EXPECT_EQ(find<FormPopUpButton>("Menu size").currentText(), "Large");
  EXPECT_TRUE(find<QCheckBox>("Magnify items under the pointer").isChecked());
  EXPECT_FALSE(find<QCheckBox>("Show running applications").isChecked());
  EXPECT_TRUE(find<QCheckBox>("Launch at login").isChecked());
  EXPECT_TRUE(find<QCheckBox>("Swift Mode").isChecked());
  EXPECT_TRUE(delegate.done.empty());
}

TEST_F(QtSettingsFormTest, AClickOnACheckBoxTellsItsNewState) {
  shown();
  click(find<QCheckBox>("Magnify items under the pointer"));
  click(find<QCheckBox>("Show running applications"));
  click(find<QCheckBox>("Swift Mode"));
  click(find<QCheckBox>("Launch at login"));
  click(find<QCheckBox>("Launch at login"));
  EXPECT_EQ(delegate.done,
            (Done{"magnify 1", "showRunningApps 1", "swiftMode 1", "startOnLogin 1", "startOnLogin 0"}));
}

TEST_F(QtSettingsFormTest, TheWholeLineOfACheckBoxCanBeClicked) {
  shown();
  auto& box = find<QCheckBox>("Swift Mode");
  QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(box.width() - 4, box.height() / 2));
  EXPECT_EQ(delegate.done, Done{"swiftMode 1"});
}

TEST_F(QtSettingsFormTest, SpaceTogglesTheCheckBoxWithTheFocus) {
  shown();
  find<QCheckBox>("Swift Mode").setFocus();
  press(Qt::Key_Space);
  EXPECT_EQ(delegate.done, Done{"swiftMode 1"});
}

TEST_F(QtSettingsFormTest, AcceleratorsReachTheirControls) {
  shown();
  // A button is seen pressed for a moment before it acts.
  for (const Qt::Key key : {Qt::Key_W, Qt::Key_M, Qt::Key_R, Qt::Key_L}) {
    const std::size_t before = delegate.done.size();
    press(key, Qt::AltModifier);
    ASSERT_TRUE(QTest::qWaitFor([&] { return delegate.done.size() > before; }));
  }
  EXPECT_EQ(delegate.done, (Done{"swiftMode 1", "magnify 1", "showRunningApps 1", "startOnLogin 1"}));
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
  form().setValues({.gesture = 1, .menuSize = 1});
  shown();
  find<FormPopUpButton>("Gesture").setFocus();
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  find<FormPopUpButton>("Menu size").setFocus();
  press(Qt::Key_Down);
  EXPECT_EQ(delegate.done, (Done{"gesture 4", "gesture 2", "menuSize 2"}));
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
  EXPECT_EQ(delegate.done, Done{"menuSize 3"});
  EXPECT_FALSE(list->isVisible());
}

TEST_F(QtSettingsFormTest, TheWheelChangesNothing) {
  form().setValues({.gesture = 1, .menuSize = 2});
  shown();
  auto& button = find<FormPopUpButton>("Menu size");
  button.setFocus();
  QWheelEvent wheel(QPointF(5, 5), button.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&button, &wheel);
  EXPECT_EQ(button.currentText(), "Medium");
  EXPECT_TRUE(delegate.done.empty());
}

TEST_F(QtSettingsFormTest, ButtonsTellTheirAction) {
  shown();
  click(find<FormButton>("Show how to make the gesture"));
  click(find<FormButton>("What is Swift Mode?"));
  click(find<FormButton>("example.org"));
  click(find<FormButton>("Quit Orbel Menu"));
  EXPECT_EQ(delegate.done, (Done{"help", "swiftModeInfo", "website", "quit"}));
}

TEST_F(QtSettingsFormTest, TheHelpButtonIsThereOnlyWhenItIsWanted) {
  shown();
  form().setHelpButtonVisible(false);
  EXPECT_FALSE(find<FormButton>("Show how to make the gesture").isVisible());
  form().setHelpButtonVisible(true);
  EXPECT_TRUE(find<FormButton>("Show how to make the gesture").isVisible());
}

TEST_F(QtSettingsFormTest, EscapeAndControlOrSuperWCloseIt) {
  for (const auto& [key, modifiers] :
       std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>>{{Qt::Key_Escape, Qt::NoModifier},
                                                              {Qt::Key_W, Qt::ControlModifier},
                                                              {Qt::Key_W, Qt::MetaModifier}}) {
    shown();
    press(key, modifiers);
    EXPECT_FALSE(form().window().isVisible()) << key;
  }
  EXPECT_TRUE(delegate.done.empty());
}

TEST_F(QtSettingsFormTest, ControlOrSuperQQuits) {
  shown();
  press(Qt::Key_Q, Qt::ControlModifier);
  press(Qt::Key_Q, Qt::MetaModifier);
  EXPECT_EQ(delegate.done, (Done{"quit", "quit"}));
}

TEST_F(QtSettingsFormTest, TabVisitsEveryControlFromTopToBottomAndComesBack) {
  form().setHelpButtonVisible(true);
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
  EXPECT_EQ(delegate.done, (Done{"tint", "tint", "close"}));
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
  popover->show(SettingsControl::windowTint);
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
  popover->show(SettingsControl::help);
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
  popover->show(SettingsControl::windowTint);
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Down, Qt::Key_Left}) {
    QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), key);
  }
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(delegate.done, Done{"d"});
}

TEST_F(QtSettingsFormTest, APopoverBeginsAtItsCurrentView) {
  shown();
  const auto popover = form().makePopover({});
  auto current = hosted("b", {0, 0, 20, 20});
  current.isCurrent = true;
  popover->setContent({hosted("a", {0, 0, 20, 20}), current}, 2);
  popover->show(SettingsControl::windowTint);
  QTest::keyClick(QApplication::activePopupWidget()->focusWidget(), Qt::Key_Space);
  EXPECT_EQ(delegate.done, Done{"b"});
}

TEST_F(QtSettingsFormTest, APopoverMayEndWhileItTellsThatItHasClosed) {
  shown();
  std::unique_ptr<Popover> popover;
  popover = form().makePopover([&] { popover.reset(); });
  auto view = hosted("a", {0, 0, 20, 20});
  view.press = [&] { popover->close(); };
  popover->setContent({view}, 1);
  popover->show(SettingsControl::windowTint);
  QTest::keyClick(&find<ViewHost>("a"), Qt::Key_Space);
  EXPECT_EQ(popover, nullptr);
}

TEST_F(QtSettingsFormTest, PopoversCloseWithTheWindow) {
  shown();
  int closed = 0;
  const auto popover = form().makePopover([&] { ++closed; });
  popover->setContent({hosted("a", {0, 0, 20, 20})}, 1);
  popover->show(SettingsControl::help);
  form().window().close();
  EXPECT_FALSE(popover->isShown());
  EXPECT_EQ(closed, 1);
}

// Every language of the program.
class QtSettingsFormInTest : public FormFixture, public testing::WithParamInterface<const char*> {
protected:
  QtSettingsFormInTest() : FormFixture(QLocale(QString::fromLatin1(GetParam()))) {}
};
INSTANTIATE_TEST_SUITE_P(Languages, QtSettingsFormInTest,
                         testing::Values("en_US", "de_DE", "fr_FR", "es_ES", "zh_CN"),
                         [](const auto& language) { return std::string(language.param); });

TEST_P(QtSettingsFormInTest, EachAcceleratorBelongsToOneControl) {
  std::multiset<QString> keys;
  const auto add = [&](const QString& words) {
    const QKeySequence key = QKeySequence::mnemonic(words);
    if (!key.isEmpty()) keys.insert(key.toString());
  };
  for (const QLabel* label : form().widget().findChildren<QLabel*>())
    add(label->text());
  for (const QAbstractButton* button : form().widget().findChildren<QAbstractButton*>())
    add(button->text());
  EXPECT_EQ(keys.size(), 9u);
  EXPECT_EQ(std::set<QString>(keys.begin(), keys.end()).size(), keys.size());
}

TEST_P(QtSettingsFormInTest, NothingIsCutOffAndLabelsAreAligned) {
  shown();
  std::set<int> rightEdges;
  for (const QLabel* label : form().widget().findChildren<QLabel*>()) {
    EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    if (label->buddy()) rightEdges.insert(label->mapTo(&form().widget(), label->rect().topRight()).x());
  }
  EXPECT_EQ(rightEdges.size(), 1u);
  std::set<int> leftEdges;
  for (QWidget* control : form().widget().findChildren<QWidget*>()) {
    if (dynamic_cast<QCheckBox*>(control) || dynamic_cast<FormPopUpButton*>(control)) {
      EXPECT_GE(control->width(), control->sizeHint().width());
      leftEdges.insert(control->mapTo(&form().widget(), QPoint()).x());
    }
  }
  EXPECT_EQ(leftEdges.size(), 1u);
}

} // namespace
} // namespace orbel::qt
