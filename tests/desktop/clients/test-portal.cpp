// A portal on the session bus that wants dark windows. At each SIGUSR1 it changes that and announces it.
//
//   test-portal
#include <gio/gio.h>
#include <glib-unix.h>

namespace {

constexpr const char* kName = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterfaceName = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";
constexpr const char* kInterface = R"(<node><interface name="org.freedesktop.portal.Settings">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>)";

constexpr guint32 kDark = 1;
constexpr guint32 kLight = 2;

GDBusConnection* bus = nullptr;
guint32 scheme = kDark;

void answer(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
            GDBusMethodInvocation* invocation, gpointer) {
  const char* name = nullptr;
  const char* key = nullptr;
  g_variant_get(parameters, "(&s&s)", &name, &key);
  if (g_str_equal(name, kNamespace) && g_str_equal(key, kKey)) {
    g_dbus_method_invocation_return_value(
        invocation, g_variant_new("(v)", g_variant_new_variant(g_variant_new_uint32(scheme))));
  } else {
    g_dbus_method_invocation_return_dbus_error(invocation, "org.freedesktop.portal.Error.NotFound",
                                               "no such setting");
  }
}

gboolean changeMind(gpointer) {
  scheme = scheme == kDark ? kLight : kDark;
  g_dbus_connection_emit_signal(bus, nullptr, kPath, kInterfaceName, "SettingChanged",
                                g_variant_new("(ssv)", kNamespace, kKey, g_variant_new_uint32(scheme)),
                                nullptr);
  return G_SOURCE_CONTINUE;
}

} // namespace

int main() {
  bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  if (!bus) return 1;
  static const GDBusInterfaceVTable kTable{answer, nullptr, nullptr, {}};
  GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kInterface, nullptr);
  g_dbus_connection_register_object(bus, kPath, node->interfaces[0], &kTable, nullptr, nullptr, nullptr);
  g_bus_own_name_on_connection(bus, kName, G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr);
  g_unix_signal_add(SIGUSR1, changeMind, nullptr);
  g_main_loop_run(g_main_loop_new(nullptr, FALSE));
}
