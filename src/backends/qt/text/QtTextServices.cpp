#include "backends/qt/text/QtTextServices.h"

#include "backends/qt/resources/OwnResources.h"
#include "foundation/Log.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace orbel::qt {

namespace {
QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString tableLanguageOf(const QLocale& language) {
  switch (language.language()) {
  case QLocale::German:
    return QStringLiteral("de");
  case QLocale::French:
    return QStringLiteral("fr");
  case QLocale::Spanish:
    return QStringLiteral("es");
  case QLocale::Chinese:
    return language.script() == QLocale::SimplifiedHanScript ? QStringLiteral("zh_CN") : QString();
  default:
    return {};
  }
}

QHash<QString, QString> readTable(const QString& language) {
  QHash<QString, QString> table;
  if (language.isEmpty()) return table;
  QFile file(QStringLiteral(":/translations/%1.json").arg(language));
  QJsonParseError error;
  const QJsonDocument document =
      file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll(), &error) : QJsonDocument();
  if (!document.isObject()) {
    Log::error("The texts cannot be shown in the language " + language.toStdString() +
               ": its table is missing or damaged. English is used.");
    return table;
  }
  const QJsonObject texts = document.object();
  for (auto text = texts.begin(); text != texts.end(); ++text)
    table.insert(text.key(), text.value().toString());
  return table;
}

bool isAlphanumericPunctuationOrSymbolCategory(QChar::Category category) {
  // The categories are ordered: marks, numbers, separators, others, letters, punctuation, symbols.
  return category <= QChar::Number_Other || category >= QChar::Letter_Uppercase;
}
} // namespace

QtTextServices::QtTextServices(const QLocale& locale) : m_collator(locale) {
  m_collator.setCaseSensitivity(Qt::CaseInsensitive);
  OwnResources::load();
  m_table = readTable(tableLanguage(locale));
}

int QtTextServices::compareLocalizedCaseInsensitive(std::string_view left, std::string_view right) const {
  return m_collator.compare(toQString(left), toQString(right));
}

std::string QtTextServices::uppercased(std::string_view text) const {
  return toQString(text).toUpper().toStdString();
}

std::string QtTextServices::lowercased(std::string_view text) const {
  return toQString(text).toLower().toStdString();
}

bool QtTextServices::isAlphanumericPunctuationOrSymbol(std::string_view text) const {
  for (const char32_t character : toQString(text).toStdU32String()) {
    if (!isAlphanumericPunctuationOrSymbolCategory(QChar::category(character))) return false;
  }
  return true;
}

std::string QtTextServices::localized(std::string_view english) const {
  const auto found = m_table.constFind(toQString(english));
  return found == m_table.constEnd() || found->isEmpty() ? std::string(english) : found->toStdString();
}

QString QtTextServices::tableLanguage(const QLocale& locale) {
  // The languages come in the user's order; one that reads English before any of ours gets English.
  for (const QString& tag : locale.uiLanguages()) {
    const QLocale language(tag);
    const QString table = tableLanguageOf(language);
    if (!table.isEmpty() || language.language() == QLocale::English || language.language() == QLocale::C)
      return table;
  }
  return {};
}

} // namespace orbel::qt
