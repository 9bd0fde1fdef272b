// Everything that one desktop gives the core, put together from the backends: the process's Platform while it
// lives. One subclass a display system; openDesktop() picks it. Owned by main.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel {

class Desktop {
public:
  struct Surroundings {
    // Variables of the environment that were set for this process alone; programs that we start do not
    // get them.
    std::vector<std::string> privateVariables;
    // Called when the display is lost. There is nothing to show any more, but the store is still to
    // be written.
    std::function<void()> lost;
  };

  virtual ~Desktop() = default;
};

// Chooses Qt's platform before the QApplication is made, unless the user has chosen it. Returns the variables
// that were set for that.
std::vector<std::string> prepareEnvironment();

// Whether there is a desktop for the platform that Qt runs on; logged where there is none. Needs a QApplication.
bool hasDesktop();

// The desktop of the platform that Qt runs on. Null, and logged, when there is none for it or its display
// cannot be reached. Needs a QApplication.
std::unique_ptr<Desktop> openDesktop(Desktop::Surroundings surroundings);

} // namespace orbel
