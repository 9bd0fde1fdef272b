#include "backends/qt/popups/QtDialogs.h"

#include "backends/qt/text/QtTextServices.h"
#include "tests/backends/qt/TestDisplay.h"
#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <string>

namespace orbel::qt {
namespace {

class QtDialogsTest : public testing::Test {
protected:
  void TearDown() override {
    m_dialogs.reset();
    EXPECT_TRUE(becomesTrue([] { return shownDialog() == nullptr; }, "all dialogs are closed"));
  }
  static QDialog* shownDialog() { return qobject_cast<QDialog*>(QApplication::activeModalWidget()); }
  static QLineEdit& line() { return *shownDialog()->findChild<QLineEdit*>(); }
  static QPushButton* button(const QString& text) {
    for (auto* candidate : shownDialog()->findChildren<QPushButton*>()) {
      if (candidate->text() == text) return candidate;
    }
    return nullptr;
  }
  static bool shows(const QString& text) {
    for (const auto* label : shownDialog()->findChildren<QLabel*>()) {
      if (label->text() == text) return true;
    }
    return false;
  }
  void ask(const TextPrompt& prompt = {"Rename Collection", "Rename", "Games"}) {
    m_dialogs->runTextPrompt(prompt, nullptr, [this](std::optional<std::string> text) {
      ++m_answers;
      m_answer = std::move(text);
      m_events += "answer ";
    });
  }

  static Alert alert(const std::string& message) {
    Alert made;
    made.message = message;
    return made;
  }
  static OpenPanel panel(const std::string& startPath, const std::string& prompt) {
    OpenPanel made;
    made.startPath = startPath;
    made.prompt = prompt;
    return made;
  }

  std::filesystem::path file(const std::string& name) {
    writeText(m_folder.path() / name, "x");
    return m_folder.path() / name;
  }
  void askForFile(const std::filesystem::path& allowed, const std::string& startPath) {
    m_dialogs->runOpenPanel(
        {.title = "Orbel Menu",
         .message = "Please allow it.",
         .prompt = "Allow",
         .startPath = startPath,
         .shouldEnable = [allowed](const std::string& path) { return path == allowed.string(); }},
        nullptr, [this](std::optional<std::string> path) {
          ++m_answers;
          m_answer = std::move(path);
        });
  }
  // As a person does, into the line that has the keyboard.
  static void type(const QString& name) {
    ASSERT_TRUE(becomesTrue([] { return line().hasFocus(); }, "the line has the keyboard"));
    line().selectAll();
    QTest::keyClicks(&line(), name);
  }
  static QListView& list() { return *shownDialog()->findChild<QListView*>("listView"); }
  static QModelIndex row(const QString& name) {
    const auto* model = list().model();
    const QModelIndex folder = list().rootIndex();
    for (int index = 0; index < model->rowCount(folder); ++index) {
      if (model->index(index, 0, folder).data().toString() == name) return model->index(index, 0, folder);
    }
    return {};
  }

