#include "tests/desktop/harness/DesktopSession.h"

#include "tests/desktop/harness/SessionProcesses.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"
#include "tests/support/x11/KeyboardGroup.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace orbel::test {

namespace {

constexpr std::size_t kPrintedLogLines = 120;

std::string inheritedPath() {
  const char* path = std::getenv("PATH");
  return path ? path : "/usr/bin:/bin";
}

void printLog(const std::filesystem::path& file) {
  const auto lines = readLines(file);
  if (lines.empty()) return;
  std::cerr << "---- " << file.filename().string() << " (" << lines.size() << " lines)\n";
  const std::size_t first = lines.size() > kPrintedLogLines ? lines.size() - kPrintedLogLines : 0;
  for (std::size_t line = first; line < lines.size(); ++line)
    std::cerr << lines[line] << '\n';
}

} // namespace

DesktopSession::DesktopSession(const DesktopSessionOptions& options)
    : m_folder("orbel-desktop"), m_entries(dataFolder(), configurationFolder()),
      m_preferences(configurationFolder() / "orbelmenu/preferences.plist") {
  makeFolders();
  makeEnvironment();
  m_server.emplace(m_environment, logFile("xvfb"), options.reach);
  m_environment["DISPLAY"] = m_server->name();
  m_display = std::make_unique<DisplayConnection>(m_server->name());
  if (options.bus == BusPresence::running) {
    // The bus gives its environment to the services that it starts, so the address must stand in
    // it beforehand.
    const std::string address = "unix:path=" + (runtimeFolder() / "bus").string();
    m_environment["DBUS_SESSION_BUS_ADDRESS"] = address;
    m_bus.emplace(m_environment, m_folder.path() / "bus", address, logFile("bus"));
  } else {
    // Without an address programs would look for the bus of the machine's own session.
    m_environment["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
  }
  m_windows.emplace(*m_display);
  m_input.emplace(*m_display);
  m_screen.emplace(*m_display, ORBEL_PICTURE_FOLDER);
  startWindowManager(options);
  m_memory.emplace(m_folder.path(), runtimeFolder(), *m_display);
}

DesktopSession::~DesktopSession() {
  if (testing::Test::HasFailure()) leaveEvidence();
  m_screen.reset();
  m_input.reset();
  m_windows.reset();
  m_windowManager.reset();
  m_wallpaper.reset();
  m_bus.reset();
  m_display.reset();
  m_server.reset();
  endProcessesOfSession(runtimeFolder());
}

void DesktopSession::makeFolders() {
  for (const char* name :
       {"home", "config", "data", "cache", "state", "run", "share", "logs", "bin", "etc"}) {
    std::filesystem::create_directory(m_folder.path() / name);
  }
  std::filesystem::permissions(runtimeFolder(), std::filesystem::perms::owner_all);
  // Types and icons are the machine's; its applications are not.
  for (const char* name : {"mime", "icons"}) {
    std::filesystem::create_directory_symlink(std::filesystem::path("/usr/share") / name,
                                              dataFolder() / name);
  }
}

void DesktopSession::makeEnvironment() {
  const auto folder = [this](const char* name) { return (m_folder.path() / name).string(); };
  m_environment = {{"PATH", inheritedPath()},
                   {"LANG", "C.UTF-8"},
                   {"HOME", home().string()},
                   {"XDG_CONFIG_HOME", configurationFolder().string()},
                   {"XDG_CONFIG_DIRS", folder("etc")},
                   {"XDG_DATA_HOME", userDataFolder().string()},
                   {"XDG_DATA_DIRS", dataFolder().string()},
                   {"XDG_CACHE_HOME", folder("cache")},
                   {"XDG_STATE_HOME", folder("state")},
                   {"XDG_RUNTIME_DIR", runtimeFolder().string()},
                   {"XDG_SESSION_TYPE", "x11"},
                   {"GIO_USE_VFS", "local"},
                   {"GSETTINGS_BACKEND", "memory"},
                   {"NO_AT_BRIDGE", "1"},
                   {"LIBGL_ALWAYS_SOFTWARE", "1"}};
  for (const char* name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) m_environment[name] = value;
  }
}

