#include "backends/linux/DesktopEntryIndex.h"

#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"

#include <gio/gdesktopappinfo.h>

#include <algorithm>
#include <initializer_list>

namespace orbel::linux {

namespace {

std::string folded(const std::string& text) {
  return takeText(g_utf8_casefold(text.c_str(), -1));
}

DesktopEntry entryOf(GDesktopAppInfo* info) {
  GAppInfo* application = G_APP_INFO(info);
  const char* identifier = g_app_info_get_id(application);
  const char* path = g_desktop_app_info_get_filename(info);
  auto entry = DesktopEntry::withValues(
      identifier ? identifier : "", path ? path : "",
      {[info](const char* key) { return takeText(g_desktop_app_info_get_string(info, key)); },
       [info](const char* key) { return takeText(g_desktop_app_info_get_locale_string(info, key)); },
       [info](const char* key) { return g_desktop_app_info_get_boolean(info, key) != FALSE; }});
  entry.isShown = g_app_info_should_show(application) != FALSE;
  return entry;
}

} // namespace

struct DesktopEntryIndex::Tables {
  using Places = std::unordered_map<std::string, std::vector<std::size_t>>;

  std::vector<DesktopEntry> entries;
  Places byIdentifier; // without regard to case, as the two below
  Places byWindowClass;
  Places byName;
  Places byExecutable;
  Places byPath;

  Tables() {
    GList* all = g_app_info_get_all();
    for (GList* item = all; item; item = item->next) {
      if (G_IS_DESKTOP_APP_INFO(item->data)) entries.push_back(entryOf(G_DESKTOP_APP_INFO(item->data)));
    }
    g_list_free_full(all, g_object_unref);
    std::erase_if(entries, [](const DesktopEntry& entry) { return entry.path.empty(); });
    // GIO's order is that of a hash table; ours must not change from start to start. Shown entries
    // come first.
    std::sort(entries.begin(), entries.end(), [](const DesktopEntry& a, const DesktopEntry& b) {
      return a.isShown != b.isShown ? a.isShown : a.identifier < b.identifier;
    });
    for (std::size_t i = 0; i < entries.size(); ++i) {
      const DesktopEntry& entry = entries[i];
      byIdentifier[folded(entry.identifier)].push_back(i);
      if (!entry.startupWindowClass.empty()) byWindowClass[folded(entry.startupWindowClass)].push_back(i);
      byName[folded(entry.name)].push_back(i);
      if (!entry.executable.empty() && !entry.runsInTerminal) byExecutable[entry.executable].push_back(i);
      byPath[entry.path].push_back(i);
    }
  }

  const DesktopEntry* find(const Places& places, const std::string& text,
                           std::string DesktopEntry::*field) const {
    const auto found = places.find(folded(text));
    if (found == places.end()) return nullptr;
    for (const std::size_t place : found->second) {
      if (entries[place].*field == text) return &entries[place];
    }
    return &entries[found->second.front()];
  }
};

struct DesktopEntryIndex::Monitor {
  GObjectPointer<GAppInfoMonitor> monitor{g_app_info_monitor_get()};
  gulong handler = 0;

  explicit Monitor(DesktopEntryIndex* index) {
    const auto changed = +[](GAppInfoMonitor*, gpointer data) {
      auto* self = static_cast<DesktopEntryIndex*>(data);
      self->m_tables.reset();
      self->m_observers.notify();
    };
    handler = g_signal_connect(monitor.get(), "changed", G_CALLBACK(changed), index);
  }
  ~Monitor() { g_signal_handler_disconnect(monitor.get(), handler); }
};

DesktopEntryIndex::DesktopEntryIndex() : m_monitor(std::make_unique<Monitor>(this)) {}

DesktopEntryIndex::~DesktopEntryIndex() = default;

const DesktopEntryIndex::Tables& DesktopEntryIndex::tables() const {
  if (!m_tables) m_tables = std::make_unique<Tables>();
  return *m_tables;
}

const std::vector<DesktopEntry>& DesktopEntryIndex::entries() const {
  return tables().entries;
}

const DesktopEntry* DesktopEntryIndex::withIdentifier(const std::string& identifier) const {
  if (identifier.empty()) return nullptr;
  const std::string whole = DesktopEntry::isEntryPath(identifier) ? identifier : identifier + ".desktop";
  return tables().find(tables().byIdentifier, whole, &DesktopEntry::identifier);
}

const DesktopEntry* DesktopEntryIndex::withStartupWindowClass(const std::string& name) const {
  return tables().find(tables().byWindowClass, name, &DesktopEntry::startupWindowClass);
}

const DesktopEntry* DesktopEntryIndex::withName(const std::string& name) const {
  return tables().find(tables().byName, name, &DesktopEntry::name);
}

const DesktopEntry* DesktopEntryIndex::withExecutable(const std::string& path) const {
  const auto found = tables().byExecutable.find(path);
  if (found == tables().byExecutable.end()) return nullptr;
  for (const std::size_t place : found->second) {
    if (!entries()[place].hasOwnArguments) return &entries()[place];
  }
  return found->second.size() == 1 ? &entries()[found->second.front()] : nullptr;
}

const DesktopEntry* DesktopEntryIndex::withPath(const std::string& path) const {
  const auto found = tables().byPath.find(path);
  return found == tables().byPath.end() ? nullptr : &entries()[found->second.front()];
}

std::string DesktopEntryIndex::identifierForPath(const std::string& path) {
  if (!DesktopEntry::isEntryPath(path)) return {};
  std::vector<std::string> folders{g_get_user_data_dir()};
  for (const char* const* folder = g_get_system_data_dirs(); *folder; ++folder)
    folders.emplace_back(*folder);
  for (const std::string& folder : folders) {
    const std::string root = folder + (folder.ends_with('/') ? "applications/" : "/applications/");
    if (!path.starts_with(root)) continue;
    // By the standard, an entry in a subfolder carries the folder's name in its identifier.
    std::string identifier = path.substr(root.size());
    std::replace(identifier.begin(), identifier.end(), '/', '-');
    return identifier;
  }
  return FileStorage::nameOf(path);
}

Registration DesktopEntryIndex::observeChanges(std::function<void()> block) {
  return m_observers.add(std::move(block));
}

} // namespace orbel::linux
