#include "tests/backends/x11/support/X11Test.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace orbel::test {

namespace {

// Focusing and raising on a click exist only as bindings; the keys of the default settings would take
// combinations.
constexpr const char* kOpenboxSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><focusLast>yes</focusLast></focus>
  <desktops><number>2</number><popupTime>0</popupTime></desktops>
  <keyboard/>
  <mouse><context name="Client">
    <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
  </context></mouse>
</openbox_config>
)";

} // namespace

void X11Test::SetUp() {
  m_earlierSink =
      Log::setSink([this](Log::Severity, const std::string& message) { m_log.push_back(message); });
  m_folder = makeFolder();
  // TCP so that a program can be one of another machine; -noreset, or the server forgets all with its last
  // client.
  m_server = std::make_unique<Program>(std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0",
                                                                "1000x800x24", "-noreset", "-listen", "tcp"},
                                       std::map<std::string, std::string>{});
  ASSERT_TRUE(iterateUntil([this] { return !m_server->lines().empty() || !m_server->isRunning(); }));
  ASSERT_FALSE(m_server->lines().empty()) << "Xvfb does not start";
  m_display = ":" + m_server->lines().front();
  m_driver = std::make_unique<Driver>(m_display);
  m_driver->moveTo(990, 790);
}

void X11Test::TearDown() {
  m_windowManager.reset();
  m_driver.reset();
  m_server.reset();
  std::filesystem::remove_all(m_folder);
  Log::setSink(m_earlierSink);
}

std::string X11Test::makeFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "x11-test-XXXXXX").string();
  if (!mkdtemp(path.data())) throw std::runtime_error("no temporary folder");
  return path;
}

std::unique_ptr<OtherClient> X11Test::otherClient(const std::vector<std::string>& options) {
  return std::make_unique<OtherClient>(m_display, options);
}

void X11Test::run(std::vector<std::string> command) {
  const std::string name = command.front();
  Program program(std::move(command), {{"DISPLAY", m_display}});
  ASSERT_TRUE(iterateUntil([&] { return !program.isRunning(); })) << name;
  ASSERT_EQ(program.exitStatus(), 0) << name;
}

void X11Test::startWindowManager(const std::string& name) {
  if (name.empty()) return;
  std::vector<std::string> command = {name};
  if (name == "openbox") {
    std::ofstream(m_folder + "/rc.xml") << kOpenboxSettings;
    command = {"openbox", "--sm-disable", "--config-file", m_folder + "/rc.xml"};
  }
  if (name == "xfwm4") command = {"dbus-run-session", "--", "xfwm4", "--compositor=off"};
  if (name == "kwin_x11") command = {"dbus-run-session", "--", "kwin_x11"};
  m_windowManager = std::make_unique<Program>(
      std::move(command), std::map<std::string, std::string>{{"DISPLAY", m_display},
                                                             {"HOME", m_folder},
                                                             {"XDG_CONFIG_HOME", m_folder},
                                                             {"XDG_CACHE_HOME", m_folder},
                                                             {"XDG_RUNTIME_DIR", m_folder}});
  // Announcing itself is not yet serving: a window manager that is still starting forgets windows that come
  // meanwhile.
  const auto isAnnounced = [this] {
    const auto named = m_driver->numbers(m_driver->root(), "_NET_SUPPORTING_WM_CHECK");
    return named.size() == 1 && m_driver->numbers(named[0], "_NET_SUPPORTING_WM_CHECK") == named;
  };
  ASSERT_TRUE(iterateUntil(isAnnounced)) << name << " does not start";
  bool isServing = false;
  for (int attempt = 0; attempt < 100 && !isServing; ++attempt) {
    const OtherClient probe(m_display, {"--title", "probe", "--window"});
    const auto isListed = [&] {
      const auto listed = m_driver->numbers(m_driver->root(), "_NET_CLIENT_LIST");
      return std::ranges::find(listed, probe.window()) != listed.end();
    };
    isServing = iterateUntil(isListed, std::chrono::milliseconds(300));
  }
  ASSERT_TRUE(isServing) << name << " does not manage windows";
}

void X11Test::stopWindowManager() {
  m_windowManager.reset();
}

bool X11Test::hasLogged(const std::string& part) const {
  return std::ranges::any_of(m_log,
                             [&](const std::string& line) { return line.find(part) != std::string::npos; });
}

} // namespace orbel::test
