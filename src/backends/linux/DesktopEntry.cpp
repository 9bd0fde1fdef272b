#include "backends/linux/DesktopEntry.h"

#include "backends/linux/EnvCommand.h"
#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orbel::linux {

namespace {

constexpr std::string_view kSuffix = ".desktop";
constexpr std::size_t kLargestEntry = 1024 * 1024;

std::vector<std::string> words(const std::string& command) {
  int count = 0;
  char** parsed = nullptr;
  std::vector<std::string> result;
  if (!g_shell_parse_argv(command.c_str(), &count, &parsed, nullptr)) return result;
  for (int i = 0; i < count; ++i)
    result.emplace_back(parsed[i]);
  g_strfreev(parsed);
  return result;
}

// A relative path is one in the folder that the program is started in; a name alone is looked for elsewhere.
std::string inFolder(const std::string& folder, const std::string& path) {
  if (folder.empty() || path.starts_with('/') || path.find('/') == std::string::npos) return path;
  return folder + "/" + path;
}

// Also a folder without any slash is relative.
std::string folderIn(const std::string& folder, const std::string& path) {
  return folder.empty() || path.empty() || path.starts_with('/') ? path : folder + "/" + path;
}

std::vector<std::string> split(const std::string& list) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  while (begin < list.size()) {
    const std::size_t end = std::min(list.find(';', begin), list.size());
    if (end > begin) parts.push_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

bool isFieldCode(const std::string& word) {
  return word.size() == 2 && word[0] == '%';
}

DesktopEntry::Values valuesOf(GKeyFile* file) {
  return {
      [file](const char* key) {
        return takeText(g_key_file_get_string(file, "Desktop Entry", key, nullptr));
      },
      [file](const char* key) {
        return takeText(g_key_file_get_locale_string(file, "Desktop Entry", key, nullptr, nullptr));
      },
      [file](const char* key) {
        return g_key_file_get_boolean(file, "Desktop Entry", key, nullptr) != FALSE;
      },
  };
}

} // namespace

Result<DesktopEntry> DesktopEntry::read(const std::string& path) {
  const auto content = FileStorage::read(path, kLargestEntry);
  if (content.outcome == FileStorage::Outcome::missing) return Failure{path + " does not exist"};
  if (content.outcome != FileStorage::Outcome::read)
    return Failure{path + " cannot be read: " + content.cause};

  const GlibKeyFile file(g_key_file_new());
  const std::string text(reinterpret_cast<const char*>(content.bytes.data()), content.bytes.size());
  GError* error = nullptr;
  if (!g_key_file_load_from_data(file.get(), text.data(), text.size(), G_KEY_FILE_NONE, &error)) {
    const GlibError owned(error);
    return Failure{path + " is not a desktop entry: " + owned->message};
  }
  const Values values = valuesOf(file.get());
  if (const std::string type = values.text("Type"); type != "Application") {
    return Failure{path + " is not the desktop entry of an application"};
  }
  DesktopEntry entry = withValues(FileStorage::nameOf(path), path, values);
  entry.isShown = !values.flag("NoDisplay") && !values.flag("Hidden");
  return entry;
}

DesktopEntry DesktopEntry::withValues(std::string identifier, std::string path, const Values& values) {
  DesktopEntry entry;
  entry.identifier = std::move(identifier);
  entry.path = std::move(path);
  entry.name = values.localizedText("Name");
  if (entry.name.empty()) entry.name = FileStorage::nameOf(entry.path);
  entry.icon = values.localizedText("Icon");
  entry.startupWindowClass = values.text("StartupWMClass");
  entry.categories = split(values.text("Categories"));
  entry.runsInTerminal = values.flag("Terminal");
  entry.isStartedOverBus = values.flag("DBusActivatable");

  const auto [command, chosenFolder] = EnvCommand::of(words(values.text("Exec")));
  if (!command.empty()) {
    const std::string ownFolder = values.text("Path");
    const std::string folder = chosenFolder.empty() ? ownFolder : folderIn(ownFolder, chosenFolder);
    entry.program = inFolder(folder, command.front());
    if (const std::string found = takeText(g_find_program_in_path(entry.program.c_str())); !found.empty()) {
      entry.executable = FileStorage::withoutLinks(found);
    }
    for (auto word = command.begin() + 1; word != command.end(); ++word) {
      if (!isFieldCode(*word) && *word != "--") entry.hasOwnArguments = true;
    }
  }
  // TryExec shows whether the program is there where Exec only names something that starts it.
  if (const std::string attempt = values.text("TryExec"); !attempt.empty()) entry.requiredProgram = attempt;
  return entry;
}

Result<> DesktopEntry::checkLaunch() const {
  if (program.empty() && !isStartedOverBus) return Failure{path + " names no program to start"};
  for (const std::string& needed : {requiredProgram, program}) {
    if (needed.empty()) continue;
    if (takeText(g_find_program_in_path(needed.c_str())).empty()) {
      return Failure{"the program " + needed + " of " + path + " is not installed or may not be executed"};
    }
  }
  return {};
}

bool DesktopEntry::isEntryPath(const std::string& path) {
  return path.ends_with(kSuffix);
}

} // namespace orbel::linux
