#include "backends/linux/Launcher.h"

#include "backends/linux/ApplicationFinder.h"
#include "backends/linux/FileStorage.h"
#include "backends/linux/GlibPointers.h"
#include "foundation/Log.h"

#include <gio/gdesktopappinfo.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <ranges>

namespace orbel::linux {

namespace {

constexpr std::size_t kRememberedStarts = 64;
constexpr const char* kGroup = G_KEY_FILE_DESKTOP_GROUP;

// What those who start programs pass to the started program about itself. Passed on, it would be taken for
// theirs by the programs that we start: a stale token, another's entry, another's service sockets.
constexpr std::array kStarterVariables{
    "DESKTOP_STARTUP_ID",
    "XDG_ACTIVATION_TOKEN",
    "GIO_LAUNCHED_DESKTOP_FILE",
    "DESKTOP_AUTOSTART_ID",
    "DBUS_STARTER_ADDRESS",
    "GIO_LAUNCHED_DESKTOP_FILE_PID",
    "DBUS_STARTER_BUS_TYPE",
    "INVOCATION_ID",
    "JOURNAL_STREAM",
    "NOTIFY_SOCKET",
    "LISTEN_FDS",
    "LISTEN_FDNAMES",
    "LISTEN_PID",
    "MANAGERPID",
    "SYSTEMD_EXEC_PID",
};

// In the child, before the program.
void beginSession(gpointer) {
  setsid();
}

// GIO asks the context for the identifier of a start. The general context knows none and the toolkits' own
// ones need their display, so this class gives back the one that was set.
constexpr const char* kIdentifierKey = "orbel-startup-id";

char* startupIdentifierOf(GAppLaunchContext* context, GAppInfo*, GList*) {
  return g_strdup(static_cast<const char*>(g_object_get_data(G_OBJECT(context), kIdentifierKey)));
}

GType contextType() {
  static const GType type = [] {
    GTypeInfo info{};
    info.class_size = sizeof(GAppLaunchContextClass);
    info.class_init = [](gpointer klass, gpointer) {
      static_cast<GAppLaunchContextClass*>(klass)->get_startup_notify_id = startupIdentifierOf;
    };
    info.instance_size = sizeof(GAppLaunchContext);
    return g_type_register_static(G_TYPE_APP_LAUNCH_CONTEXT, "OrbelLaunchContext", &info, G_TYPE_FLAG_NONE);
  }();
  return type;
}

GObjectPointer<GAppLaunchContext> makeContext(const std::vector<std::string>& privateVariables,
                                              const std::string& startupId) {
  GObjectPointer<GAppLaunchContext> context(
      static_cast<GAppLaunchContext*>(g_object_new(contextType(), nullptr)));
  for (const char* name : kStarterVariables)
    g_app_launch_context_unsetenv(context.get(), name);
  for (const auto& name : privateVariables)
    g_app_launch_context_unsetenv(context.get(), name.c_str());
  if (!startupId.empty()) {
    g_object_set_data_full(G_OBJECT(context.get()), kIdentifierKey, g_strdup(startupId.c_str()), g_free);
    g_app_launch_context_setenv(context.get(), "DESKTOP_STARTUP_ID", startupId.c_str());
    g_app_launch_context_setenv(context.get(), "XDG_ACTIVATION_TOKEN", startupId.c_str());
  }
  return context;
}

struct Texts { // a list as GLib takes it, borrowed from the vector
  explicit Texts(const std::vector<std::string>& texts) {
    for (const std::string& text : texts | std::views::reverse) {
      list = g_list_prepend(list, const_cast<char*>(text.c_str()));
    }
  }
  ~Texts() { g_list_free(list); }
  Texts(const Texts&) = delete;
  Texts& operator=(const Texts&) = delete;
  GList* list = nullptr;
};

std::string causeOf(GError* error) {
  const GlibError owned(error);
  return owned ? owned->message : "no cause was given";
}

Result<> spawn(GDesktopAppInfo* info, const std::string& path, const std::vector<std::string>& uris,
               GAppLaunchContext* context) {
  GError* error = nullptr;
  if (g_desktop_app_info_launch_uris_as_manager(info, Texts(uris).list, context, G_SPAWN_SEARCH_PATH,
                                                beginSession, nullptr, nullptr, nullptr, &error)) {
    return {};
  }
  return Failure{path + " could not be started: " + causeOf(error)};
}

// The same entry for starting its program ourselves, whatever it says about the bus.
GObjectPointer<GDesktopAppInfo> withoutBus(const std::string& path) {
  const GlibKeyFile file(g_key_file_new());
  if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) return nullptr;
  g_key_file_remove_key(file.get(), kGroup, G_KEY_FILE_DESKTOP_KEY_DBUS_ACTIVATABLE, nullptr);
  return GObjectPointer<GDesktopAppInfo>(g_desktop_app_info_new_from_keyfile(file.get()));
}

GObjectPointer<GDesktopAppInfo> infoOf(const std::string& path) {
  GObjectPointer<GDesktopAppInfo> info(g_desktop_app_info_new_from_filename(path.c_str()));
  if (info) return info;
  // GIO looks for "./program" in our working folder and gives up, instead of in the one that the entry names.
  // "env" looks for it once it is there.
  const GlibKeyFile file(g_key_file_new());
  if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) return nullptr;
  const std::string command =
      takeText(g_key_file_get_string(file.get(), kGroup, G_KEY_FILE_DESKTOP_KEY_EXEC, nullptr));
  if (command.empty()) return nullptr;
  g_key_file_set_string(file.get(), kGroup, G_KEY_FILE_DESKTOP_KEY_EXEC, ("env " + command).c_str());
  return GObjectPointer<GDesktopAppInfo>(g_desktop_app_info_new_from_keyfile(file.get()));
}

