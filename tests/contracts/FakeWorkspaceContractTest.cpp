#include "tests/contracts/WorkspaceContract.h"
#include "tests/doubles/FakeWorkspace.h"

namespace orbel::contracts {
namespace {

class FakeWorkspaceSubject {
public:
  FakeWorkspaceSubject() {
    m_workspace.namedImages = {"Finder"};
    m_workspace.unknownApplications = {"No Such Application"};
  }
  Workspace& workspace() { return m_workspace; }
  std::string addFile(const std::string& name) { return add(name, Workspace::FileKind::file); }
  std::string addFolder(const std::string& name) { return add(name, Workspace::FileKind::directory); }
  std::string missingPath(const std::string& name) { return add(name, Workspace::FileKind::missing); }
  void rename(const std::string& from, const std::string& to) { m_workspace.move(from, to); }
  void remove(const std::string& path) { m_workspace.files[path] = Workspace::FileKind::missing; }
  std::string install(const std::string& name) {
    const auto bundle = add(name + ".desktop", Workspace::FileKind::file);
    m_workspace.displayNames[bundle] = name;
    return bundle;
  }
  void makeDefault(const std::string& bundle, const std::string& file) {
    m_workspace.defaultApplications[file] = bundle;
    m_workspace.urlHandlers["orbel-test"] = bundle;
  }
  RunningApplicationPointer start(const std::string& bundle) {
    // The lowest that is free, so that identifiers come back.
    std::int32_t pid = 1;
    const auto isUsed = [&](const auto& application) { return application->pid == pid; };
    while (std::any_of(m_workspace.running.begin(), m_workspace.running.end(), isUsed))
      ++pid;
    return m_workspace.launch(pid, m_workspace.displayName(bundle), bundle, "/programs/program");
  }
  void quit(const RunningApplicationPointer& record) { m_workspace.terminate(record->processIdentifier()); }
  void makeActive(const RunningApplicationPointer& record) { m_workspace.frontmost = record; }

private:
  std::string add(const std::string& name, Workspace::FileKind kind) {
    std::string path = "/files/" + name;
    m_workspace.files[path] = kind;
    return path;
  }
  FakeWorkspace m_workspace;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeWorkspaceContract, WorkspaceContract, FakeWorkspaceSubject);

} // namespace
} // namespace orbel::contracts
