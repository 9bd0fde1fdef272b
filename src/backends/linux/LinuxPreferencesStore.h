// The preferences in an XML property-list file that other programs may edit at the same time. A change is
// in memory at once and on disk soon after; a change of the file from outside is merged by key, what is
// not saved yet winning. Beside the file stand its last good copy (".backup"), unreadable files moved
// aside and dated copies; time stamps in names are local time. Main thread only; made by main, used
// through PreferencesStore.
#pragma once

#include "backends/linux/FileStorage.h"
#include "backends/linux/FolderWatch.h"
#include "foundation/Lifetime.h"
#include "foundation/Observers.h"
#include "foundation/RunLoop.h"
#include "platform/PreferencesStore.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace orbel::linux {

class LinuxPreferencesStore : public PreferencesStore {
public:
  static constexpr double kSaveDelay = 0.05; // seconds from a change to its save; later changes join it
  // Seconds from a change outside to reading it: editors do it in steps
  static constexpr double kSettleDelay = 0.05;
  // Seconds that a file must stay unreadable before it is moved aside
  static constexpr double kDoubtDelay = 0.5;
  static constexpr std::size_t kDatedCopies = 5;

  // Reads the file at that absolute path, which need not exist; its folder is made when missing. The run loop
  // outlives the store.
  LinuxPreferencesStore(std::string path, RunLoop& runLoop);
  ~LinuxPreferencesStore() override; // saves what is not saved yet
  LinuxPreferencesStore(const LinuxPreferencesStore&) = delete;
  LinuxPreferencesStore& operator=(const LinuxPreferencesStore&) = delete;

  const PropertyList* object(const std::string& key) const override;
  void setObject(const std::string& key, PropertyList value) override;
  void removeObject(const std::string& key) override;
  Result<> synchronize() override;
  void keepDatedCopy() override;
  Registration observeChanges(std::function<void()> block) override;

private:
  using Replacement = FileStorage::Replacement;
  enum class Patience { none, waitForWriter }; // with a file that cannot be read
  enum class Over { whatIsKnown, anything };   // what the file may hold that is replaced

  void start();
  // Takes over what is on disk if it changed since it was last seen. True when values changed.
  bool takeChangesFromDisk(Patience patience);
  bool merge(PropertyList::Dictionary values);
  bool takeUnreadable(const std::string& cause);
  void refuse(const std::string& cause);
  std::optional<PropertyList::Dictionary> readBackup() const;
  void setValue(const std::string& key, std::optional<PropertyList> value);
  void scheduleSave();
  void scheduleReading(double delay);
  void fileMayHaveChanged();
  bool hasUnsavedChanges() const { return m_mustSave || !m_unsavedKeys.empty(); }
  Result<> save(Patience patience); // a failure is logged
  Result<Replacement> write(Over over);
  Failure reportSaveFailure(const std::string& cause); // hands the cause on
  void writeBackup(const PropertyList::Data& bytes);
  void watch();
  void watchFolder(std::unique_ptr<FolderWatch>& watch, const std::string& path);

  const std::string m_path;
  RunLoop& m_runLoop;
  PropertyList::Dictionary m_values;
  std::set<std::string> m_unsavedKeys;               // set or removed since the last save
  std::optional<PropertyList::Data> m_diskBytes;     // as last read or written; none when there was no file
  std::optional<PropertyList::Data> m_doubtfulBytes; // unreadable, but perhaps still being written
  double m_doubtEnd = 0;                             // on the run loop's clock; then they count as unreadable
  std::string m_refusal;      // why the file that is there is not ours to replace; "" when it is
  std::string m_knownRefusal; // the one that the log has
  bool m_mustSave = false;    // the file lacks something even though no key is unsaved
  bool m_isSaveScheduled = false;
  int m_readingsScheduled = 0;
  bool m_isSaveFailureKnown = false;
  bool m_isBackupFailureKnown = false;
  bool m_isWatchFailureKnown = false;
  std::unique_ptr<FolderWatch> m_folderWatch;
  std::unique_ptr<FolderWatch> m_targetWatch; // the folder of the file that a symbolic link leads to
  Observers<> m_observers;
  Lifetime m_lifetime; // delayed blocks watch it
};

} // namespace orbel::linux
