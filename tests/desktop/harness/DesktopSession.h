// A whole private desktop: home and XDG folders, X server, session bus, window manager, wallpaper. Everything
// ends with the object; after a failed test the logs of all programs are printed and the folder stays, with a
// picture of the screen in it. The cases of a program share one through SharedDesktop.
//
//   DesktopSession session({.windowManager = WindowManagerKind::openbox}); TestWindow window(session, {.title
//   = "Letters"}); session.input().clickAt(window.frame().center());
#pragma once

#include "tests/desktop/harness/DesktopEntries.h"
#include "tests/desktop/harness/DesktopMemory.h"
#include "tests/desktop/harness/PreferencesFile.h"
#include "tests/desktop/harness/SessionBus.h"
#include "tests/support/base/ChildProcess.h"
#include "tests/support/base/TemporaryDirectory.h"
#include "tests/support/x11/DisplayConnection.h"
#include "tests/support/x11/Input.h"
#include "tests/support/x11/Screen.h"
#include "tests/support/x11/VirtualDisplay.h"
#include "tests/support/x11/Wallpaper.h"
#include "tests/support/x11/WindowManager.h"
#include "tests/support/x11/Windows.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

enum class Background { wallpaper, plain };
enum class BusPresence { running, absent };

struct DesktopSessionOptions {
  WindowManagerKind windowManager = WindowManagerKind::openbox; // xfwm4 needs the bus
  Background background = Background::wallpaper;
  BusPresence bus = BusPresence::running;
  DisplayReach reach = DisplayReach::thisMachine;

  bool operator==(const DesktopSessionOptions&) const = default;
};

struct RunResult {
  int exitStatus = 0; // negative signal number where one ended it
  std::string output;
  std::string errors;
};

class DesktopSession {
public:
  // Throws std::runtime_error when some part of the desktop does not come up.
  explicit DesktopSession(const DesktopSessionOptions& options = {});
  ~DesktopSession();
  DesktopSession(const DesktopSession&) = delete;
  DesktopSession& operator=(const DesktopSession&) = delete;

  // What a program started in this session finds in its environment; complete, nothing of the test's own is
  // in it but PATH and the sanitizers' options.
  const Environment& environment() const { return m_environment; }
  std::filesystem::path home() const { return m_folder.path() / "home"; }
  std::filesystem::path configurationFolder() const { return m_folder.path() / "config"; } // $XDG_CONFIG_HOME
  std::filesystem::path userDataFolder() const { return m_folder.path() / "data"; }        // $XDG_DATA_HOME
  std::filesystem::path dataFolder() const { return m_folder.path() / "share"; }           // $XDG_DATA_DIRS
  std::filesystem::path runtimeFolder() const { return m_folder.path() / "run"; }
  std::filesystem::path logFile(const std::string& name) const {
    return m_folder.path() / "logs" / (name + ".log");
  }
  // "<prefix>-1.log" and so on: for programs that a test starts several times.
  std::filesystem::path freshLogFile(const std::string& prefix) const;

  DisplayConnection& display() { return *m_display; }
  Windows& windows() { return *m_windows; }
  Input& input() { return *m_input; }
  Screen& screen() { return *m_screen; }
  DesktopEntries& entries() { return m_entries; }
  PreferencesFile& preferences() { return m_preferences; }
  // Throws std::bad_optional_access in a session without a bus.
  SessionBus& bus() { return m_bus.value(); }
  VirtualDisplay& server() { return *m_server; }
  WindowManager& windowManager() { return *m_windowManager; }
  void restartWindowManager();

  // Starts a program whose log is logFile(name). It must end before the session does.
  std::unique_ptr<ChildProcess> start(const std::string& name, const std::vector<std::string>& command,
                                      const Environment& changes = {});
  // Runs a program to its end; throws std::runtime_error when it takes longer than kPatience.
  RunResult run(const std::vector<std::string>& command, const Environment& changes = {});
  // Runs setxkbmap with these words, such as "de"; restore() brings back the first layout. Throws
  // std::runtime_error when it fails.
  void setKeyboardLayout(const std::vector<std::string>& words);
  // A copy of the program under another name in the session's own folder, so that several desktop entries can
  // run the same client as different executables.
  std::filesystem::path copyProgram(const std::filesystem::path& program, const std::string& name);

  // No other case gets this desktop: for what restore() does not undo, such as another arrangement of
  // monitors, and for what may harm the server or the window manager.
  void markSpent() { m_isSpent = true; }
  // As it was when it came up: programs that were started since are ended, their windows are closed, files
  // are removed, keys and buttons are released, the pointer is where a new server has it. False when the
  // desktop cannot be used any more.
  bool restore();

private:
  void makeFolders();
  void makeEnvironment();
  void startWindowManager(const DesktopSessionOptions& options);
  void leaveEvidence() noexcept;

  TemporaryDirectory m_folder;
  Environment m_environment;
  DesktopEntries m_entries;
  PreferencesFile m_preferences;
  std::optional<VirtualDisplay> m_server;
  std::unique_ptr<DisplayConnection> m_display;
  std::optional<SessionBus> m_bus;
  std::optional<Wallpaper> m_wallpaper;
  std::optional<WindowManager> m_windowManager;
  std::optional<Windows> m_windows;
  std::optional<Input> m_input;
  std::optional<Screen> m_screen;
  int m_runCount = 0;
  bool m_isSpent = false;
  bool m_hasOtherLayout = false;
  std::optional<DesktopMemory> m_memory;
};

} // namespace orbel::test
