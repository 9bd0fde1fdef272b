// A message dialog with one line to type into. The line has the keyboard from the start. Made by QtDialogs.
#pragma once

#include "backends/qt/popups/MessageDialog.h"
#include "platform/Dialogs.h"

#include <QString>

class QLineEdit;

namespace orbel::qt {

class TextPromptDialog final : public MessageDialog {
public:
  explicit TextPromptDialog(const TextPrompt& prompt);

  // What was typed, with a space for each line break.
  QString text() const;

private:
  QLineEdit* m_line;
};

} // namespace orbel::qt
