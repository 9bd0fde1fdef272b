#include "tests/desktop/harness/TestGrabber.h"

#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/Waiting.h"

#include <stdexcept>
#include <string>

namespace orbel::test {

TestGrabber::TestGrabber(DesktopSession& session, xcb_keysym_t key, std::uint16_t modifiers)
    : m_log(session.freshLogFile("test-grabber")),
      m_process(session.start(m_log.path().stem().string() + "-errors",
                              {TestWindow::clientPath("test-grabber").string(), std::to_string(key),
                               std::to_string(modifiers), m_log.path().string()})) {
  const auto hasAnswer = [this] { return m_log.contains("grabbed") || m_log.contains("bad-access"); };
  if (const auto result = waitFor(hasAnswer, "the grab is granted or refused"); !result) {
    throw std::runtime_error(result.message());
  }
}

} // namespace orbel::test
