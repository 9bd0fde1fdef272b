// The tables of translated texts against each other and against the program's source.
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

const QStringList kLanguages{"de", "fr", "es", "zh_CN"};

QJsonObject table(const QString& language) {
  QFile file(QStringLiteral(ORBEL_TRANSLATION_FOLDER "/%1.json").arg(language));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QJsonDocument::fromJson(file.readAll()).object();
}

// The literal of `localized("…")`, also one of several lines.
QStringList localizedLiterals(const QString& source) {
  static const QRegularExpression call(QStringLiteral(R"re(localized\(\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\))re"));
  static const QRegularExpression piece(QStringLiteral(R"re("((?:[^"\\]|\\.)*)")re"));
  QStringList texts;
  for (auto calls = call.globalMatch(source); calls.hasNext();) {
    QString text;
    const QString literals = calls.next().captured(1);
    for (auto pieces = piece.globalMatch(literals); pieces.hasNext();)
      text += pieces.next().captured(1);
    texts << text.replace("\\n", "\n").replace("\\\"", "\"");
  }
  return texts;
}

TEST(TranslationsTest, EveryLanguageHasEveryText) {
  const QStringList texts = table("de").keys();
  ASSERT_GE(texts.size(), 29);
  for (const QString& language : kLanguages) {
    EXPECT_EQ(table(language).keys(), texts) << language.toStdString();
    for (const QString& text : texts) {
      EXPECT_FALSE(table(language)[text].toString().trimmed().isEmpty())
          << language.toStdString() << ": " << text.toStdString();
    }
  }
}

TEST(TranslationsTest, PlacesToFillInAndParagraphsAreTheSameInEveryLanguage) {
  for (const QString& language : kLanguages) {
    const QJsonObject texts = table(language);
    for (auto text = texts.begin(); text != texts.end(); ++text) {
      for (const char* part : {"%@", "\n"}) {
        EXPECT_EQ(text.key().count(QLatin1String(part)), text.value().toString().count(QLatin1String(part)))
            << language.toStdString() << ": " << text.key().toStdString();
      }
    }
  }
}

TEST(TranslationsTest, EveryTextThatTheSourceLooksUpIsTranslated) {
  const QStringList texts = table("de").keys();
  int found = 0;
  QDirIterator files(QStringLiteral(ORBEL_SOURCE_FOLDER), {"*.cpp", "*.h"}, QDir::Files,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    QFile file(files.next());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    for (const QString& text : localizedLiterals(QString::fromUtf8(file.readAll()))) {
      ++found;
      EXPECT_TRUE(texts.contains(text)) << file.fileName().toStdString() << ": " << text.toStdString();
    }
  }
  EXPECT_GT(found, 0);
}

} // namespace
} // namespace orbel::qt
