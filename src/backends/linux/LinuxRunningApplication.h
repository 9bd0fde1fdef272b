// One running program and its windows. Kept by the list of running applications, which passes it its windows;
// the core may hold it longer, after the program has ended.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "backends/linux/ProcessRecord.h"
#include "platform/RunningApplication.h"

#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {

class LinuxRunningApplication : public RunningApplication {
public:
  // How the program shows itself; may change while it runs, because a window may name its program after
  // it appeared.
  struct Appearance {
    std::string localizedName;
    std::string entryIdentifier; // empty without a desktop entry
    std::optional<std::string> bundlePath;
    ImagePointer icon;
  };

  // The process is none when its windows do not name it; then the group name distinguishes such programs.
  LinuxRunningApplication(common::TopLevelWindows& windows, std::optional<ProcessRecord> process,
                          std::string groupName);

  std::int32_t processIdentifier() const override; // -1 when unknown
  std::string localizedName() const override { return m_appearance.localizedName; }
  std::optional<std::string> bundlePath() const override { return m_appearance.bundlePath; }
  std::optional<std::string> executablePath() const override;
  ImagePointer icon() const override { return m_appearance.icon; }
  ActivationPolicy activationPolicy() const override;
  bool isTerminated() const override;
  bool canBeAskedToClose() const override { return m_process.has_value(); }
  bool activate(ActivationReason reason) override;
  bool isEqual(const RunningApplication& other) const override;

  const std::optional<ProcessRecord>& process() const { return m_process; }
  const std::string& groupName() const { return m_groupName; }
  const Appearance& appearance() const { return m_appearance; }
  void setAppearance(Appearance appearance) { m_appearance = std::move(appearance); }
  // In the order in which they were mapped; the ordinary ones apart, since only these come forward at the
  // user's wish.
  void setWindows(std::vector<std::uint64_t> ordinary, std::vector<std::uint64_t> others);
  const std::vector<std::uint64_t>& ordinaryWindows() const { return m_ordinaryWindows; }
  // The window that was active at the mark, for ActivationReason::restore and as the one to bring forward.
  void rememberActiveWindow(std::uint64_t window, std::uint64_t summonMark);

private:
  bool hasWindow(std::uint64_t window) const;

  common::TopLevelWindows& m_windows;
  const std::optional<ProcessRecord> m_process;
  const std::string m_groupName;
  Appearance m_appearance;
  std::vector<std::uint64_t> m_ordinaryWindows;
  std::vector<std::uint64_t> m_otherWindows;
  std::optional<std::uint64_t> m_activeWindow;
  std::uint64_t m_summonMark = 0;
};

} // namespace orbel::linux
