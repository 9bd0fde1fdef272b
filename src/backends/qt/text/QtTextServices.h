// Text services on Qt's Unicode tables and collation. Texts of the program are translated by the first of the
// user's languages that has a table (German, French, Spanish, simplified Chinese); English needs none.
#pragma once

#include "platform/TextServices.h"

#include <QCollator>
#include <QHash>
#include <QLocale>
#include <QString>

namespace orbel::qt {

class QtTextServices final : public TextServices {
public:
  explicit QtTextServices(const QLocale& locale = QLocale());

  int compareLocalizedCaseInsensitive(std::string_view left, std::string_view right) const override;
  // Independent of the language, so that the names of keys are the same everywhere.
  std::string uppercased(std::string_view text) const override;
  std::string lowercased(std::string_view text) const override;
  bool isAlphanumericPunctuationOrSymbol(std::string_view text) const override;
  std::string localized(std::string_view english) const override;

  // "de", "fr", "es" or "zh_CN"; empty for English and for languages without a table.
  static QString tableLanguage(const QLocale& locale);

private:
  QCollator m_collator;
  QHash<QString, QString> m_table;
};

} // namespace orbel::qt
