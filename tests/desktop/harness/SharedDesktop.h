// The desktops that the cases of a test program share: for each description the first case starts one, and
// the next one gets it back as it was, with no program, window, file, bus name or held key of the case
// before. A case that fails, and one that says DesktopSession::markSpent(), leaves its desktop to no other;
// the rest end with the program.
//
// A fixture holds one as its first member, so that it outlives everything that works on the desktop.
#pragma once

#include "tests/desktop/harness/DesktopSession.h"

#include <memory>

namespace orbel::test {

class SharedDesktop {
public:
  // Throws std::runtime_error when some part of the desktop does not come up.
  explicit SharedDesktop(const DesktopSessionOptions& options = {});
  ~SharedDesktop();
  SharedDesktop(const SharedDesktop&) = delete;
  SharedDesktop& operator=(const SharedDesktop&) = delete;

  DesktopSession& session() { return *m_session; }

private:
  DesktopSessionOptions m_options;
  std::unique_ptr<DesktopSession> m_session;
};

} // namespace orbel::test
