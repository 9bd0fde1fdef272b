#include "backends/qt/popups/TextPromptDialog.h"

#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>

namespace orbel::qt {

namespace {
constexpr int kLineWidth = 200; // points
constexpr int kLineHeight = 24; // points; more where the user's font needs it

QString inOneLine(QString text) {
  static const QRegularExpression lineBreak(
      QStringLiteral("\\r\\n|[\\n\\r\\x{0b}\\x{0c}\\x{85}\\x{2028}\\x{2029}]"));
  return text.replace(lineBreak, QStringLiteral(" "));
}
} // namespace

TextPromptDialog::TextPromptDialog(const TextPrompt& prompt)
    : MessageDialog({.picture = programPicture(),
                     .message = QString::fromStdString(prompt.message),
                     .explanation = {},
                     .button = QString::fromStdString(prompt.button)}),
      m_line(new QLineEdit) {
  m_line->setPlaceholderText(inOneLine(QString::fromStdString(prompt.placeholder)));
  m_line->setFixedSize(kLineWidth, std::max(kLineHeight, m_line->sizeHint().height()));
  addControl(m_line);
  m_line->setFocus();
}

QString TextPromptDialog::text() const {
  return inOneLine(m_line->text());
}

} // namespace orbel::qt
