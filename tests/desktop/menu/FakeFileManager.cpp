#include "tests/desktop/menu/FakeFileManager.h"

#include <gio/gio.h>
#include <stdexcept>

namespace orbel::test {

namespace {

constexpr const char* kName = "org.freedesktop.FileManager1";
constexpr const char* kPath = "/org/freedesktop/FileManager1";
constexpr unsigned kDoNotQueue = 4;
constexpr unsigned kIsOwner = 1;
constexpr const char* kInterface = R"(<node><interface name="org.freedesktop.FileManager1">
  <method name="ShowFolders"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
  <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface></node>)";

unsigned requestName(GDBusConnection* connection) {
  GVariant* answer = g_dbus_connection_call_sync(
      connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", kName, kDoNotQueue), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
      nullptr);
  if (!answer) return 0;
  guint32 result = 0;
  g_variant_get(answer, "(u)", &result);
  g_variant_unref(answer);
  return result;
}

} // namespace

FakeFileManager::FakeFileManager(SessionBus& bus) : m_connection(bus.connection()) {
  static const GDBusInterfaceVTable kTable{
      [](GDBusConnection*, const char*, const char*, const char*, const char* method, GVariant* parameters,
         GDBusMethodInvocation* invocation,
         gpointer self) { static_cast<FakeFileManager*>(self)->answer(method, parameters, invocation); },
      nullptr,
      nullptr,
      {}};
  GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kInterface, nullptr);
  m_object = g_dbus_connection_register_object(m_connection, kPath, node->interfaces[0], &kTable, this,
                                               nullptr, nullptr);
  g_dbus_node_info_unref(node);
  if (m_object == 0 || requestName(m_connection) != kIsOwner)
    throw std::runtime_error("the bus gives no file manager's name");
}

FakeFileManager::~FakeFileManager() {
  // The connection is the session's, which serves the next case, too: that one must not find the name taken.
  if (GVariant* answer = g_dbus_connection_call_sync(
          m_connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
          "ReleaseName", g_variant_new("(s)", kName), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr))
    g_variant_unref(answer);
  g_dbus_connection_unregister_object(m_connection, m_object);
}

const std::vector<std::string>& FakeFileManager::requests() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
  return m_requests;
}

void FakeFileManager::answer(const char* method, GVariant* parameters, GDBusMethodInvocation* invocation) {
  GVariantIter* addresses = nullptr;
  g_variant_get(parameters, "(ass)", &addresses, nullptr);
  const char* address = nullptr;
  while (g_variant_iter_next(addresses, "&s", &address))
    m_requests.push_back(std::string(method) + ' ' + address);
  g_variant_iter_free(addresses);
  g_dbus_method_invocation_return_value(invocation, nullptr);
}

} // namespace orbel::test
