// The program's entry in the user's autostart folder (the autostart standard of the freedesktop desktops):
// `<configuration folder>/autostart/org.orbelmenu.OrbelMenu.desktop`. What others have added to the entry is
// kept. That it was registered is remembered in `<state folder>/orbelmenu/login-item`. Made by main, used by
// the settings store. Main thread only.
#pragma once

#include "backends/linux/FolderWatch.h"
#include "foundation/Observers.h"
#include "platform/LoginItem.h"

#include <memory>
#include <string>

namespace orbel::linux {

class LinuxLoginItem : public LoginItem {
public:
  // The folders are $XDG_CONFIG_HOME and $XDG_STATE_HOME; the executable is an absolute path, empty when it
  // is unknown.
  LinuxLoginItem(const std::string& configurationFolder, const std::string& stateFolder,
                 std::string executable);
  ~LinuxLoginItem() override;
  LinuxLoginItem(const LinuxLoginItem&) = delete;
  LinuxLoginItem& operator=(const LinuxLoginItem&) = delete;

  // Not registered when the entry is hidden, disabled or broken: desktops skip those; nor when the entry that
  // was written here has been removed. Undecided when there is none and was none.
  Result<State> state() const override;
  Result<> setRegistered(bool registered) override;
  Registration observeChanges(std::function<void()> block) override;

  const std::string& path() const { return m_path; }

  // The file that this process runs, without the mark that the kernel leaves when an update has replaced it.
  static std::string ownExecutable();
  // A path as the one word of an Exec line.
  static std::string execWord(const std::string& path);

private:
  Result<> registerEntry();
  Result<> removeEntry() const;
  void rememberRegistration(bool registered);
  void watch();
  // At the path, or at the nearest folder above it that is there; nothing when not even one could be watched.
  std::unique_ptr<FolderWatch> watchNearest(const std::string& path);
  void somethingChanged();

  std::string m_path;
  // A file that is there from a registration on, whoever made it, until it is taken back here. It
  // distinguishes an entry that was removed from one that never was, as where the preferences come from
  // another machine.
  std::string m_markPath;
  bool m_wasRegistered = false; // by this process; the mark may be impossible to write
  std::string m_executable;
  std::unique_ptr<FolderWatch> m_watch;
  std::shared_ptr<Observers<>> m_observers;
};

} // namespace orbel::linux
