// Dialogs as a person meets them: on a real X server with a window manager and another program in front.
#include "backends/qt/popups/QtDialogs.h"

#include "backends/qt/icons/QtIconLoader.h"
#include "backends/qt/text/QtTextServices.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/backends/qt/TestPictures.h"
#include "tests/desktop/harness/TestWindow.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QListView>
#include <QPalette>

#include <string>

namespace orbel::qt {
namespace {

QPalette darkPalette() {
  QPalette palette(QColor(53, 53, 56));
  palette.setColor(QPalette::Base, QColor(35, 35, 38));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::Disabled, QPalette::Text, QColor(120, 120, 124));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

class QtDialogsOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    m_program = std::make_unique<test::TestWindow>(session(), test::TestWindowOptions{});
    ASSERT_TRUE(becomesTrue([&] { return session().windows().focusWindow() == m_program->id(); },
                            "it has the focus"));
    m_icons.hasThemeIcon({"folder"}); // sets Qt's icon theme as the running program does
  }
  void TearDown() override { QApplication::setPalette(m_palette); }

  static test::DesktopSession& session() { return *testDisplay(); }
  static QDialog* shownDialog() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  static xcb_window_t dialogWindow() { return static_cast<xcb_window_t>(shownDialog()->winId()); }
  static testing::AssertionResult dialogHasFocus() {
    return becomesTrue(
        [] {
          return shownDialog() && shownDialog()->isActiveWindow() &&
                 session().windows().activeWindow() == dialogWindow();
        },
        "the dialog has the focus");
  }
  static void savePicture(const std::string& name) {
    const auto place = session().windows().geometry(dialogWindow());
    ASSERT_TRUE(place);
    const QColor window = QApplication::palette().color(QPalette::Window);
    const test::Rgb painted{static_cast<std::uint8_t>(window.red()),
                            static_cast<std::uint8_t>(window.green()),
                            static_cast<std::uint8_t>(window.blue())};
    ASSERT_TRUE(becomesTrue(
        [&] {
          return difference(session().screen().pixel({place->x + 4, place->y + 4}), painted) < 8;
        },
        "it is painted"));
    session().screen().save(name, {place->x - 30, place->y - 50, place->width + 60, place->height + 90});
  }
  void ask() {
    m_dialogs.runTextPrompt({"Rename Collection", "Rename", "Games"}, nullptr,
                            [this](std::optional<std::string> text) {
                              ++m_answers;
                              m_answer = std::move(text);
                            });
  }
  void askForFile() {
    const std::filesystem::path folder = session().dataFolder() / "applications";
    for (const char* name :
         {"calculator", "calendar", "editor", "mail", "music", "player", "terminal", "viewer"}) {
      writeText(folder / (std::string(name) + ".desktop"),
                "[Desktop Entry]\nType=Application\nName=x\nExec=true\n");
    }
    const std::string allowed = (folder / "music.desktop").string();
    m_dialogs.runOpenPanel(
        {.title = "Orbel Menu",
         .message = "To add the application to Orbel Menu, please allow Orbel Menu to open the selected app.",
         .prompt = "Allow",
         .startPath = allowed,
         .shouldEnable = [allowed](const std::string& path) { return path == allowed; }},
        nullptr, [this](std::optional<std::string> path) {
          ++m_answers;
          m_answer = std::move(path);
        });
  }

  QPalette m_palette = QApplication::palette();
  QtIconLoader m_icons;
  PopUpRegistry m_popUps;
  QtTextServices m_text{QLocale("en_US")};
  std::optional<xcb_window_t> m_activeBefore;
  QtDialogs m_dialogs{m_popUps,
                      m_text,
                      {.willTakeFocus = [this] { m_activeBefore = session().windows().activeWindow(); },
                       .dialogInFrontChanged = {},
                       .giveFocusBack = [this] { session().windows().activate(m_activeBefore.value()); }}};
  std::unique_ptr<test::TestWindow> m_program;
  int m_answers = 0;
  std::optional<std::string> m_answer;
};