  PopUpRegistry m_popUps;
  QtTextServices m_text{QLocale("en_US")};
  std::string m_events;
  std::optional<WId> m_inFront;
  DialogHooks m_hooks{.willTakeFocus = [this] { m_events += "take "; },
                      .dialogInFrontChanged =
                          [this](std::optional<WId> window) {
                            m_events += window ? "front " : "none ";
                            m_inFront = window;
                          },
                      .giveFocusBack = [this] { m_events += "back "; }};
  std::unique_ptr<QtDialogs> m_dialogs = std::make_unique<QtDialogs>(m_popUps, m_text, m_hooks);
  test::TemporaryDirectory m_folder{"orbel-dialogs"};
  int m_answers = 0;
  std::optional<std::string> m_answer;
};

TEST_F(QtDialogsTest, PromptAnswersWithWhatWasTypedOnReturn) {
  ask();
  EXPECT_EQ(m_answers, 0);
  EXPECT_TRUE(shows("Rename Collection"));
  EXPECT_EQ(line().placeholderText(), "Games");
  EXPECT_EQ(line().width(), 200);
  QTest::keyClicks(&line(), "Work");
  QTest::keyClick(&line(), Qt::Key_Return);
  EXPECT_EQ(m_answers, 1);
  EXPECT_EQ(m_answer, "Work");
}

TEST_F(QtDialogsTest, PromptAnswersToItsButton) {
  ask();
  ASSERT_NE(button("Rename"), nullptr);
  EXPECT_TRUE(button("Rename")->isDefault());
  QTest::mouseClick(button("Rename"), Qt::LeftButton);
  EXPECT_EQ(m_answer, "");
}

TEST_F(QtDialogsTest, PromptAnswersWithNothingOnEscapeAndWhenItIsClosed) {
  ask();
  QTest::keyClicks(&line(), "Work");
  QTest::keyClick(&line(), Qt::Key_Escape);
  EXPECT_EQ(m_answers, 1);
  EXPECT_FALSE(m_answer);
  ask();
  shownDialog()->close();
  EXPECT_EQ(m_answers, 2);
  EXPECT_FALSE(m_answer);
}

TEST_F(QtDialogsTest, PromptTurnsLineBreaksIntoSpaces) {
  ask();
  line().setText(QString::fromUtf8("a\nb\r\nc\rd\u2028e\u2029f\vg"));
  QTest::keyClick(&line(), Qt::Key_Return);
  EXPECT_EQ(m_answer, "a b c d e f g");
}

TEST_F(QtDialogsTest, PromptKeepsLongAndRightToLeftText) {
  const std::string hebrew = "שלום עולם";
  ask({"Rename Collection", "Rename", std::string(10000, 'n')});
  EXPECT_LT(shownDialog()->width(), 600);
  line().setText(QString::fromStdString(std::string(10000, 'x') + hebrew));
  EXPECT_EQ(line().width(), 200);
  QTest::keyClick(&line(), Qt::Key_Return);
  EXPECT_EQ(m_answer, std::string(10000, 'x') + hebrew);
}

TEST_F(QtDialogsTest, PromptShowsMarkupAndAmpersandsAsTheyAre) {
  ask({"<b>Rename</b> & more", "Rename & go", ""});
  EXPECT_TRUE(shows("<b>Rename</b> & more"));
  EXPECT_NE(button("Rename && go"), nullptr);
}

TEST_F(QtDialogsTest, AlertShowsItsTextsAndAnswersOnceToReturnOrEscape) {
  for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
    int answers = 0;
    m_dialogs->runAlert(
        {.message = "It cannot be used.", .informativeText = "The reason.", .isCritical = true}, nullptr,
        [&] { ++answers; });
    EXPECT_TRUE(shows("It cannot be used."));
    EXPECT_TRUE(shows("The reason."));
    ASSERT_NE(button("OK"), nullptr);
    QTest::keyClick(shownDialog(), key);
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(shownDialog(), nullptr);
  }
}

TEST_F(QtDialogsTest, AlertStaysOnTheScreenHoweverLongItsText) {
  m_dialogs->runAlert({.message = std::string(100000, 'm'), .informativeText = "x"}, nullptr, nullptr);
  EXPECT_LT(shownDialog()->width(), 600);
  QTest::keyClick(shownDialog(), Qt::Key_Return);
  EXPECT_EQ(shownDialog(), nullptr);
}

TEST_F(QtDialogsTest, TellsTheWindowSystemAndGivesTheFocusBackBeforeItAnswers) {
  ask();
  EXPECT_EQ(m_events, "take front ");
  EXPECT_EQ(m_inFront, shownDialog()->winId());
  QTest::keyClick(&line(), Qt::Key_Return);
  EXPECT_EQ(m_events, "take front none back answer ");
}

TEST_F(QtDialogsTest, KeepsTheFocusUntilTheLastOfSeveralHasClosed) {
  ask();
  const WId first = shownDialog()->winId();
  m_dialogs->runAlert(alert("On top"), nullptr, nullptr);
  EXPECT_EQ(m_events, "take front front ");
  QTest::keyClick(shownDialog(), Qt::Key_Return);
  EXPECT_EQ(m_events, "take front front front ");
  EXPECT_EQ(m_inFront, first);
  QTest::keyClick(&line(), Qt::Key_Escape);
  EXPECT_EQ(m_events, "take front front front none back answer ");
}

TEST_F(QtDialogsTest, MayGoFromWithinAnAnswer) {
  m_dialogs->runAlert(alert("First"), nullptr, [this] { m_dialogs.reset(); });
  QTest::keyClick(shownDialog(), Qt::Key_Return);
  EXPECT_EQ(m_dialogs, nullptr);
}

TEST_F(QtDialogsTest, ClosesOpenDialogsUnansweredWhenItGoes) {
  ask();
  m_dialogs.reset();
  EXPECT_EQ(shownDialog(), nullptr);
  EXPECT_EQ(m_answers, 0);
}

TEST_F(QtDialogsTest, CountsAsAPopUpWhileItIsShown) {
  ask();
  const QPoint inside = shownDialog()->geometry().center();
  EXPECT_TRUE(m_popUps.contains(inside));
  QTest::keyClick(&line(), Qt::Key_Escape);
  EXPECT_FALSE(m_popUps.contains(inside));
}

TEST_F(QtDialogsTest, ClosingTheLastDialogDoesNotEndTheProgram) {
  ask();
  EXPECT_FALSE(shownDialog()->testAttribute(Qt::WA_QuitOnClose));
}

TEST_F(QtDialogsTest, OpenPanelPreselectsItsStartAndAnswersWithIt) {
  const auto allowed = file("editor.desktop");
  file("other.desktop");
  askForFile(allowed, allowed.string());
  EXPECT_EQ(shownDialog()->windowTitle(), "Orbel Menu");
  EXPECT_TRUE(shows("Please allow it."));
  ASSERT_TRUE(becomesTrue([] { return list().currentIndex().data().toString() == "editor.desktop"; },
                          "it is selected"));
  QTest::mouseClick(button("Allow"), Qt::LeftButton);
  EXPECT_EQ(m_answers, 1);
  EXPECT_EQ(m_answer, allowed.string());
}

TEST_F(QtDialogsTest, OpenPanelShowsItsPreselectionAmongManyFiles) {
  for (int index = 0; index < 400; ++index)
    file("program" + std::to_string(index) + ".desktop");
  const auto allowed = file("zebra.desktop");
  askForFile(allowed, allowed.string());
  EXPECT_TRUE(becomesTrue(
      [] {
        const QModelIndex current = list().currentIndex();
        const QModelIndex last = current.sibling(current.row() + 1, 0);
        return current.data().toString() == "zebra.desktop" && !last.isValid() &&
               list().viewport()->rect().contains(list().visualRect(current));
      },
      "it is selected, sorted to the end, and in sight"));
}

TEST_F(QtDialogsTest, OpenPanelGreysWhatCannotBeChosenButNotFolders) {
  const auto allowed = file("editor.desktop");
  file("other.desktop");
  std::filesystem::create_directory(m_folder.path() / "folder");
  askForFile(allowed, allowed.string());
  ASSERT_TRUE(
      becomesTrue([] { return row("other.desktop").isValid() && row("folder").isValid(); }, "it is listed"));
  EXPECT_TRUE(row("editor.desktop").flags() & Qt::ItemIsEnabled);
  EXPECT_FALSE(row("other.desktop").flags() & (Qt::ItemIsEnabled | Qt::ItemIsSelectable));
  EXPECT_TRUE(row("folder").flags() & Qt::ItemIsEnabled);
}

TEST_F(QtDialogsTest, OpenPanelRefusesATypedNameThatCannotBeChosen) {
  const auto allowed = file("editor.desktop");
  file("other.desktop");
  askForFile(allowed, allowed.string());
  for (const char* name : {"other.desktop", "missing.desktop"}) {
    type(QLatin1String(name));
    shownDialog()->accept();
    EXPECT_EQ(m_answers, 0) << name;
    ASSERT_NE(shownDialog(), nullptr) << name;
  }
  type("editor.desktop");
  shownDialog()->accept();
  EXPECT_EQ(m_answer, allowed.string());
}

TEST_F(QtDialogsTest, OpenPanelGoesIntoATypedFolderAndCannotChooseIt) {
  const auto allowed = file("editor.desktop");
  std::filesystem::create_directory(m_folder.path() / "folder");
  askForFile(allowed, allowed.string());
  type("folder");
  shownDialog()->accept();
  EXPECT_EQ(m_answers, 0);
  auto* shown = qobject_cast<QFileDialog*>(shownDialog());
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->directory().dirName(), "folder");
}