void DesktopSession::startWindowManager(const DesktopSessionOptions& options) {
  if (options.background == Background::wallpaper) m_wallpaper.emplace(*m_display);
  const bool isXfce = options.windowManager == WindowManagerKind::xfwm4 ||
                      options.windowManager == WindowManagerKind::xfwm4Compositing;
  if (isXfce) bus().offerInstalledService("org.xfce.Xfconf");
  Environment environment = m_environment;
  // Themes and scripts of the managers lie there; the programs under test do not see that folder.
  environment["XDG_DATA_DIRS"] += ":/usr/local/share:/usr/share";
  environment["KDE_DEBUG"] = "1"; // no crash dialog
  m_windowManager.emplace(options.windowManager, *m_display, environment, configurationFolder(),
                          m_folder.path() / "logs");
  if (!m_wallpaper || options.windowManager != WindowManagerKind::kwin) return;
  m_wallpaper->showAsDesktopWindow();
  const auto isShown = [this] { return m_windows->isViewable(m_wallpaper->desktopWindow()); };
  if (!waitFor(isShown, "the wallpaper is shown")) throw std::runtime_error("the wallpaper is not shown");
}

std::filesystem::path DesktopSession::freshLogFile(const std::string& prefix) const {
  for (int number = 1;; ++number) {
    auto file = logFile(prefix + '-' + std::to_string(number));
    if (!std::filesystem::exists(file)) return file;
  }
}

void DesktopSession::restartWindowManager() {
  m_windowManager->stop();
  m_windowManager->start();
}

std::unique_ptr<ChildProcess> DesktopSession::start(const std::string& name,
                                                    const std::vector<std::string>& command,
                                                    const Environment& changes) {
  Environment environment = m_environment;
  for (const auto& [key, value] : changes)
    environment[key] = value;
  return std::make_unique<ChildProcess>(ProcessDescription{
      .command = command, .environment = environment, .log = logFile(name), .folder = home()});
}

RunResult DesktopSession::run(const std::vector<std::string>& command, const Environment& changes) {
  const std::string name = "run-" + std::to_string(++m_runCount);
  Environment environment = m_environment;
  for (const auto& [key, value] : changes)
    environment[key] = value;
  ChildProcess process(ProcessDescription{.command = command,
                                          .environment = environment,
                                          .log = logFile(name + "-errors"),
                                          .output = logFile(name + "-output"),
                                          .folder = home()});
  if (!process.waitForExit(kPatience)) throw std::runtime_error(command.front() + " does not come to an end");
  return {*process.exitStatus(), readFile(logFile(name + "-output")), readFile(logFile(name + "-errors"))};
}

void DesktopSession::setKeyboardLayout(const std::vector<std::string>& words) {
  std::vector<std::string> command = {"setxkbmap"};
  command.insert(command.end(), words.begin(), words.end());
  m_hasOtherLayout = true;
  if (const RunResult result = run(command); result.exitStatus != 0)
    throw std::runtime_error("setxkbmap fails: " + result.errors);
}

bool DesktopSession::restore() try {
  if (m_isSpent) return false;
  m_input.emplace(*m_display); // the earlier hand releases what it holds
  if (m_hasOtherLayout) {
    setKeyboardLayout({"-layout", "us", "-variant", "", "-option", ""});
    m_hasOtherLayout = false;
  }
  unlockKeyboard(m_display->get());
  m_input->movePointer({VirtualDisplay::kWidth / 2, VirtualDisplay::kHeight / 2});
  m_entries = DesktopEntries(dataFolder(), configurationFolder());
  return m_memory->restore(*m_windows, m_windowManager->kind() != WindowManagerKind::none);
} catch (const std::exception& error) {
  std::cerr << "the desktop cannot be used again: " << error.what() << '\n';
  return false;
}

std::filesystem::path DesktopSession::copyProgram(const std::filesystem::path& program,
                                                  const std::string& name) {
  const std::filesystem::path copy = m_folder.path() / "bin" / name;
  std::filesystem::copy_file(program, copy);
  return copy;
}

void DesktopSession::leaveEvidence() noexcept {
  try {
    m_folder.keep();
    std::cerr << "The session's folder stays: " << m_folder.path().string() << '\n';
    for (const auto& entry : std::filesystem::directory_iterator(m_folder.path() / "logs"))
      printLog(entry.path());
    if (m_screen) m_screen->capture().savePng(m_folder.path() / "screen.png");
  } catch (const std::exception& error) {
    std::cerr << "cannot keep all evidence: " << error.what() << '\n';
  }
}

} // namespace orbel::test
