#include "tests/desktop/editing/FileDragSource.h"

#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/TextFile.h"

#include <cctype>
#include <cstdio>
#include <stdexcept>

namespace orbel::test {

FileDragSource::FileDragSource(DesktopSession& session, const std::vector<std::string>& uris,
                               ScreenPoint place)
    : m_session(session), m_log(session.freshLogFile("file-drag")) {
  std::string list;
  for (const std::string& uri : uris)
    list += uri + "\r\n";
  const auto file = session.home() / (m_log.path().stem().string() + ".uris");
  writeFile(file, list);
  m_process = session.start(m_log.path().stem().string() + "-errors",
                            {TestWindow::clientPath("file-drag").string(), std::to_string(place.x),
                             std::to_string(place.y), file.string(), m_log.path().string()});
  const auto isThere = [this] {
    const auto mapped = m_log.linesOf("mapped");
    if (mapped.empty()) return false;
    m_window = static_cast<xcb_window_t>(std::stoul(mapped.front().substr(sizeof "mapped"), nullptr, 16));
    return m_session.windows().isViewable(m_window);
  };
  if (const auto result = waitFor(isThere, "the window with the files is open"); !result)
    throw std::runtime_error(result.message());
}

std::string FileDragSource::uriOf(const std::filesystem::path& path) {
  std::string uri = "file://";
  for (const char character : path.string()) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x80 &&
        (std::isalnum(byte) || std::string_view("/._-").find(character) != std::string::npos)) {
      uri += character;
    } else {
      char escaped[4];
      std::snprintf(escaped, sizeof escaped, "%%%02X", unsigned{byte});
      uri += escaped;
    }
  }
  return uri;
}

ScreenPoint FileDragSource::grip() const {
  return m_session.windows().geometry(m_window).value().center();
}

testing::AssertionResult FileDragSource::waitUntilFinished(const std::string& action) const {
  return waitForResult(
      [&]() -> testing::AssertionResult {
        const auto lines = m_log.linesOf("finished");
        if (!lines.empty() && lines.back() == "finished " + action) return testing::AssertionSuccess();
        auto failure = testing::AssertionFailure();
        for (const std::string& line : m_log.lines())
          failure << line << "; ";
        return failure;
      },
      kPatience, "the drop is finished with " + action);
}

testing::AssertionResult FileDragSource::waitForStatus(const std::string& action) const {
  return waitFor(
      [&] {
        const auto lines = m_log.linesOf("status");
        return !lines.empty() && lines.back() == "status " + action;
      },
      "the badge says " + action);
}

} // namespace orbel::test
