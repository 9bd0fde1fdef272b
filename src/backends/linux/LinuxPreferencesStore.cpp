#include "backends/linux/LinuxPreferencesStore.h"

#include "backends/linux/DatedFiles.h"
#include "backends/linux/FileStorage.h"
#include "foundation/Log.h"
#include "foundation/PropertyListCoder.h"

#include <unistd.h>

#include <utility>

namespace orbel::linux {

namespace {

// Far above a list of ten thousand items; what is larger is not even read into memory.
constexpr std::size_t kLargestFile = 64 * 1024 * 1024;

constexpr int kMostAttempts = 5; // of a save that another program's is always quicker than

Result<PropertyList::Dictionary> decode(const PropertyList::Data& bytes) {
  const auto read = PropertyListCoder::read(bytes);
  if (!read) return read.failure();
  if (const auto* values = read->dictionary()) return *values;
  return Failure{"it holds no dictionary"};
}

} // namespace

LinuxPreferencesStore::LinuxPreferencesStore(std::string path, RunLoop& runLoop)
    : m_path(std::move(path)), m_runLoop(runLoop) {
  start();
}

LinuxPreferencesStore::~LinuxPreferencesStore() {
  m_observers = {};
  static_cast<void>(LinuxPreferencesStore::synchronize());
}

void LinuxPreferencesStore::start() {
  static_cast<void>(FileStorage::makeFolder(FileStorage::folderOf(m_path))); // shows at the first save
  takeChangesFromDisk(Patience::none);
  if (!m_refusal.empty()) {
    if (auto values = readBackup()) m_values = std::move(*values);
  }
  watch();
}

const PropertyList* LinuxPreferencesStore::object(const std::string& key) const {
  const auto entry = m_values.find(key);
  return entry == m_values.end() ? nullptr : &entry->second;
}

void LinuxPreferencesStore::setObject(const std::string& key, PropertyList value) {
  setValue(key, std::move(value));
}

void LinuxPreferencesStore::removeObject(const std::string& key) {
  setValue(key, std::nullopt);
}

void LinuxPreferencesStore::setValue(const std::string& key, std::optional<PropertyList> value) {
  const PropertyList* present = object(key);
  if (value ? present && *present == *value : !present) return;
  if (value) {
    m_values.insert_or_assign(key, std::move(*value));
  } else {
    m_values.erase(key);
  }
  m_unsavedKeys.insert(key);
  scheduleSave();
  m_observers.notify();
}

Registration LinuxPreferencesStore::observeChanges(std::function<void()> block) {
  return m_observers.add(std::move(block));
}

Result<> LinuxPreferencesStore::synchronize() {
  return save(Patience::none);
}

void LinuxPreferencesStore::scheduleSave() {
  if (std::exchange(m_isSaveScheduled, true)) return;
  m_runLoop.after(kSaveDelay, [this, life = m_lifetime.watch()] {
    if (life.hasEnded()) return;
    m_isSaveScheduled = false;
    static_cast<void>(save(Patience::waitForWriter));
  });
}

Result<> LinuxPreferencesStore::save(Patience patience) {
  if (!hasUnsavedChanges()) return {};
  bool valuesChanged = false;
  Result<Replacement> saved = Replacement::overtaken;
  for (int attempt = 0; attempt < kMostAttempts && saved && *saved == Replacement::overtaken; ++attempt) {
    valuesChanged = takeChangesFromDisk(patience) || valuesChanged;
    // While another program seems to be writing, the file waits; fileMayHaveChanged() schedules this again.
    if (m_doubtfulBytes) break;
    saved = hasUnsavedChanges() ? write(Over::whatIsKnown) : Replacement::done;
  }
  const bool isOvertaken = saved && *saved == Replacement::overtaken;
  if (isOvertaken && !m_doubtfulBytes) scheduleSave();
  if (valuesChanged) m_observers.notify();
  if (isOvertaken) return Failure{"another program is writing " + m_path};
  return saved ? Result<>() : saved.failure();
}

Result<LinuxPreferencesStore::Replacement> LinuxPreferencesStore::write(Over over) {
  if (!m_refusal.empty()) return reportSaveFailure(m_refusal);
  if (const auto folder = FileStorage::makeFolder(FileStorage::folderOf(m_path)); !folder)
    return reportSaveFailure(folder.cause());
  auto bytes = PropertyListCoder::write(m_values, PropertyListCoder::Format::xml);
  const std::string file = FileStorage::followLinks(m_path);
  if (over == Over::whatIsKnown) {
    const auto replaced = FileStorage::replaceIfStill(file, m_diskBytes, bytes);
    if (!replaced) return reportSaveFailure(replaced.cause());
    if (*replaced == Replacement::overtaken) return replaced;
  } else if (const auto replaced = FileStorage::replace(file, bytes); !replaced) {
    return reportSaveFailure(replaced.cause());
  }
  m_diskBytes = std::move(bytes);
  m_unsavedKeys.clear();
  m_mustSave = false;
  if (std::exchange(m_isSaveFailureKnown, false))
    Log::information("the preferences are saved again in " + m_path);
  writeBackup(*m_diskBytes);
  watch();
  return Replacement::done;
}

Failure LinuxPreferencesStore::reportSaveFailure(const std::string& cause) {
  if (!std::exchange(m_isSaveFailureKnown, true)) {
    Log::error("the preferences could not be saved in " + m_path + ": " + cause +
               "; changes stay in memory until that works");
  }
  return {cause};
}

bool LinuxPreferencesStore::takeChangesFromDisk(Patience patience) {
  auto content = FileStorage::read(FileStorage::followLinks(m_path), kLargestFile);
  if (content.outcome == FileStorage::Outcome::refused) {
    refuse(content.cause);
    return false;
  }
  m_refusal.clear();
  if (content.outcome == FileStorage::Outcome::missing) {
    m_knownRefusal.clear();
    m_doubtfulBytes.reset();
    return std::exchange(m_diskBytes, std::nullopt) && merge({});
  }
  if (content.outcome == FileStorage::Outcome::tooLarge) return takeUnreadable(content.cause);
  if (m_diskBytes == content.bytes) {
    m_doubtfulBytes.reset();
    return false;
  }

  auto decoded = decode(content.bytes);
  if (decoded) {
    m_knownRefusal.clear();
    m_doubtfulBytes.reset();
    m_diskBytes = std::move(content.bytes);
    writeBackup(*m_diskBytes);
    return merge(*std::move(decoded));
  }
  if (patience == Patience::waitForWriter) {
    const double now = m_runLoop.clock().now();
    if (m_doubtfulBytes != content.bytes) {
      m_doubtfulBytes = std::move(content.bytes);
      m_doubtEnd = now + kDoubtDelay;
    }
    if (now < m_doubtEnd) {
      scheduleReading(m_doubtEnd - now);
      return false;
    }
  }
  return takeUnreadable(decoded.cause());
}

void LinuxPreferencesStore::refuse(const std::string& cause) {
  m_refusal = cause;
  if (std::exchange(m_knownRefusal, cause) == cause) return;
  Log::error("the preferences in " + m_path + " cannot be read: " + cause + "; the file is left as it is");
}

bool LinuxPreferencesStore::merge(PropertyList::Dictionary values) {
  for (const auto& key : m_unsavedKeys) {
    const auto ours = m_values.find(key);
    if (ours == m_values.end()) {
      values.erase(key);
    } else {
      values.insert_or_assign(key, ours->second);
    }
  }
  return std::exchange(m_values, values) != values;
}

bool LinuxPreferencesStore::takeUnreadable(const std::string& cause) {
  m_doubtfulBytes.reset();
  const std::string file = FileStorage::followLinks(m_path);
  const auto aside = DatedFiles::keepAside(file, ".unreadable-");
  if (!aside) {
    refuse(cause + ", and it could not be moved aside: " + aside.cause());
    return false;
  }
  Log::error("the preferences in " + m_path + " cannot be read: " + cause + "; the file is kept as " +
             aside->path);

  // While running, memory is the last good copy; at the start the backup is.
  bool valuesChanged = false;
  if (m_values.empty()) {
    if (auto values = readBackup()) valuesChanged = merge(std::move(*values));
  }
  m_diskBytes.reset();
  if (m_values.empty()) {
    if (aside->isFirstNameKept) ::unlink(file.c_str());
  } else {
    // At once, and over the bad file: there is no moment without a file that could be taken for a
    // fresh start.
    m_mustSave = true;
    static_cast<void>(write(Over::anything));
  }
  return valuesChanged;
}

std::optional<PropertyList::Dictionary> LinuxPreferencesStore::readBackup() const {
  const std::string path = m_path + ".backup";
  const auto content = FileStorage::read(path, kLargestFile);
  if (content.outcome == FileStorage::Outcome::missing) return std::nullopt;
  auto decoded =
      content.outcome == FileStorage::Outcome::read ? decode(content.bytes) : Failure{content.cause};
  if (decoded) {
    Log::information("the preferences start from their last good copy, " + path);
    return *std::move(decoded);
  }
  Log::error("the last good copy of the preferences, " + path +
             ", cannot be read either: " + decoded.cause());
  return std::nullopt;
}

void LinuxPreferencesStore::writeBackup(const PropertyList::Data& bytes) {
  const std::string path = m_path + ".backup";
  const auto present = FileStorage::read(path, kLargestFile);
  if (present.outcome == FileStorage::Outcome::read && present.bytes == bytes) return;
  const auto written = FileStorage::replace(path, bytes);
  if (!written && !m_isBackupFailureKnown)
    Log::warning("no copy of the preferences could be kept as " + path + ": " + written.cause());
  m_isBackupFailureKnown = !written;
}

void LinuxPreferencesStore::keepDatedCopy() {
  const std::string suffix = ".plist";
  const std::string prefix =
      (m_path.ends_with(suffix) ? m_path.substr(0, m_path.size() - suffix.size()) : m_path) + "-";
  const auto content = FileStorage::read(FileStorage::followLinks(m_path), kLargestFile);
  if (content.outcome == FileStorage::Outcome::missing) return;
  const std::string copy = DatedFiles::freePath(prefix, suffix);
  Result<> kept = Failure{content.cause};
  if (content.outcome == FileStorage::Outcome::read) {
    const auto copies = DatedFiles::existing(prefix, suffix);
    // The same content again would only push older, different copies out.
    if (!copies.empty()) {
      const auto newest = FileStorage::read(copies.back(), kLargestFile);
      if (newest.outcome == FileStorage::Outcome::read && newest.bytes == content.bytes) return;
    }
    kept = FileStorage::replace(copy, content.bytes);
  }
  if (!kept) {
    Log::error("no dated copy of " + m_path + " could be kept: " + kept.cause());
    return;
  }
  Log::information("a copy of the preferences is kept as " + copy);
  auto earlier = DatedFiles::existing(prefix, suffix);
  std::erase(earlier, copy); // whatever the others' times are
  for (std::size_t i = 0; i + kDatedCopies <= earlier.size(); ++i)
    ::unlink(earlier[i].c_str());
}

void LinuxPreferencesStore::scheduleReading(double delay) {
  ++m_readingsScheduled;
  m_runLoop.after(delay, [this, life = m_lifetime.watch()] {
    if (life.hasEnded()) return;
    // The last one reads: each change of the file puts the reading off until a little after it.
    if (--m_readingsScheduled == 0) fileMayHaveChanged();
  });
}

void LinuxPreferencesStore::fileMayHaveChanged() {
  const bool valuesChanged = takeChangesFromDisk(Patience::waitForWriter);
  if (hasUnsavedChanges() && !m_doubtfulBytes) scheduleSave();
  watch();
  if (valuesChanged) m_observers.notify();
}

void LinuxPreferencesStore::watch() {
  watchFolder(m_folderWatch, m_path);
  const std::string target = FileStorage::followLinks(m_path);
  if (target == m_path) {
    m_targetWatch.reset();
  } else {
    watchFolder(m_targetWatch, target);
  }
}

void LinuxPreferencesStore::watchFolder(std::unique_ptr<FolderWatch>& watch, const std::string& path) {
  if (watch && watch->isAlive() && watch->path() == path) return;
  auto started = FolderWatch::start(path, [this] { scheduleReading(kSettleDelay); });
  if (!started && !m_isWatchFailureKnown)
    Log::warning("changes of " + path + " from outside will not be seen: " + started.cause());
  m_isWatchFailureKnown = !started;
  watch = std::move(started).valueOr(nullptr);
}

} // namespace orbel::linux
