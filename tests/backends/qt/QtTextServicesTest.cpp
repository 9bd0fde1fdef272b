#include "backends/qt/text/QtTextServices.h"

#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

TEST(QtTextServicesTest, OrdersByTheLanguageOfTheUser) {
  // German sorts Ä with A, Swedish after Z.
  EXPECT_LT(QtTextServices(QLocale("de_DE")).compareLocalizedCaseInsensitive("Äpfel", "Zebra"), 0);
  EXPECT_GT(QtTextServices(QLocale("sv_SE")).compareLocalizedCaseInsensitive("Äpfel", "Zebra"), 0);
}

TEST(QtTextServicesTest, ChangesCaseBeyondAsciiAndWithoutRegardToTheLanguage) {
  for (const char* locale : {"en_US", "tr_TR"}) {
    const QtTextServices text{QLocale(QLatin1String(locale))};
    EXPECT_EQ(text.uppercased("iä1é"), "IÄ1É") << locale;
    EXPECT_EQ(text.lowercased("IÄÉ"), "iäé") << locale;
  }
}

TEST(QtTextServicesTest, KnowsAlphanumericPunctuationAndSymbolCharacters) {
  const QtTextServices text(kEnglish);
  for (const char* yes : {"", "a", "Z9", "ß", "٣", "中", "!", "_", "€", "^", "→", "\U0001F600", "e\u0301"}) {
    EXPECT_TRUE(text.isAlphanumericPunctuationOrSymbol(yes)) << yes;
  }
  for (const char* no : {" ", "a b", "\n", "\x1b", "\u00a0", "\u200b", "\u2028", "\uf704"}) {
    EXPECT_FALSE(text.isAlphanumericPunctuationOrSymbol(no));
  }
}

TEST(QtTextServicesTest, TranslatesTheProgramsTexts) {
  EXPECT_EQ(QtTextServices(QLocale("de_AT")).localized("Rename"), "Umbenennen");
  EXPECT_EQ(QtTextServices(QLocale("fr_CA")).localized("Rename"), "Renommer");
  EXPECT_EQ(QtTextServices(QLocale("es_MX")).localized("Rename"), "Renombrar");
  EXPECT_EQ(QtTextServices(QLocale("zh_CN")).localized("Rename"), "重命名");
}

TEST(QtTextServicesTest, ShowsEnglishWhereThereIsNoTranslation) {
  const test::LogCapture log;
  for (const char* locale : {"en_GB", "fi_FI", "C", "zh_TW"}) {
    EXPECT_EQ(QtTextServices(QLocale(QLatin1String(locale))).localized("Rename"), "Rename") << locale;
  }
  EXPECT_EQ(QtTextServices(QLocale("de_DE")).localized("A text nobody knows"), "A text nobody knows");
  EXPECT_TRUE(log.lines.empty());
}

} // namespace
} // namespace orbel::qt
