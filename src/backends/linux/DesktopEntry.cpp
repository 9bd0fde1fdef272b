#include "backends/linux/DesktopEntry.h"

#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orbel {

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
  // "env NAME=value program" runs the program.
  if (!result.empty() && FileStorage::nameOf(result.front()) == "env") {
    auto program = result.begin() + 1;
    while (program != result.end() && program->find('=') != std::string::npos)
      ++program;
    result.erase(result.begin(), program);
  }
  return result;
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

std::variant<DesktopEntry, DesktopEntry::Failure> DesktopEntry::read(const std::string& path) {
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

  const auto command = words(values.text("Exec"));
  if (!command.empty()) {
    entry.program = command.front();
    if (const std::string found = takeText(g_find_program_in_path(command.front().c_str())); !found.empty()) {
      entry.executable = FileStorage::withoutLinks(found);
    }
    for (auto word = command.begin() + 1; word != command.end(); ++word) {
      if (!isFieldCode(*word) && *word != "--") entry.hasOwnArguments = true;
    }
  }
  // TryExec tells whether the program is there where Exec only names something that starts it.
  if (const std::string attempt = values.text("TryExec"); !attempt.empty()) entry.requiredProgram = attempt;
  return entry;
}

std::optional<std::string> DesktopEntry::launchObstacle() const {
  if (program.empty() && !isStartedOverBus) return path + " names no program to start";
  for (const std::string& needed : {requiredProgram, program}) {
    if (needed.empty()) continue;
    if (takeText(g_find_program_in_path(needed.c_str())).empty()) {
      return "the program " + needed + " of " + path + " is not installed or may not be executed";
    }
  }
  return std::nullopt;
}

bool DesktopEntry::isEntryPath(const std::string& path) {
  return path.ends_with(kSuffix);
}

} // namespace orbel