TEST_F(QtDialogsTest, OpenPanelAnswersWithNothingWhenItIsCancelled) {
  askForFile(file("editor.desktop"), (m_folder.path() / "editor.desktop").string());
  QTest::mouseClick(button("Cancel"), Qt::LeftButton);
  EXPECT_EQ(m_answers, 1);
  EXPECT_FALSE(m_answer);
}

TEST_F(QtDialogsTest, OpenPanelOpensAlsoWithAStartThatIsNotThereAndWithoutATest) {
  m_dialogs->runOpenPanel(panel("/no/such/file/", "Allow"), nullptr, nullptr);
  ASSERT_NE(shownDialog(), nullptr);
  shownDialog()->reject();
  EXPECT_EQ(shownDialog(), nullptr);
}

TEST_F(QtDialogsTest, OpenPanelFindsAStartInsideAHiddenFolderAndWithASlashAtItsEnd) {
  const auto allowed = file(".hidden/.editor.desktop");
  askForFile(allowed, allowed.string() + "/");
  ASSERT_TRUE(becomesTrue([] { return list().currentIndex().data().toString() == ".editor.desktop"; },
                          "it is selected"));
  shownDialog()->accept();
  EXPECT_EQ(m_answer, allowed.string());
}

TEST_F(QtDialogsTest, OpenPanelSpeaksTheUsersLanguage) {
  const QtTextServices german(QLocale("de_DE"));
  QtDialogs dialogs(m_popUps, german, {});
  dialogs.runOpenPanel(panel("", "Erlauben"), nullptr, nullptr);
  EXPECT_NE(button("Abbrechen"), nullptr);
  EXPECT_TRUE(shows("Dateiname:"));
}

} // namespace
} // namespace orbel::qt
