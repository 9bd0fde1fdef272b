// Another program that holds a key combination for itself, or tries to (clients/test-grabber).
#pragma once

#include "tests/desktop/harness/ClientLog.h"
#include "tests/desktop/harness/DesktopSession.h"

#include <memory>

namespace orbel::test {

class TestGrabber {
public:
  // `modifiers` is a mask of XCB_MOD_MASK_ values; every variant with the lock modifiers is grabbed, too.
  // Returns when the server has granted or refused the grab.
  TestGrabber(DesktopSession& session, xcb_keysym_t key, std::uint16_t modifiers);

  // False where another program had the combination already.
  bool isGranted() const { return m_log.contains("grabbed"); }
  int pressCount() const { return m_log.count("pressed"); }
  const ClientLog& log() const { return m_log; }

private:
  ClientLog m_log;
  std::unique_ptr<ChildProcess> m_process;
};

} // namespace orbel::test
