// Text prompt, alert and open panel as windows of the desktop. Each is modal for the program, takes the
// keyboard focus and notifies the window system, which keeps the menu below it and gives the focus back. Used
// by the menu controllers and the settings.
#pragma once

#include "backends/qt/popups/PopUpRegistry.h"
#include "foundation/Registration.h"
#include "platform/Dialogs.h"
#include "platform/TextServices.h"

#include <QtGui/qwindowdefs.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QDialog;

namespace orbel::qt {

// What the window system does around dialogs; each may be empty.
struct DialogHooks {
  // Before the first dialog is shown: note which window is active.
  std::function<void()> willTakeFocus;
  // The dialog in front was shown or changed: surfaces belong below this window. Nothing once the last one
  // has closed.
  std::function<void(std::optional<WId> window)> dialogInFrontChanged;
  // After the last dialog has closed: the window noted above gets the focus again.
  std::function<void()> giveFocusBack;
};

class QtDialogs final : public Dialogs {
public:
  // The registry and the text services are borrowed. Dialogs still open when this object is destroyed are
  // closed unanswered: whoever asked no longer exists by then.
  QtDialogs(PopUpRegistry& popUps, const TextServices& text, DialogHooks hooks);
  ~QtDialogs() override;
  QtDialogs(const QtDialogs&) = delete;
  QtDialogs& operator=(const QtDialogs&) = delete;

  // Line breaks in what was typed come back as spaces.
  void runTextPrompt(const TextPrompt& prompt, const Surface* owner,
                     std::function<void(std::optional<std::string>)> done) override;
  void runAlert(const Alert& alert, const Surface* owner, std::function<void()> done) override;
  // Folders can be walked through whether or not they can be chosen.
  void runOpenPanel(const OpenPanel& panel, const Surface* owner,
                    std::function<void(std::optional<std::string>)> done) override;

private:
  enum class Outcome { accepted, cancelled };
  struct Running {
    std::unique_ptr<QDialog> dialog;
    Registration popUp;
  };

  // Shows the dialog in front. When it has closed, the answer is taken from it, then the focus is given back,
  // then the answer is reported.
  void run(std::unique_ptr<QDialog> dialog, std::function<std::function<void()>(Outcome)> takeAnswer);
  void closed(QDialog& dialog);
  void tellDialogInFront();

  PopUpRegistry& m_popUps;
  const TextServices& m_text;
  DialogHooks m_hooks;
  std::vector<Running> m_running; // in the order of opening; the last is in front
};

} // namespace orbel::qt
