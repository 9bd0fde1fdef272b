// The window as the core describes it, in every language of the program.
#include "app/SettingsWindowController.h"
#include "backends/qt/settings/QtSettingsForm.h"
#include "backends/qt/text/QtTextServices.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "tests/doubles/FakePlatform.h"

#include <QAbstractButton>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLocale>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

namespace orbel::qt {
namespace {

class SettingsLanguagesTest : public testing::TestWithParam<const char*> {
protected:
  SettingsLanguagesTest() {
    const QtTextServices texts(QLocale(QString::fromLatin1(GetParam())));
    QFile table(QStringLiteral(ORBEL_TRANSLATION_FOLDER "/de.json"));
    EXPECT_TRUE(table.open(QIODevice::ReadOnly));
    for (const QString& english : QJsonDocument::fromJson(table.readAll()).object().keys())
      m_platform.text.translations[english.toStdString()] = texts.localized(english.toStdString());
    m_controller = SettingsWindowController::create({});
    m_controller->window();
    m_form = std::make_unique<QtSettingsForm>(SettingsFormEnvironment{m_display, m_platform.runLoop, {}},
                                              m_platform.settingsFormFactory.last->description);
  }
  ~SettingsLanguagesTest() override {
    m_form = nullptr;
    m_controller = nullptr;
  }
  QtSettingsForm& form() { return *m_form; }
  void show() {
    form().window().makeKeyAndOrderFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form().widget()));
  }

private:
  PlainDisplayServer m_display;
  FakePlatform m_platform;
  std::shared_ptr<SettingsWindowController> m_controller;
  std::unique_ptr<QtSettingsForm> m_form;
};
INSTANTIATE_TEST_SUITE_P(Languages, SettingsLanguagesTest,
                         testing::Values("en_US", "de_DE", "fr_FR", "es_ES", "zh_CN"),
                         [](const auto& language) { return std::string(language.param); });

TEST_P(SettingsLanguagesTest, EachAcceleratorBelongsToOneControl) {
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

TEST_P(SettingsLanguagesTest, NothingIsCutOffAndLabelsAreAligned) {
  show();
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
