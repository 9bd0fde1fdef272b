// An ordinary program with one window of one colour (clients/test-window), started by a test or by a desktop
// entry that a test installs.
#pragma once

#include "tests/desktop/harness/ClientLog.h"
#include "tests/desktop/harness/DesktopSession.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orbel::test {

struct TestWindowOptions {
  std::string title = "Test window";
  std::string className = "TestWindow"; // both halves of WM_CLASS
  ScreenRect frame{100, 100, 300, 200}; // asked for as the user's own choice of place
  Rgb color{200, 60, 60};
  std::string applicationId = {}; // _GTK_APPLICATION_ID; none when empty
  bool hasProcessId = true;       // _NET_WM_PID
  bool acceptsInput = true;       // the input hint of WM_HINTS
  bool takesFocus = false;        // WM_TAKE_FOCUS
  bool asksBeforeClosing = false; // at a polite close a dialog comes up, and the window stays
  bool skipsTaskbar = false;
  bool isFullscreen = false;
};

class TestWindow {
public:
  // Returns when the window is viewable and, where there is a window manager, in its list. Throws
  // std::runtime_error when it does not appear.
  TestWindow(DesktopSession& session, const TestWindowOptions& options);

  // The command that shows such a window and writes its events to the log, for the Exec key of a
  // desktop entry.
  static std::vector<std::string> command(const TestWindowOptions& options, const std::filesystem::path& log,
                                          const std::filesystem::path& program = clientPath("test-window"));
  // Where a client program was built: "test-window", "test-grabber" or "document-viewer".
  static std::filesystem::path clientPath(const std::string& program);

  xcb_window_t id() const { return m_window; }
  pid_t pid() const { return m_process->pid(); }
  const ClientLog& log() const { return m_log; }
  ChildProcess& process() { return *m_process; }
  // The client area where it really is.
  ScreenRect frame() const;
  // Makes the program raise and activate its window by itself, as if it had just been used.
  void raiseItself() { m_process->sendSignal(kRaiseSignal); }

private:
  static const int kRaiseSignal;

  DesktopSession& m_session;
  ClientLog m_log;
  std::unique_ptr<ChildProcess> m_process;
  xcb_window_t m_window = XCB_NONE;
};

} // namespace orbel::test
