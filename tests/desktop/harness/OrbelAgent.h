// The real program under test, running in a session.
#pragma once

#include "tests/desktop/harness/DesktopSession.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

struct OrbelAgentOptions {
  Environment changes = {}; // on top of the session's environment
  // Without a session bus there is no name to wait for: the agent counts as ready once its log has this text.
  std::optional<std::string> readyText = {};
};

class OrbelAgent {
public:
  static constexpr const char* kBusName = "org.orbelmenu.OrbelMenu";
  static constexpr const char* kObjectPath = "/org/orbelmenu/OrbelMenu";

  // Starts the program named by $ORBELMENU_EXECUTABLE, else the one of this build, and returns when it owns
  // its bus name and answers there. Preferences and desktop entries that it shall find must have been written
  // before. Throws std::runtime_error with its log when it does not get ready.
  explicit OrbelAgent(DesktopSession& session, const OrbelAgentOptions& options = {});
  // Quits it, by force if it does not answer.
  ~OrbelAgent();
  OrbelAgent(const OrbelAgent&) = delete;
  OrbelAgent& operator=(const OrbelAgent&) = delete;

  static std::string executable();

  pid_t pid() const { return m_process->pid(); }
  ChildProcess& process() { return *m_process; }
  bool isRunning() { return m_process->isRunning(); }
  std::string logText() const;
  bool logContains(const std::string& text) const;

  // Its viewable override-redirect windows (menu, sub-menu, bubbles, pop-ups), bottom to top.
  std::vector<xcb_window_t> menuWindows() const;

  testing::AssertionResult activate();
  // "show", "hide", "settings" or "quit".
  testing::AssertionResult activateAction(const std::string& action);
  // Asks it to quit over the bus; true when it then ends with exit status 0.
  testing::AssertionResult quit();

private:
  DesktopSession& m_session;
  std::filesystem::path m_log;
  std::unique_ptr<ChildProcess> m_process;
};

} // namespace orbel::test
