#include "tests/support/x11/WindowManager.h"

#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"
#include "tests/support/x11/WindowManagerSettings.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace orbel::test {

namespace {

constexpr std::string_view kCompositorSelection = "_NET_WM_CM_S0";

} // namespace

std::string_view nameOf(WindowManagerKind kind) {
  switch (kind) {
  case WindowManagerKind::none:
    return "no window manager";
  case WindowManagerKind::openbox:
    return "openbox";
  case WindowManagerKind::openboxWithPicom:
    return "openbox with picom";
  case WindowManagerKind::xfwm4:
    return "xfwm4";
  case WindowManagerKind::xfwm4Compositing:
    return "xfwm4 compositing";
  case WindowManagerKind::kwin:
    return "kwin";
  }
  return "";
}

bool isCompositing(WindowManagerKind kind) {
  return kind == WindowManagerKind::openboxWithPicom || kind == WindowManagerKind::xfwm4Compositing ||
         kind == WindowManagerKind::kwin;
}

WindowManager::WindowManager(WindowManagerKind kind, DisplayConnection& display, Environment environment,
                             const std::filesystem::path& configurationFolder,
                             const std::filesystem::path& logFolder)
    : m_kind(kind), m_display(display), m_environment(std::move(environment)),
      m_configurationFolder(configurationFolder), m_logFolder(logFolder) {
  writeWindowManagerSettings(m_configurationFolder);
  start();
}

void WindowManager::start() {
  switch (m_kind) {
  case WindowManagerKind::none:
    return;
  case WindowManagerKind::openbox:
  case WindowManagerKind::openboxWithPicom:
    startProgram("openbox", {"openbox", "--sm-disable", "--config-file",
                             (m_configurationFolder / "openbox/rc.xml").string()});
    break;
  case WindowManagerKind::xfwm4:
    startProgram("xfwm4", {"xfwm4", "--compositor=off"});
    break;
  case WindowManagerKind::xfwm4Compositing:
    startProgram("xfwm4", {"xfwm4", "--compositor=on", "--vblank=off"});
    break;
  case WindowManagerKind::kwin:
    startProgram("kwin", {"kwin_x11"});
    break;
  }
  const xcb_window_t probe = xcb_generate_id(m_display.get());
  xcb_create_window(m_display.get(), XCB_COPY_FROM_PARENT, probe, m_display.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto isReady = waitFor([&] { return isManaging() && isServing(probe); }, "the manager is ready");
  xcb_destroy_window(m_display.get(), probe);
  if (!isReady) {
    throw std::runtime_error(std::string(nameOf(m_kind)) + " does not manage the screen: " + log());
  }
  if (m_kind == WindowManagerKind::openboxWithPicom) {
    startProgram("picom", {"picom", "--config", (m_configurationFolder / "picom.conf").string()});
  }
  const auto draws = [this] { return m_display.selectionOwner(kCompositorSelection) != XCB_NONE; };
  if (isCompositing(m_kind) && !waitFor(draws, "the compositor is ready")) {
    throw std::runtime_error(std::string(nameOf(m_kind)) + " does not composite the screen: " + log());
  }
}

void WindowManager::stop() {
  while (!m_programs.empty())
    m_programs.pop_back();
  const auto isGone = [this] { return !isManaging() && !m_display.selectionOwner(kCompositorSelection); };
  if (!waitFor(isGone, "the window manager is gone")) throw std::runtime_error("a window manager is left");
}

void WindowManager::startProgram(const std::string& name, std::vector<std::string> command) {
  m_programs.push_back(std::make_unique<ChildProcess>(ProcessDescription{
      .command = std::move(command), .environment = m_environment, .log = m_logFolder / (name + ".log")}));
}

// Announcing itself is not yet working: openbox forgets the requests that come while it is still starting
// until something else happens. So it is asked for an answer, again with every look.
bool WindowManager::isServing(xcb_window_t probe) {
  constexpr std::string_view kQuestion = "_NET_REQUEST_FRAME_EXTENTS";
  const auto known = m_display.values(m_display.root(), "_NET_SUPPORTED").value_or(std::vector<xcb_atom_t>{});
  const bool isAnswering = std::find(known.begin(), known.end(), m_display.atom(kQuestion)) != known.end();
  if (!isAnswering) return !known.empty(); // KWin does not know the question, and loses no requests
  if (m_display.values(probe, "_NET_FRAME_EXTENTS")) return true;
  m_display.sendToWindowManager(probe, kQuestion, {});
  return false;
}

std::string WindowManager::log() const {
  std::string text;
  for (const char* program : {"openbox", "picom", "xfwm4", "kwin"}) {
    text += readFile(m_logFolder / (std::string(program) + ".log"));
  }
  return text;
}

// The root's property survives the manager that set it; the window it names does not.
bool WindowManager::isManaging() {
  constexpr std::string_view kCheck = "_NET_SUPPORTING_WM_CHECK";
  const auto named = m_display.value(m_display.root(), kCheck);
  return named && m_display.value(*named, kCheck) == named;
}

} // namespace orbel::test
