#include <gio/gio.h>

#include "tests/desktop/harness/SessionBus.h"
#include "tests/support/base/AnnouncedLine.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <memory>
#include <stdexcept>

namespace orbel::test {

namespace {

constexpr int kCallTimeoutInMilliseconds = 10000;
constexpr const char* kInstalledServices = "/usr/share/dbus-1/services/";

struct VariantDeleter {
  void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantDeleter>;

// The machine's own configuration would start whatever is installed (accessibility, portals, settings
// daemons), and each of them changes what a test sees.
std::string configuration(const std::filesystem::path& serviceFolder, const std::string& address) {
  return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
         "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
         "<busconfig>\n  <type>session</type>\n  <keep_umask/>\n  <listen>" +
         address + "</listen>\n  <auth>EXTERNAL</auth>\n  <servicedir>" + serviceFolder.string() +
         "</servicedir>\n  <policy context=\"default\">\n    <allow send_destination=\"*\" "
         "eavesdrop=\"true\"/>\n"
         "    <allow eavesdrop=\"true\"/>\n    <allow own=\"*\"/>\n  </policy>\n</busconfig>\n";
}

struct Answer {
  Variant value;
  std::string error; // empty when the call succeeded
};

Answer call(GDBusConnection* connection, const std::string& name, const std::string& objectPath,
            const char* interface, const char* method, GVariant* parameters) {
  GError* error = nullptr;
  GVariant* value = g_dbus_connection_call_sync(connection, name.c_str(), objectPath.c_str(), interface,
                                                method, parameters, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                                kCallTimeoutInMilliseconds, nullptr, &error);
  Answer answer{Variant(value), error ? error->message : ""};
  g_clear_error(&error);
  return answer;
}

Answer askBus(GDBusConnection* connection, const char* method, const std::string& name) {
  return call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
              g_variant_new("(s)", name.c_str()));
}

testing::AssertionResult successOf(const Answer& answer, const std::string& name) {
  if (answer.error.empty()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << name << ": " << answer.error;
}

} // namespace

SessionBus::SessionBus(const Environment& environment, const std::filesystem::path& folder,
                       const std::string& address, const std::filesystem::path& log)
    : m_serviceFolder(folder / "services") {
  std::filesystem::create_directories(m_serviceFolder);
  const std::filesystem::path file = folder / "session.conf";
  writeFile(file, configuration(m_serviceFolder, address));
  AnnouncedLine announcement;
  m_daemon.emplace(ProcessDescription{
      .command = {"dbus-daemon", "--config-file=" + file.string(), "--nofork", "--nopidfile",
                  "--print-address=" + std::to_string(announcement.writeEnd())},
      .environment = environment,
      .log = log,
      .handedDescriptor = announcement.writeEnd()});
  if (!announcement.read(kPatience)) throw std::runtime_error("no session bus: " + readFile(log));
  GError* error = nullptr;
  const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  m_connection = g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, &error);
  if (!m_connection) {
    const std::string reason = error->message;
    g_clear_error(&error);
    throw std::runtime_error("cannot connect to the session bus: " + reason);
  }
}

SessionBus::~SessionBus() {
  g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
  g_object_unref(m_connection);
}

void SessionBus::offerInstalledService(const std::string& name) {
  const std::string description = readFile(kInstalledServices + name + ".service");
  if (description.empty()) throw std::runtime_error("this machine has no bus service " + name);
  writeFile(m_serviceFolder / (name + ".service"), description);
  // The folder is watched, but a caller cannot know when the watch has fired.
  call(m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ReloadConfig",
       nullptr);
}

bool SessionBus::hasOwner(const std::string& name) {
  const Answer answer = askBus(m_connection, "NameHasOwner", name);
  if (!answer.value) return false;
  gboolean isOwned = FALSE;
  g_variant_get(answer.value.get(), "(b)", &isOwned);
  return isOwned != FALSE;
}

std::optional<pid_t> SessionBus::processOf(const std::string& name) {
  const Answer answer = askBus(m_connection, "GetConnectionUnixProcessID", name);
  if (!answer.value) return std::nullopt;
  guint32 process = 0;
  g_variant_get(answer.value.get(), "(u)", &process);
  return static_cast<pid_t>(process);
}

bool SessionBus::answers(const std::string& name, const std::string& objectPath) {
  return call(m_connection, name, objectPath, "org.freedesktop.DBus.Introspectable", "Introspect", nullptr)
      .error.empty();
}

testing::AssertionResult SessionBus::activate(const std::string& name, const std::string& objectPath) {
  return successOf(call(m_connection, name, objectPath, "org.freedesktop.Application", "Activate",
                        g_variant_new("(a{sv})", nullptr)),
                   name + " Activate");
}

testing::AssertionResult SessionBus::activateAction(const std::string& name, const std::string& objectPath,
                                                    const std::string& action) {
  return successOf(call(m_connection, name, objectPath, "org.freedesktop.Application", "ActivateAction",
                        g_variant_new("(sava{sv})", action.c_str(), nullptr, nullptr)),
                   name + " action " + action);
}

void SessionBus::stop() {
  m_daemon->terminate();
}

} // namespace orbel::test
