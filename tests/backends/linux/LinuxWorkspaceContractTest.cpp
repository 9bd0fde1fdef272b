#include "backends/linux/LinuxWorkspace.h"

#include "tests/backends/linux/FakeIconLoader.h"
#include "tests/backends/linux/FakeTopLevelWindows.h"
#include "tests/backends/linux/IdleProgram.h"
#include "tests/backends/linux/InstalledEntries.h"
#include "tests/contracts/WorkspaceContract.h"

#include <filesystem>
#include <map>
#include <memory>

namespace orbel::contracts {
using namespace linux;
namespace {

class LinuxWorkspaceSubject {
public:
  LinuxWorkspaceSubject() { IdleProgram::makeIdleExecutable(m_executable); }
  Workspace& workspace() { return m_workspace; }
  std::string addFile(const std::string& name) const {
    DesktopSandbox::write(missingPath(name), "x");
    return missingPath(name);
  }
  std::string addFolder(const std::string& name) const {
    std::filesystem::create_directory(missingPath(name));
    return missingPath(name);
  }
  std::string missingPath(const std::string& name) const { return m_folder + "/" + name; }
  static void rename(const std::string& from, const std::string& to) { std::filesystem::rename(from, to); }
  static void remove(const std::string& path) { std::filesystem::remove(path); }
  std::string install(const std::string& name) {
    const auto bundle = m_entries.add(
        name + ".desktop", "Name=" + name + "\nExec=/bin/true %u\nStartupWMClass=" + name + "Window\n");
    EXPECT_TRUE(test::iterateUntil([&] { return m_workspace.displayName(bundle) == name; }));
    return bundle;
  }
  void makeDefault(const std::string& bundle, const std::string& file) {
    const std::string identifier = std::filesystem::path(bundle).filename();
    DesktopSandbox::shared().setDefaults("text/plain=" + identifier +
                                         "\nx-scheme-handler/orbel-test=" + identifier + "\n");
    EXPECT_TRUE(test::iterateUntil([&] { return m_workspace.defaultApplicationForFile(file) == bundle; }));
    EXPECT_TRUE(test::iterateUntil([&] { return m_workspace.applicationForUrl("orbel-test:x") == bundle; }));
  }
  RunningApplicationPointer start(const std::string& bundle) {
    const auto window = ++m_lastWindow;
    auto program = std::make_unique<IdleProgram>(std::vector<std::string>{m_executable});
    const std::int32_t pid = program->processIdentifier();
    m_processes[pid] = {std::move(program), window};
    common::TopLevelWindow opened;
    opened.id = window;
    opened.processIdentifier = pid;
    opened.className = m_workspace.displayName(bundle) + "Window";
    m_windows.open(opened);
    for (const auto& record : m_workspace.runningApplications())
      if (record->processIdentifier() == pid) return record;
    return nullptr;
  }
  void quit(const RunningApplicationPointer& record) {
    const auto process = m_processes.find(record->processIdentifier());
    process->second.program->end();
    m_windows.close(process->second.window);
    m_processes.erase(process);
  }
  void makeActive(const RunningApplicationPointer& record) {
    m_windows.active = m_processes.at(record->processIdentifier()).window;
    m_windows.changed();
  }

private:
  struct Process {
    std::unique_ptr<IdleProgram> program;
    std::uint64_t window = 0;
  };
  const std::string m_folder = DesktopSandbox::shared().makeFolder();
  const std::string m_executable = DesktopSandbox::shared().makeFolder() + "/program";
  FakeTopLevelWindows m_windows;
  FakeIconLoader m_icons;
  linux::DesktopEntryIndex m_index;
  InstalledEntries m_entries{m_index};
  linux::LinuxWorkspace m_workspace{m_windows, m_icons};
  std::map<std::int32_t, Process> m_processes;
  std::uint64_t m_lastWindow = 0;
};

INSTANTIATE_TYPED_TEST_SUITE_P(LinuxWorkspaceContract, WorkspaceContract, LinuxWorkspaceSubject);

} // namespace
} // namespace orbel::contracts
