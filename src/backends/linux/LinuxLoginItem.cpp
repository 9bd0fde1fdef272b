#include "backends/linux/LinuxLoginItem.h"

#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"
#include "foundation/Log.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

namespace orbel::linux {

namespace {
constexpr const char* kFileName = "org.orbelmenu.OrbelMenu.desktop";
constexpr const char* kGroup = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* kEnabledKey = "X-GNOME-Autostart-enabled";
constexpr std::size_t kLargestEntry = 1 << 20;
constexpr const char* kMark = "/orbelmenu/login-item";
constexpr std::string_view kMarkText = "Orbel Menu was registered to be started at login.\n";

PropertyList::Data bytesOf(std::string_view text) {
  const auto* bytes = reinterpret_cast<const PropertyList::Data::value_type*>(text.data());
  return {bytes, bytes + text.size()};
}

struct Found {
  GlibKeyFile keys; // empty when there is no entry, or what is there is none
  bool isMissing = false;
};

// Fails when something is there that we may not read.
Result<Found> find(const std::string& path) {
  Found found;
  const auto content = FileStorage::read(path, kLargestEntry);
  found.isMissing = content.outcome == FileStorage::Outcome::missing;
  if (found.isMissing) return found;
  if (content.outcome != FileStorage::Outcome::read) return Failure{content.cause};
  GlibKeyFile keys(g_key_file_new());
  constexpr auto flags = static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
  const auto* text = reinterpret_cast<const char*>(content.bytes.data());
  const bool isKeyFile = !content.bytes.empty() &&
                         g_key_file_load_from_data(keys.get(), text, content.bytes.size(), flags, nullptr);
  if (isKeyFile && g_key_file_has_group(keys.get(), kGroup)) found.keys = std::move(keys);
  return found;
}

std::string textOf(const GlibKeyFile& keys, const char* key) {
  return takeText(g_key_file_get_string(keys.get(), kGroup, key, nullptr));
}

// The desktops' own tools switch an entry off in one of these two ways.
bool isSwitchedOff(const GlibKeyFile& keys) {
  return g_key_file_get_boolean(keys.get(), kGroup, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr) ||
         textOf(keys, kEnabledKey) == "false";
}

bool isStarted(const Found& found) {
  return found.keys && !textOf(found.keys, G_KEY_FILE_DESKTOP_KEY_EXEC).empty() && !isSwitchedOff(found.keys);
}

void setDefault(const GlibKeyFile& keys, const char* key, const char* text) {
  if (!g_key_file_has_key(keys.get(), kGroup, key, nullptr))
    g_key_file_set_string(keys.get(), kGroup, key, text);
}
} // namespace

LinuxLoginItem::LinuxLoginItem(const std::string& configurationFolder, const std::string& stateFolder,
                               std::string executable)
    : m_path(configurationFolder + "/autostart/" + kFileName), m_markPath(stateFolder + kMark),
      m_executable(std::move(executable)), m_observers(std::make_shared<Observers<>>()) {
  watch();
}

LinuxLoginItem::~LinuxLoginItem() = default;

Result<LoginItem::State> LinuxLoginItem::state() const {
  const auto found = find(m_path);
  if (!found) return Failure{"the autostart entry cannot be read: " + found.cause()};
  if (found->isMissing && !m_wasRegistered && ::access(m_markPath.c_str(), F_OK) != 0)
    return State::undecided;
  return isStarted(*found) ? State::registered : State::notRegistered;
}

Result<> LinuxLoginItem::setRegistered(bool registered) {
  const auto changed = registered ? registerEntry() : removeEntry();
  if (!m_watch || !m_watch->isAlive() || m_watch->path() != m_path) watch();
  if (!changed) {
    return Failure{(registered ? "the program cannot be started at login: "
                               : "the program cannot be kept from starting at login: ") +
                   changed.cause()};
  }
  rememberRegistration(registered);
  return {};
}

Result<> LinuxLoginItem::registerEntry() {
  if (m_executable.empty()) return Failure{"where the program is installed is not known"};
  const bool hasControlCharacter = std::ranges::any_of(
      m_executable, [](char character) { return static_cast<unsigned char>(character) < 0x20; });
  if (hasControlCharacter) return Failure{"no desktop entry can name the program's path"};

  const std::string path = FileStorage::followLinks(m_path);
  auto found = find(path);
  if (!found) return found.failure();
  if (!found->keys) found->keys.reset(g_key_file_new());
  GKeyFile* keys = found->keys.get();
  const std::string before = takeText(g_key_file_to_data(keys, nullptr, nullptr));
  g_key_file_set_string(keys, kGroup, G_KEY_FILE_DESKTOP_KEY_TYPE, G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
  g_key_file_set_string(keys, kGroup, G_KEY_FILE_DESKTOP_KEY_EXEC, execWord(m_executable).c_str());
  // A program that was removed is no error at every login.
  g_key_file_set_string(keys, kGroup, G_KEY_FILE_DESKTOP_KEY_TRY_EXEC, m_executable.c_str());
  g_key_file_remove_key(keys, kGroup, G_KEY_FILE_DESKTOP_KEY_HIDDEN, nullptr);
  g_key_file_set_boolean(keys, kGroup, kEnabledKey, TRUE);
  setDefault(found->keys, G_KEY_FILE_DESKTOP_KEY_NAME, "Orbel Menu");
  setDefault(found->keys, G_KEY_FILE_DESKTOP_KEY_ICON, "org.orbelmenu.OrbelMenu");
  setDefault(found->keys, G_KEY_FILE_DESKTOP_KEY_STARTUP_NOTIFY, "false");

  const std::string text = takeText(g_key_file_to_data(keys, nullptr, nullptr));
  if (text == before) return {};
  if (auto folder = FileStorage::makeFolder(FileStorage::folderOf(path)); !folder) return folder;
  return FileStorage::replace(path, bytesOf(text));
}

Result<> LinuxLoginItem::removeEntry() const {
  if (::unlink(m_path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR) return {};
  return Failure{m_path + ": " + std::strerror(errno)};
}

void LinuxLoginItem::rememberRegistration(bool registered) {
  if (std::exchange(m_wasRegistered, registered) && registered) return;
  if (!registered) {
    ::unlink(m_markPath.c_str());
    return;
  }
  if (::access(m_markPath.c_str(), F_OK) == 0) return;
  auto marked = FileStorage::makeFolder(FileStorage::folderOf(m_markPath));
  if (marked) marked = FileStorage::replace(m_markPath, bytesOf(kMarkText));
  if (!marked) {
    Log::warning("an autostart entry that is removed while the program does not run will come back: " +
                 marked.cause());
  }
}

Registration LinuxLoginItem::observeChanges(std::function<void()> block) {
  return m_observers->add(std::move(block));
}

void LinuxLoginItem::watch() {
  m_watch = watchNearest(m_path);
}

std::unique_ptr<FolderWatch> LinuxLoginItem::watchNearest(const std::string& path) {
  const auto start = [this](const std::string& watched) {
    return FolderWatch::start(watched, [this] { somethingChanged(); }).valueOr(nullptr);
  };
  if (auto watch = start(path)) return watch;
  const std::string folder = FileStorage::folderOf(path);
  if (folder.empty() || folder == path) return nullptr;
  auto above = watchNearest(folder);
  // The folder may have come before the watch above it began.
  auto watch = start(path);
  return watch ? std::move(watch) : std::move(above);
}

void LinuxLoginItem::somethingChanged() {
  // Above the folder only its creation counts, and a folder that was removed has to be created again.
  if (!m_watch || !m_watch->isAlive() || m_watch->path() != m_path) watch();
  if (const auto found = find(m_path); found && isStarted(*found))
    rememberRegistration(true);       // with the desktop's own tools
  const auto observers = m_observers; // one of them may end this object
  observers->notify();
}

std::string LinuxLoginItem::ownExecutable() {
  std::error_code error;
  std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (error) return {};
  constexpr std::string_view kReplaced = " (deleted)";
  if (path.ends_with(kReplaced) && !std::filesystem::exists(path, error))
    path.resize(path.size() - kReplaced.size());
  return path;
}

std::string LinuxLoginItem::execWord(const std::string& path) {
  constexpr std::string_view kPlain =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._-+,:@%";
  std::string word;
  for (const char character : path) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) word += '\\';
    if (character == '%') word += '%'; // else a field code
    word += character;
  }
  return path.find_first_not_of(kPlain) == std::string::npos ? word : '"' + word + '"';
}

} // namespace orbel::linux
