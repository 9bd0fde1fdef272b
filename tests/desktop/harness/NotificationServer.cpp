#include "tests/desktop/harness/NotificationServer.h"

#include <gio/gio.h>

namespace orbel::test {

namespace {
constexpr const char* kIntrospection = R"(<node><interface name="org.freedesktop.Notifications">
  <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="as" direction="in"/><arg type="a{sv}" direction="in"/><arg type="i" direction="in"/>
    <arg type="u" direction="out"/></method>
</interface></node>)";
} // namespace

NotificationServer::NotificationServer(const std::string& busAddress) {
  const auto call = [this](const std::string&, GVariant* parameters, const std::string&) {
    const char *program = nullptr, *title = nullptr, *text = nullptr;
    g_variant_get_child(parameters, 0, "&s", &program);
    g_variant_get_child(parameters, 3, "&s", &title);
    g_variant_get_child(parameters, 4, "&s", &text);
    m_messages.push_back({program, title, text});
    return g_variant_new("(u)", static_cast<guint32>(m_messages.size()));
  };
  m_service = std::make_unique<BusService>(busAddress,
                                           BusService::Description{.name = "org.freedesktop.Notifications",
                                                                   .path = "/org/freedesktop/Notifications",
                                                                   .introspection = kIntrospection,
                                                                   .call = call});
}

const std::vector<NotificationServer::Message>& NotificationServer::messages() {
  BusService::serve();
  return m_messages;
}

} // namespace orbel::test
