#include "backends/linux/RunningApplicationList.h"

#include "backends/linux/FileStorage.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

namespace orbel::linux {

namespace {

// What distinguishes the programs whose windows do not name their process.
std::string groupNameOf(const common::TopLevelWindow& window) {
  if (!window.className.empty()) return window.className;
  if (!window.instanceName.empty()) return window.instanceName;
  return "window " + std::to_string(window.id);
}

// Only with it does a process number mean the same process as before.
std::optional<std::uint64_t> startTimeOf(const common::TopLevelWindow& window) {
  return window.processIdentifier ? ProcessRecord::startTimeOf(*window.processIdentifier) : std::nullopt;
}

std::string withoutAppImageSuffix(std::string name) {
  constexpr std::string_view kSuffix = ".appimage";
  if (name.size() <= kSuffix.size()) return name;
  const auto start = name.end() - static_cast<std::ptrdiff_t>(kSuffix.size());
  const bool hasSuffix = std::equal(start, name.end(), kSuffix.begin(),
                                    [](unsigned char a, char b) { return std::tolower(a) == b; });
  if (hasSuffix) name.erase(start, name.end());
  return name;
}

} // namespace

RunningApplicationList::RunningApplicationList(common::TopLevelWindows& windows, DesktopEntryIndex& entries,
                                               FileIcons& icons, StartedEntry startedEntry)
    : m_windows(windows), m_entries(entries), m_icons(icons), m_startedEntry(std::move(startedEntry)) {
  m_windowsRegistration = m_windows.observeChanges([this] { update(); });
  m_entriesRegistration = m_entries.observeChanges([this] { update(); });
  update();
}

std::vector<RunningApplicationPointer> RunningApplicationList::applications() const {
  return {m_records.begin(), m_records.end()};
}

Registration RunningApplicationList::observeChanges(std::function<void()> block) {
  return m_observers.add(std::move(block));
}

RunningApplicationPointer RunningApplicationList::frontmost() {
  const auto active = m_windows.activeWindow();
  if (!active) return nullptr;
  const auto windows = m_windows.windows();
  const auto window =
      std::find_if(windows.begin(), windows.end(),
                   [&](const common::TopLevelWindow& candidate) { return candidate.id == *active; });
  if (window == windows.end()) return nullptr;
  Record record = recordAmong(m_records, *window);
  if (!record) record = makeRecord(*window);
  if (record->ordinaryWindows().empty()) {
    // A program without an ordinary window (the desktop, a panel, a lone dialog) is not listed, but gets the
    // focus back.
    record->setWindows({}, {*active});
    record->setAppearance(appearanceFor(*window, record));
  }
  record->rememberActiveWindow(*active, m_windows.summonMark());
  return record;
}

void RunningApplicationList::update() {
  struct Group {
    Record record;
    std::vector<common::TopLevelWindow> ordinary;
    std::vector<std::uint64_t> others;
  };
  using Look = std::tuple<Record, std::string, std::optional<std::string>>;
  const auto looks = [](const std::vector<Record>& records) {
    std::vector<Look> result;
    result.reserve(records.size());
    for (const auto& record : records) {
      result.emplace_back(record, record->localizedName(), record->bundlePath());
    }
    return result;
  };

  const auto before = looks(m_records);
  const auto windows = m_windows.windows();
  std::vector<Group> groups;
  std::vector<Record> records;
  for (const auto& window : windows) {
    if (!window.isNormal) continue;
    // Those of this round first: a second window of a program is no second program.
    if (const Record listed = recordAmong(records, window)) {
      const auto place = std::find(records.begin(), records.end(), listed) - records.begin();
      groups[static_cast<std::size_t>(place)].ordinary.push_back(window);
      continue;
    }
    Record record = recordAmong(m_records, window);
    if (!record) record = makeRecord(window);
    records.push_back(record);
    groups.push_back({std::move(record), {window}, {}});
  }
  for (const auto& window : windows) {
    if (window.isNormal || !window.processIdentifier) continue;
    for (auto& group : groups) {
      if (group.record->processIdentifier() == *window.processIdentifier) group.others.push_back(window.id);
    }
  }

  for (const auto& gone : m_records) {
    if (std::find(records.begin(), records.end(), gone) == records.end()) gone->setWindows({}, {});
  }
  for (auto& group : groups) {
    std::vector<std::uint64_t> ordinary;
    for (const auto& window : group.ordinary)
      ordinary.push_back(window.id);
    group.record->setWindows(std::move(ordinary), std::move(group.others));
    const auto telling =
        std::find_if(group.ordinary.begin(), group.ordinary.end(), [&](const common::TopLevelWindow& window) {
          return entryFor(window, *group.record).has_value();
        });
    const auto& window = telling == group.ordinary.end() ? group.ordinary.front() : *telling;
    group.record->setAppearance(appearanceFor(window, group.record));
  }
  tellProgramsOfOneInterpreterApart(records);
  m_records = std::move(records);
  if (looks(m_records) != before) m_observers.notify();
}

RunningApplicationList::Record RunningApplicationList::recordAmong(const std::vector<Record>& records,
                                                                   const common::TopLevelWindow& window) {
  const auto startTime = startTimeOf(window);
  const std::string groupName = groupNameOf(window);
  for (const auto& record : records) {
    const auto& process = record->process();
    const bool isSame = startTime ? process && process->processIdentifier == *window.processIdentifier &&
                                        process->startTime == *startTime
                                  : !process && record->groupName() == groupName;
    if (isSame) return record;
  }
  return nullptr;
}

RunningApplicationList::Record
RunningApplicationList::makeRecord(const common::TopLevelWindow& window) const {
  auto process = window.processIdentifier ? ProcessRecord::read(*window.processIdentifier) : std::nullopt;
  return std::make_shared<LinuxRunningApplication>(m_windows, std::move(process), groupNameOf(window));
}

std::optional<DesktopEntry> RunningApplicationList::entryFor(const common::TopLevelWindow& window,
                                                             const LinuxRunningApplication& record) const {
  const auto known = [](const DesktopEntry* entry) { return entry ? std::optional(*entry) : std::nullopt; };
  const auto atPath = [&](const std::string& path) -> std::optional<DesktopEntry> {
    if (path.empty()) return std::nullopt;
    if (const DesktopEntry* entry = m_entries.withPath(path)) return *entry;
    auto read = DesktopEntry::read(path);
    return read ? std::optional(*std::move(read)) : std::nullopt;
  };

  if (auto entry = known(m_entries.withIdentifier(window.applicationId))) return entry;
  if (auto entry = known(m_entries.withStartupWindowClass(window.className))) return entry;
  if (auto entry = known(m_entries.withStartupWindowClass(window.instanceName))) return entry;
  if (!window.startupId.empty() && m_startedEntry) {
    if (auto entry = atPath(m_startedEntry(window.startupId))) return entry;
  }
  const auto& process = record.process();
  if (process && process->launchedEntryPath) {
    if (auto entry = atPath(*process->launchedEntryPath)) return entry;
  }
  if (auto entry = known(m_entries.withIdentifier(window.className))) return entry;
  if (auto entry = known(m_entries.withIdentifier(window.instanceName))) return entry;
  for (const auto& path :
       {process ? process->executablePath : std::nullopt, process ? process->appImagePath : std::nullopt}) {
    if (!path) continue;
    if (auto entry = known(m_entries.withExecutable(*path))) return entry;
  }
  return std::nullopt;
}

LinuxRunningApplication::Appearance
RunningApplicationList::appearanceFor(const common::TopLevelWindow& window, const Record& record) const {
  const auto entry = entryFor(window, *record);
  const auto& process = record->process();
  const auto& present = record->appearance();
  LinuxRunningApplication::Appearance appearance;
  if (entry) {
    appearance.entryIdentifier = entry->identifier;
    appearance.localizedName = entry->name;
    appearance.bundlePath = entry->path;
  } else if (process && process->appImagePath) {
    appearance.localizedName = withoutAppImageSuffix(FileStorage::nameOf(*process->appImagePath));
    appearance.bundlePath = process->appImagePath;
  } else {
    // One that was identified by its name remains so, or it would take over the picture that is kept for
    // the path.
    const bool goesByName = present.icon && present.entryIdentifier.empty() && !present.bundlePath;
    if (!goesByName) appearance.bundlePath = record->executablePath();
    if (!window.className.empty()) {
      appearance.localizedName = window.className;
    } else if (record->executablePath()) {
      appearance.localizedName = FileStorage::nameOf(*record->executablePath());
    } else {
      appearance.localizedName = window.title.empty() ? record->groupName() : window.title;
    }
  }
  // The picture stays the same object while the program stays the same one: what was drawn of it is kept with
  // it. Without an entry it is that of the record's windows, whatever the path.
  const bool isUnchanged = present.icon && present.entryIdentifier == appearance.entryIdentifier &&
                           (!entry || present.bundlePath == appearance.bundlePath);
  appearance.icon = isUnchanged ? present.icon : iconFor(entry, record);
  return appearance;
}

ImagePointer RunningApplicationList::iconFor(const std::optional<DesktopEntry>& entry,
                                             const Record& record) const {
  if (entry && m_icons.hasIcon(*entry)) return m_icons.iconForEntry(*entry);
  const auto generic = m_icons.genericApplicationIcon();
  // The picture may be kept longer than any of the program's windows, and a window's number is given again.
  auto render = [&windows = m_windows, program = std::weak_ptr(record), generic,
                 isOwn = false](int width, int height) mutable {
    if (const auto running = program.lock()) {
      for (const std::uint64_t window : running->ordinaryWindows()) {
        Bitmap own = windows.icon(window, std::max(width, height));
        if (own.isEmpty()) continue;
        isOwn = true;
        return own;
      }
    }
    // What was drawn of its own stays rather than becoming the generic one.
    return isOwn ? Bitmap() : generic->representation(width, height);
  };
  return std::make_shared<Image>(FileIcons::kIconSize, std::move(render));
}

// Without an entry, what an interpreter runs is all one executable, whose path would make one program of it.
void RunningApplicationList::tellProgramsOfOneInterpreterApart(const std::vector<Record>& records) {
  const auto hasOnlyItsExecutable = [](const Record& record) {
    return record->bundlePath() && record->bundlePath() == record->executablePath();
  };
  const auto runsWhatAnotherRuns = [&](const Record& record) {
    return std::any_of(records.begin(), records.end(), [&](const Record& other) {
      return other->executablePath() == record->executablePath() &&
             other->appearance().entryIdentifier.empty() && other->localizedName() != record->localizedName();
    });
  };
  for (const auto& record : records) {
    if (!hasOnlyItsExecutable(record) || !runsWhatAnotherRuns(record)) continue;
    auto appearance = record->appearance();
    appearance.bundlePath.reset();
    record->setAppearance(std::move(appearance));
  }
}

bool RunningApplicationList::runsBundle(const LinuxRunningApplication& application,
                                        const std::string& bundlePath) {
  if (bundlePath.empty()) return false;
  if (application.bundlePath() == bundlePath) return true;
  if (application.process() && application.process()->appImagePath == bundlePath) return true;
  const std::string identifier = DesktopEntryIndex::identifierForPath(bundlePath);
  return !identifier.empty() && application.appearance().entryIdentifier == identifier;
}

} // namespace orbel::linux
