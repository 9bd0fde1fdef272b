// Takes the keyboard while the user records a shortcut, so that the combination typed reaches neither other
// programs nor the hot keys that are registered. Used by the shortcut recorder alone. Main thread only.
#pragma once

#include "foundation/Registration.h"
#include "foundation/Result.h"
#include "scene/Event.h"

#include <functional>

namespace orbel {

class KeyRecorder {
public:
  struct Handlers {
    // Every key press and every change of a modifier. True when the event is swallowed; otherwise it is
    // passed on to the program's own window as if no recorder were listening.
    std::function<bool(const KeyEvent&)> keyPressed;
    // The window that holds the recorder has lost the keyboard focus.
    std::function<void()> focusLost;
  };
  virtual ~KeyRecorder() = default;

  // Listens while the registration lives, which may end from within a handler. One recording at a time. Fails
  // when the keyboard cannot be taken.
  virtual Result<Registration> record(Handlers handlers) = 0;
};

} // namespace orbel
