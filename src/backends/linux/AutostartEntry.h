// The program's entry in the user's autostart folder (the autostart standard of the freedesktop desktops):
// `<configuration folder>/autostart/org.orbelmenu.OrbelMenu.desktop`. What others have added to the entry is
// kept. Made by main, used by the settings store. Main thread only.
#pragma once

#include "backends/linux/FolderWatch.h"
#include "foundation/Observers.h"
#include "platform/LoginItem.h"

#include <memory>
#include <optional>
#include <string>

namespace orbel {

class AutostartEntry : public LoginItem {
public:
  // The folder is $XDG_CONFIG_HOME; the executable is an absolute path, empty when it is unknown.
  AutostartEntry(const std::string& configurationFolder, std::string executable);
  ~AutostartEntry() override;
  AutostartEntry(const AutostartEntry&) = delete;
  AutostartEntry& operator=(const AutostartEntry&) = delete;

  // Not registered when there is no entry, or one that is hidden, disabled or broken: desktops skip those.
  State state() const override;
  bool setRegistered(bool registered) override;
  // Nothing is told while the folder does not exist.
  Registration observeChanges(std::function<void()> block) override;

  const std::string& path() const { return m_path; }

  // The file that this process runs, without the mark that the kernel leaves when an update has replaced it.
  static std::string ownExecutable();
  // A path as the one word of an Exec line.
  static std::string execWord(const std::string& path);

private:
  std::optional<std::string> registerEntry(); // the cause when it failed
  std::optional<std::string> removeEntry() const;
  void watch();

  std::string m_path;
  std::string m_executable;
  std::unique_ptr<FolderWatch> m_watch;
  std::shared_ptr<Observers<>> m_observers;
};

} // namespace orbel