TEST_F(QtDialogsOnDisplay, PromptIsTypedIntoAtOnceAndGivesTheFocusBack) {
  ask();
  ASSERT_TRUE(dialogHasFocus());
  session().input().typeText("Work");
  session().input().typeKey(XK_Return);
  EXPECT_TRUE(becomesTrue([&] { return m_answers == 1; }, "the prompt answered"));
  EXPECT_EQ(m_answer, "Work");
  EXPECT_TRUE(
      becomesTrue([&] { return session().windows().focusWindow() == m_program->id(); }, "the focus is back"));
}

TEST_F(QtDialogsOnDisplay, PromptEndsOnEscapeAndOnTheWindowManagersCloseButton) {
  ask();
  ASSERT_TRUE(dialogHasFocus());
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(becomesTrue([&] { return m_answers == 1; }, "the prompt answered"));
  ask();
  ASSERT_TRUE(dialogHasFocus());
  session().windows().close(dialogWindow());
  EXPECT_TRUE(becomesTrue([&] { return m_answers == 2; }, "the prompt answered"));
  EXPECT_FALSE(m_answer);
}

TEST_F(QtDialogsOnDisplay, PromptStandsInTheMiddleOfTheScreen) {
  ask();
  ASSERT_TRUE(dialogHasFocus());
  const auto place = session().windows().geometry(dialogWindow());
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->center().x, session().screen().bounds().center().x, 30);
  EXPECT_NEAR(place->center().y, session().screen().bounds().center().y, 30);
  savePicture("prompt");
}

TEST_F(QtDialogsOnDisplay, PromptFollowsADarkPalette) {
  QApplication::setPalette(darkPalette());
  ask();
  ASSERT_TRUE(dialogHasFocus());
  savePicture("prompt-dark"); // fails unless the palette's colour comes up on the screen
}

TEST_F(QtDialogsOnDisplay, AlertTakesTheFocusAndEndsOnReturn) {
  int answers = 0;
  m_dialogs.runAlert(
      {.message = "This combination cannot be used because it is already used by a system-wide keyboard "
                  "shortcut.\nIf you really want to use this key combination, most shortcuts can be "
                  "changed in the Keyboard & Mouse panel in System Preferences.",
       .informativeText = "The key combination ⌃⌥Space cannot be used",
       .isCritical = true},
      nullptr, [&] { ++answers; });
  ASSERT_TRUE(dialogHasFocus());
  savePicture("alert");
  session().input().typeKey(XK_Return);
  EXPECT_TRUE(becomesTrue([&] { return answers == 1; }, "the alert answered"));
  EXPECT_TRUE(
      becomesTrue([&] { return session().windows().focusWindow() == m_program->id(); }, "the focus is back"));
}

TEST_F(QtDialogsOnDisplay, OpenPanelAnswersWithItsPreselectionOnReturn) {
  askForFile();
  ASSERT_TRUE(dialogHasFocus());
  const auto* list = shownDialog()->findChild<QListView*>("listView");
  ASSERT_TRUE(becomesTrue([&] { return list->currentIndex().data().toString() == "music.desktop"; },
                          "it is selected"));
  savePicture("open-panel");
  session().input().typeKey(XK_Return);
  EXPECT_TRUE(becomesTrue([&] { return m_answers == 1; }, "the panel answered"));
  EXPECT_EQ(m_answer, (session().dataFolder() / "applications/music.desktop").string());
  EXPECT_TRUE(
      becomesTrue([&] { return session().windows().focusWindow() == m_program->id(); }, "the focus is back"));
}

TEST_F(QtDialogsOnDisplay, OpenPanelFollowsADarkPalette) {
  QApplication::setPalette(darkPalette());
  askForFile();
  ASSERT_TRUE(dialogHasFocus());
  const auto* list = shownDialog()->findChild<QListView*>("listView");
  ASSERT_TRUE(becomesTrue([&] { return list->currentIndex().data().toString() == "music.desktop"; },
                          "it is selected"));
  savePicture("open-panel-dark");
  session().input().typeKey(XK_Escape);
  EXPECT_TRUE(becomesTrue([&] { return m_answers == 1; }, "the panel answered"));
  EXPECT_FALSE(m_answer);
}

} // namespace
} // namespace orbel::qt
