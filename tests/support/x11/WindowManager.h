// One of the window managers that the tests run under, alone or with a compositor, with settings of the
// tests' own: click to focus, no animations, no key bindings.
#pragma once

#include "tests/support/base/ChildProcess.h"
#include "tests/support/x11/DisplayConnection.h"

#include <filesystem>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orbel::test {

enum class WindowManagerKind { none, openbox, openboxWithPicom, xfwm4, xfwm4Compositing, kwin };

// Such as "openbox with picom", for parameterized tests.
std::string_view nameOf(WindowManagerKind kind);
bool isCompositing(WindowManagerKind kind);
inline std::ostream& operator<<(std::ostream& stream, WindowManagerKind kind) {
  return stream << nameOf(kind);
}

class WindowManager {
public:
  // Returns when the manager has taken over the screen (and its compositor draws it); throws
  // std::runtime_error with its log when it does not. The environment must name the display, the session bus
  // and the XDG folders.
  WindowManager(WindowManagerKind kind, DisplayConnection& display, Environment environment,
                const std::filesystem::path& configurationFolder, const std::filesystem::path& logFolder);

  WindowManagerKind kind() const { return m_kind; }
  // Ends the manager and its compositor and returns when the screen has neither.
  void stop();
  void start();

private:
  void startProgram(const std::string& name, std::vector<std::string> command);
  bool isManaging();
  bool isServing(xcb_window_t probe);
  std::string log() const;

  WindowManagerKind m_kind;
  DisplayConnection& m_display;
  Environment m_environment;
  std::filesystem::path m_configurationFolder;
  std::filesystem::path m_logFolder;
  std::vector<std::unique_ptr<ChildProcess>> m_programs;
};

} // namespace orbel::test
