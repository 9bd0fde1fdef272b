#include "tests/desktop/harness/OrbelAgent.h"

#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <cstdlib>
#include <stdexcept>

namespace orbel::test {

OrbelAgent::OrbelAgent(DesktopSession& session, const OrbelAgentOptions& options)
    : m_session(session), m_log(session.freshLogFile("orbelmenu")),
      m_process(session.start(m_log.stem().string(), {executable()}, options.changes)) {
  const auto isReady = [&] {
    if (options.readyText) return logContains(*options.readyText);
    return session.bus().processOf(kBusName) == pid() && session.bus().answers(kBusName, kObjectPath);
  };
  const auto isDecided = [&] { return !isRunning() || isReady(); };
  const auto result = waitFor(isDecided, "orbelmenu is ready");
  if (result && isRunning()) return;
  throw std::runtime_error((result ? "orbelmenu has ended at once" : std::string(result.message())) + ":\n" +
                           logText());
}

OrbelAgent::~OrbelAgent() {
  m_process->terminate();
}

std::string OrbelAgent::executable() {
  const char* chosen = std::getenv("ORBELMENU_EXECUTABLE");
  return chosen && *chosen ? chosen : ORBELMENU_EXECUTABLE;
}

std::string OrbelAgent::logText() const {
  return readFile(m_log);
}

bool OrbelAgent::logContains(const std::string& text) const {
  return logText().find(text) != std::string::npos;
}

std::vector<xcb_window_t> OrbelAgent::menuWindows() const {
  return m_session.windows().overrideRedirectWindowsOf(m_process->pid());
}

testing::AssertionResult OrbelAgent::activate() {
  return m_session.bus().activate(kBusName, kObjectPath);
}

testing::AssertionResult OrbelAgent::activateAction(const std::string& action) {
  return m_session.bus().activateAction(kBusName, kObjectPath, action);
}

testing::AssertionResult OrbelAgent::quit() {
  // It may have ended before it has answered: what counts is that it ends.
  const auto sent = activateAction("quit");
  if (!m_process->waitForExit(kPatience)) {
    return testing::AssertionFailure() << "orbelmenu does not quit " << sent.message();
  }
  if (*m_process->exitStatus() == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "orbelmenu has ended with status " << *m_process->exitStatus();
}

} // namespace orbel::test
