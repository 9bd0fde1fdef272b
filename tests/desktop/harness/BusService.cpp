#include "tests/desktop/harness/BusService.h"

#include <gio/gio.h>

#include <stdexcept>
#include <utility>

namespace orbel::test {

namespace {
constexpr unsigned kDoNotQueue = 4;
constexpr unsigned kIsOwner = 1;
constexpr int kTimeout = 10000; // milliseconds
} // namespace

BusService::BusService(const std::string& busAddress, Description description)
    : m_description(std::move(description)) {
  const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                       G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  m_connection = g_dbus_connection_new_for_address_sync(busAddress.c_str(), flags, nullptr, nullptr, nullptr);
  if (!m_connection) throw std::runtime_error("no bus for " + m_description.name);
  g_dbus_connection_set_exit_on_close(m_connection, FALSE);

  static const GDBusInterfaceVTable kTable{
      [](GDBusConnection*, const char* sender, const char*, const char*, const char* method,
         GVariant* parameters, GDBusMethodInvocation* invocation, gpointer self) {
        const auto& call = static_cast<BusService*>(self)->m_description.call;
        g_dbus_method_invocation_return_value(invocation, call(method, parameters, sender));
      },
      [](GDBusConnection*, const char*, const char*, const char*, const char* property, GError**,
         gpointer self) { return static_cast<BusService*>(self)->m_description.property(property); },
      nullptr,
      {}};
  GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(m_description.introspection.c_str(), nullptr);
  if (!node) throw std::runtime_error("no interface for " + m_description.name);
  m_interface = node->interfaces[0]->name;
  m_object = g_dbus_connection_register_object(m_connection, m_description.path.c_str(), node->interfaces[0],
                                               &kTable, this, nullptr, nullptr);
  g_dbus_node_info_unref(node);
  GVariant* answer = ask("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                         "RequestName", g_variant_new("(su)", m_description.name.c_str(), kDoNotQueue));
  guint32 result = 0;
  if (answer) g_variant_get(answer, "(u)", &result);
  if (answer) g_variant_unref(answer);
  if (m_object == 0 || result != kIsOwner) throw std::runtime_error("the bus gives no " + m_description.name);
}

BusService::~BusService() {
  g_dbus_connection_unregister_object(m_connection, m_object);
  g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
  g_object_unref(m_connection);
}

void BusService::serve() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

void BusService::emit(const std::string& signal, GVariant* values) const {
  g_dbus_connection_emit_signal(m_connection, nullptr, m_description.path.c_str(), m_interface.c_str(),
                                signal.c_str(), values, nullptr);
  g_dbus_connection_flush_sync(m_connection, nullptr, nullptr);
}

GVariant* BusService::ask(const std::string& name, const std::string& path, const std::string& interface,
                          const std::string& method, GVariant* values) const {
  struct Outcome {
    bool hasCome = false;
    GVariant* answer = nullptr;
  } outcome;
  g_dbus_connection_call(
      m_connection, name.c_str(), path.c_str(), interface.c_str(), method.c_str(), values, nullptr,
      G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeout, nullptr,
      [](GObject* connection, GAsyncResult* result, gpointer waiting) {
        auto& asked = *static_cast<Outcome*>(waiting);
        asked.answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr);
        asked.hasCome = true;
      },
      &outcome);
  // Whoever is asked may live in this very process.
  while (!outcome.hasCome)
    g_main_context_iteration(nullptr, TRUE);
  return outcome.answer;
}

} // namespace orbel::test
