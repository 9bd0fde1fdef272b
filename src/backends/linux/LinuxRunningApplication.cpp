#include "backends/linux/LinuxRunningApplication.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace orbel::linux {

LinuxRunningApplication::LinuxRunningApplication(common::TopLevelWindows& windows,
                                                 std::optional<ProcessRecord> process, std::string groupName)
    : m_windows(windows), m_process(std::move(process)), m_groupName(std::move(groupName)) {}

std::int32_t LinuxRunningApplication::processIdentifier() const {
  return m_process ? m_process->processIdentifier : -1;
}

std::optional<std::string> LinuxRunningApplication::executablePath() const {
  return m_process ? m_process->executablePath : std::nullopt;
}

ActivationPolicy LinuxRunningApplication::activationPolicy() const {
  if (processIdentifier() == ::getpid() || m_ordinaryWindows.empty()) return ActivationPolicy::accessory;
  return ActivationPolicy::regular;
}

bool LinuxRunningApplication::isTerminated() const {
  if (!m_process) return m_ordinaryWindows.empty() && m_otherWindows.empty();
  return ProcessRecord::startTimeOf(m_process->processIdentifier) != m_process->startTime;
}

bool LinuxRunningApplication::activate(ActivationReason reason) {
  if (reason == ActivationReason::restore) {
    if (m_activeWindow && hasWindow(*m_activeWindow)) return m_windows.restore(*m_activeWindow, m_summonMark);
    if (m_ordinaryWindows.empty()) return false;
    return m_windows.restore(m_ordinaryWindows.back(), m_summonMark);
  }
  if (m_ordinaryWindows.empty()) return false;
  const bool knowsLast = m_activeWindow && std::find(m_ordinaryWindows.begin(), m_ordinaryWindows.end(),
                                                     *m_activeWindow) != m_ordinaryWindows.end();
  return m_windows.activate(knowsLast ? *m_activeWindow : m_ordinaryWindows.back());
}

bool LinuxRunningApplication::isEqual(const RunningApplication& other) const {
  if (this == &other) return true;
  const auto* record = dynamic_cast<const LinuxRunningApplication*>(&other);
  if (!record || m_process.has_value() != record->m_process.has_value()) return false;
  if (!m_process) return m_groupName == record->m_groupName;
  return m_process->processIdentifier == record->m_process->processIdentifier &&
         m_process->startTime == record->m_process->startTime;
}

void LinuxRunningApplication::setWindows(std::vector<std::uint64_t> ordinary,
                                         std::vector<std::uint64_t> others) {
  m_ordinaryWindows = std::move(ordinary);
  m_otherWindows = std::move(others);
}

void LinuxRunningApplication::rememberActiveWindow(std::uint64_t window, std::uint64_t summonMark) {
  m_activeWindow = window;
  m_summonMark = summonMark;
}

bool LinuxRunningApplication::hasWindow(std::uint64_t window) const {
  const auto holds = [window](const std::vector<std::uint64_t>& list) {
    return std::find(list.begin(), list.end(), window) != list.end();
  };
  return holds(m_ordinaryWindows) || holds(m_otherWindows);
}

} // namespace orbel::linux
