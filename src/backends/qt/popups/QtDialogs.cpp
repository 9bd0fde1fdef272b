#include "backends/qt/popups/QtDialogs.h"

#include "backends/qt/popups/MessageDialog.h"
#include "backends/qt/popups/OpenPanelDialog.h"
#include "backends/qt/popups/TextPromptDialog.h"
#include "backends/qt/windows/ScreenSpace.h"
#include "platform/Surface.h"

#include <QApplication>
#include <QCursor>
#include <QFile>

#include <algorithm>
#include <utility>

namespace orbel::qt {

namespace {
bool floatingWindowIsShown() {
  const auto windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->isVisible() && window->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
  });
}

// On Qt's screen.
QPoint placeOfUser(const Surface* owner) {
  if (!owner) return QCursor::pos();
  const Rect frame = owner->frame();
  const Point place = owner->pointerLocation().value_or(Rect({}, frame.size).center());
  return ScreenSpace::toQt(Point{frame.minX() + place.x, frame.minY() + place.y});
}
} // namespace

QtDialogs::QtDialogs(PopUpRegistry& popUps, const TextServices& text, DialogHooks hooks)
    : m_popUps(popUps), m_text(text), m_hooks(std::move(hooks)) {}

QtDialogs::~QtDialogs() {
  for (const Running& running : m_running)
    running.dialog->disconnect();
}

void QtDialogs::runTextPrompt(const TextPrompt& prompt, const Surface* owner,
                              std::function<void(std::optional<std::string>)> done) {
  auto dialog = std::make_unique<TextPromptDialog>(prompt);
  dialog->appearOnScreenAt(placeOfUser(owner));
  const auto& line = *dialog;
  run(std::move(dialog), [&line, done = std::move(done)](Outcome outcome) -> std::function<void()> {
    std::optional<std::string> text;
    if (outcome == Outcome::accepted) text = line.text().toStdString();
    return [done, text = std::move(text)] {
      if (done) done(text);
    };
  });
}

void QtDialogs::runAlert(const Alert& alert, const Surface* owner, std::function<void()> done) {
  const auto localized = m_text.localized(alert.button);
  auto dialog = std::make_unique<MessageDialog>(MessageDialog::Contents{
      .picture = alert.isCritical ? MessageDialog::criticalPicture() : MessageDialog::programPicture(),
      .message = QString::fromStdString(alert.message),
      .explanation = QString::fromStdString(alert.informativeText),
      .button = QString::fromStdString(localized)});
  dialog->appearOnScreenAt(placeOfUser(owner));
  run(std::move(dialog), [done = std::move(done)](Outcome) { return done ? done : [] {}; });
}

// The window manager places it, as every window that has not asked for a place.
void QtDialogs::runOpenPanel(const OpenPanel& panel, const Surface*,
                             std::function<void(std::optional<std::string>)> done) {
  auto dialog = std::make_unique<OpenPanelDialog>(panel, m_text);
  const auto& files = *dialog;
  run(std::move(dialog), [&files, done = std::move(done)](Outcome outcome) -> std::function<void()> {
    std::optional<std::string> path;
    if (outcome == Outcome::accepted) path = QFile::encodeName(files.chosenPath()).toStdString();
    return [done, path = std::move(path)] {
      if (done) done(path);
    };
  });
}

void QtDialogs::run(std::unique_ptr<QDialog> dialog,
                    std::function<std::function<void()>(Outcome)> takeAnswer) {
  if (m_running.empty() && m_hooks.willTakeFocus) m_hooks.willTakeFocus();
  QDialog& shown = *dialog;
  QObject::connect(
      &shown, &QDialog::finished, &shown, [this, &shown, takeAnswer = std::move(takeAnswer)](int result) {
        const auto answer = takeAnswer(result == QDialog::Accepted ? Outcome::accepted : Outcome::cancelled);
        closed(shown);
        // Last, because it may do anything, such as ask the next question.
        answer();
      });
  // A window of ours that floats would cover it.
  if (floatingWindowIsShown()) shown.setWindowFlag(Qt::WindowStaysOnTopHint);
  // Not modal for a window, as open() makes it: the menu's windows are not parents of dialogs, and all of
  // them have to wait.
  shown.setWindowModality(Qt::ApplicationModal);
  shown.setAttribute(Qt::WA_QuitOnClose, false);
  m_running.push_back({std::move(dialog), m_popUps.add(shown)});
  shown.show();
  shown.raise();
  shown.activateWindow();
  tellDialogInFront();
}

void QtDialogs::closed(QDialog& dialog) {
  const auto running = std::find_if(m_running.begin(), m_running.end(), [&](const Running& candidate) {
    return candidate.dialog.get() == &dialog;
  });
  if (running == m_running.end()) return;
  // Qt is still executing its code.
  running->dialog.release()->deleteLater();
  m_running.erase(running);
  tellDialogInFront();
  if (m_running.empty() && m_hooks.giveFocusBack) m_hooks.giveFocusBack();
}

void QtDialogs::tellDialogInFront() {
  if (!m_hooks.dialogInFrontChanged) return;
  m_hooks.dialogInFrontChanged(m_running.empty() ? std::nullopt
                                                 : std::optional(m_running.back().dialog->winId()));
}

} // namespace orbel::qt