// A program that the bus starts may turn out to be missing there later; then its Exec is tried.
struct BusStart {
  std::string path;
  std::vector<std::string> uris;
  GObjectPointer<GAppLaunchContext> context;

  static void finished(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<BusStart> start(static_cast<BusStart*>(data));
    GError* error = nullptr;
    if (g_app_info_launch_uris_finish(G_APP_INFO(source), result, &error)) return;
    const std::string cause = causeOf(error);
    const auto info = withoutBus(start->path);
    if (!info) {
      Log::error(start->path + " could not be started over the session bus: " + cause);
    } else if (const auto spawned = spawn(info.get(), start->path, start->uris, start->context.get());
               !spawned) {
      Log::error(spawned.cause());
    }
  }
};

} // namespace

Launcher::Launcher(common::TopLevelWindows& windows, std::vector<std::string> privateVariables)
    : m_windows(windows), m_privateVariables(std::move(privateVariables)) {}

Result<> Launcher::launchEntry(const std::string& entryPath, const std::vector<std::string>& uris) const {
  const auto entry = DesktopEntry::read(entryPath);
  if (!entry) return entry.failure();
  if (auto checked = entry->checkLaunch(); !checked) return checked;
  const auto info = infoOf(entryPath);
  if (!info) return Failure{entryPath + " cannot be started"};

  auto context = makeContext(m_privateVariables, makeStartupId(entry->name, entryPath));
  if (!entry->isStartedOverBus) return spawn(info.get(), entryPath, uris, context.get());
  // GIO passes a token over the bus only for entries with StartupNotify, and reports an error of its own
  // about the missing one otherwise.
  const bool takesToken = g_desktop_app_info_get_boolean(info.get(), "StartupNotify") != FALSE;
  GAppLaunchContext* borrowed = takesToken ? context.get() : nullptr;
  auto start = std::make_unique<BusStart>(BusStart{entryPath, uris, std::move(context)});
  const Texts list(start->uris);
  g_app_info_launch_uris_async(G_APP_INFO(info.get()), list.list, borrowed, nullptr, BusStart::finished,
                               start.release());
  return {};
}

Result<> Launcher::launchExecutable(const std::string& path,
                                    const std::vector<std::string>& arguments) const {
  if (!ApplicationFinder::isProgram(path)) {
    return Failure{path + (::access(path.c_str(), F_OK) == 0 ? " may not be executed" : " does not exist")};
  }
  const auto context = makeContext(m_privateVariables, makeStartupId(FileStorage::nameOf(path), ""));
  char** environment = g_app_launch_context_get_environment(context.get());
  std::vector<char*> words{const_cast<char*>(path.c_str())};
  for (const auto& argument : arguments)
    words.push_back(const_cast<char*>(argument.c_str()));
  words.push_back(nullptr);
  GError* error = nullptr;
  const bool isStarted = g_spawn_async(g_get_home_dir(), words.data(), environment, G_SPAWN_DEFAULT,
                                       beginSession, nullptr, nullptr, &error) != FALSE;
  g_strfreev(environment);
  if (isStarted) return {};
  return Failure{path + " could not be started: " + causeOf(error)};
}

std::string Launcher::makeStartupId(const std::string& name, const std::string& entryPath) const {
  std::string identifier = m_windows.makeStartupId(name);
  if (!identifier.empty() && !entryPath.empty()) {
    m_started.emplace_back(identifier, entryPath);
    if (m_started.size() > kRememberedStarts) m_started.pop_front();
  }
  return identifier;
}

std::string Launcher::entryStartedAs(const std::string& startupId) const {
  for (const auto& [identifier, path] : m_started) {
    if (identifier == startupId) return path;
  }
  return {};
}

} // namespace orbel::linux
