// The program out of which a test drags files (clients/file-drag), started in a session.
#pragma once

#include "tests/desktop/harness/ClientLog.h"
#include "tests/desktop/harness/DesktopSession.h"
#include "tests/support/base/Waiting.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orbel::test {

class FileDragSource {
public:
  // Drags what the lines say, URIs as they are; its window stands at the place. Throws std::runtime_error
  // when that does not appear.
  FileDragSource(DesktopSession& session, const std::vector<std::string>& uris, ScreenPoint place);

  // "file://" and the path, with everything escaped that is not plain ASCII.
  static std::string uriOf(const std::filesystem::path& path);

  // Where to take hold of the files.
  ScreenPoint grip() const;
  const ClientLog& log() const { return m_log; }
  ChildProcess& process() { return *m_process; }
  // The answer of the program that they were dropped on: "copy", "link" or "none".
  testing::AssertionResult waitUntilFinished(const std::string& action) const;
  testing::AssertionResult waitForStatus(const std::string& action) const;

private:
  DesktopSession& m_session;
  ClientLog m_log;
  std::unique_ptr<ChildProcess> m_process;
  xcb_window_t m_window = XCB_NONE;
};

} // namespace orbel::test
