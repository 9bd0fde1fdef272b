#include "tests/desktop/harness/DesktopMemory.h"

#include "tests/desktop/harness/SessionProcesses.h"
#include "tests/support/base/Waiting.h"
#include "tests/support/x11/XcbReply.h"

#include <algorithm>
#include <csignal>
#include <iostream>
#include <iterator>
#include <unistd.h>
#include <utility>

namespace orbel::test {

DesktopMemory::DesktopMemory(std::filesystem::path folder, std::filesystem::path runtimeFolder,
                             DisplayConnection& display)
    : m_folder(std::move(folder)), m_runtimeFolder(std::move(runtimeFolder)), m_display(display),
      m_files(files()), m_rootProperties(rootProperties()) {
  const auto processes = processesOfSession(m_runtimeFolder);
  m_processes.insert(processes.begin(), processes.end());
}

bool DesktopMemory::restore(Windows& windows, bool hasWindowManager) {
  if (!endOtherProcesses() || !waitForTheirWindows(windows)) return false;
  removeOtherFiles();
  // Of a window manager's properties some come with the first window.
  if (!hasWindowManager) forgetFocusAndProperties();
  return true;
}

bool DesktopMemory::endOtherProcesses() const {
  bool isWhole = true;
  const auto areOnlyOwnLeft = [&] {
    const auto running = processesOfSession(m_runtimeFolder);
    const std::set<pid_t> all(running.begin(), running.end());
    isWhole = std::includes(all.begin(), all.end(), m_processes.begin(), m_processes.end());
    for (const pid_t process : all) {
      if (!m_processes.contains(process)) ::kill(process, SIGKILL);
    }
    return !isWhole || all.size() == m_processes.size();
  };
  const auto result = waitFor(areOnlyOwnLeft, "the programs of the case have ended");
  if (!result) std::cerr << result.message() << '\n';
  return result && isWhole;
}

bool DesktopMemory::waitForTheirWindows(const Windows& windows) const {
  const auto areGone = [&]() -> testing::AssertionResult {
    for (const xcb_window_t window : windows.viewable()) {
      const auto process = windows.processOf(window);
      if (!process || (*process != ::getpid() && !m_processes.contains(*process)))
        return testing::AssertionFailure() << "window " << window << " of " << process.value_or(0);
    }
    if (!windows.mappingOrder().empty()) return testing::AssertionFailure() << "a window is listed";
    return testing::AssertionSuccess();
  };
  const auto result = waitFor(areGone, "the windows of the case are gone");
  if (!result) std::cerr << result.message() << '\n';
  return result;
}

void DesktopMemory::removeOtherFiles() const {
  for (const auto& file : files()) {
    if (!m_files.contains(file)) std::filesystem::remove_all(file);
  }
}

void DesktopMemory::forgetFocusAndProperties() const {
  for (const xcb_atom_t property : rootProperties()) {
    const bool isOwn =
        std::find(m_rootProperties.begin(), m_rootProperties.end(), property) != m_rootProperties.end();
    if (!isOwn) xcb_delete_property(m_display.get(), m_display.root(), property);
  }
  xcb_set_input_focus(m_display.get(), XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT,
                      XCB_CURRENT_TIME);
  m_display.roundTrip();
}

// The entries of the session's folders, two levels deep.
std::set<std::filesystem::path> DesktopMemory::files() const {
  std::set<std::filesystem::path> all;
  for (const auto& folder : std::filesystem::directory_iterator(m_folder)) {
    if (!folder.is_directory()) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
      all.insert(entry.path());
  }
  return all;
}

std::vector<xcb_atom_t> DesktopMemory::rootProperties() const {
  const auto cookie = xcb_list_properties(m_display.get(), m_display.root());
  const XcbReply<xcb_list_properties_reply_t> reply(
      xcb_list_properties_reply(m_display.get(), cookie, nullptr));
  if (!reply) return {};
  const xcb_atom_t* first = xcb_list_properties_atoms(reply.get());
  return {first, first + xcb_list_properties_atoms_length(reply.get())};
}

} // namespace orbel::test
