#include "tests/desktop/harness/TestWindow.h"

#include "tests/support/base/Waiting.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <stdexcept>

namespace orbel::test {

namespace {

std::string frameText(const ScreenRect& frame) {
  return std::to_string(frame.width) + 'x' + std::to_string(frame.height) + '+' + std::to_string(frame.x) +
         '+' + std::to_string(frame.y);
}

std::string colorText(const Rgb& color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", unsigned{color.red}, unsigned{color.green},
                unsigned{color.blue});
  return text;
}

} // namespace

const int TestWindow::kRaiseSignal = SIGUSR1;

TestWindow::TestWindow(DesktopSession& session, const TestWindowOptions& options)
    : m_session(session), m_log(session.freshLogFile("test-window")),
      m_process(session.start(m_log.path().stem().string() + "-errors", command(options, m_log.path()))) {
  const auto isThere = [this] {
    const auto mapped = m_log.linesOf("mapped");
    if (mapped.empty()) return false;
    m_window = static_cast<xcb_window_t>(std::stoul(mapped.front().substr(sizeof "mapped"), nullptr, 16));
    const auto managed = m_session.windows().mappingOrder();
    const bool isManaged = m_session.windowManager().kind() == WindowManagerKind::none ||
                           std::find(managed.begin(), managed.end(), m_window) != managed.end();
    return isManaged && m_session.windows().isViewable(m_window);
  };
  if (const auto result = waitFor(isThere, "the window \"" + options.title + "\" is open"); !result) {
    throw std::runtime_error(result.message());
  }
}

std::vector<std::string> TestWindow::command(const TestWindowOptions& options,
                                             const std::filesystem::path& log,
                                             const std::filesystem::path& program) {
  std::vector<std::string> result{program.string(),
                                  "--title",
                                  options.title,
                                  "--class",
                                  options.className,
                                  "--frame",
                                  frameText(options.frame),
                                  "--color",
                                  colorText(options.color),
                                  "--log",
                                  log.string()};
  if (!options.applicationId.empty()) {
    result.insert(result.end(), {"--application-id", options.applicationId});
  }
  if (!options.hasProcessId) result.emplace_back("--without-process-id");
  if (!options.acceptsInput) result.emplace_back("--without-input");
  if (options.takesFocus) result.emplace_back("--take-focus");
  if (options.asksBeforeClosing) result.emplace_back("--ask-before-closing");
  if (options.skipsTaskbar) result.emplace_back("--skip-taskbar");
  if (options.isFullscreen) result.emplace_back("--fullscreen");
  return result;
}

std::filesystem::path TestWindow::clientPath(const std::string& program) {
  return std::filesystem::path(ORBEL_TEST_CLIENT_FOLDER) / program;
}

ScreenRect TestWindow::frame() const {
  return m_session.windows().geometry(m_window).value_or(ScreenRect{});
}

} // namespace orbel::test
