#include "tests/desktop/harness/StatusNotifierWatcher.h"

#include <gio/gio.h>

namespace orbel::test {

namespace {
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr const char* kItemInterface = "org.kde.StatusNotifierItem";
constexpr const char* kIntrospection = R"(<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
  <signal name="StatusNotifierHostUnregistered"/>
</interface></node>)";
} // namespace

StatusNotifierWatcher::StatusNotifierWatcher(const std::string& busAddress, PanelPresence panel)
    : m_hasPanel(panel == PanelPresence::drawsItems) {
  const auto call = [this](const std::string& method, GVariant* parameters, const std::string&) -> GVariant* {
    const char* item = nullptr;
    g_variant_get(parameters, "(&s)", &item);
    if (method == "RegisterStatusNotifierItem") m_items.emplace_back(item);
    return nullptr;
  };
  const auto property = [this](const std::string& name) -> GVariant* {
    if (name == "IsStatusNotifierHostRegistered") return g_variant_new_boolean(m_hasPanel);
    if (name == "ProtocolVersion") return g_variant_new_int32(0);
    GVariantBuilder items;
    g_variant_builder_init(&items, G_VARIANT_TYPE("as"));
    for (const std::string& item : m_items)
      g_variant_builder_add(&items, "s", item.c_str());
    return g_variant_builder_end(&items);
  };
  m_service = std::make_unique<BusService>(busAddress,
                                           BusService::Description{.name = "org.kde.StatusNotifierWatcher",
                                                                   .path = "/StatusNotifierWatcher",
                                                                   .introspection = kIntrospection,
                                                                   .call = call,
                                                                   .property = property});
}

void StatusNotifierWatcher::setPanel(PanelPresence panel) {
  m_hasPanel = panel == PanelPresence::drawsItems;
  m_service->emit(m_hasPanel ? "StatusNotifierHostRegistered" : "StatusNotifierHostUnregistered", nullptr);
}

const std::vector<std::string>& StatusNotifierWatcher::items() {
  BusService::serve();
  return m_items;
}

bool StatusNotifierWatcher::click(const std::string& item, const std::string& method) const {
  GVariant* answer = m_service->ask(item, kItemPath, kItemInterface, method, g_variant_new("(ii)", 10, 10));
  if (answer) g_variant_unref(answer);
  return answer != nullptr;
}

GVariant* StatusNotifierWatcher::property(const std::string& item, const std::string& name) const {
  GVariant* answer = m_service->ask(item, kItemPath, "org.freedesktop.DBus.Properties", "Get",
                                    g_variant_new("(ss)", kItemInterface, name.c_str()));
  if (!answer) return nullptr;
  GVariant* value = nullptr;
  g_variant_get(answer, "(v)", &value);
  g_variant_unref(answer);
  return value;
}

std::optional<std::string> StatusNotifierWatcher::text(const std::string& item,
                                                       const std::string& name) const {
  GVariant* value = property(item, name);
  if (!value) return std::nullopt;
  gchar* printed = g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) ? g_variant_dup_string(value, nullptr)
                                                                      : g_variant_print(value, FALSE);
  const std::string text = printed;
  g_free(printed);
  g_variant_unref(value);
  return text;
}

std::vector<std::uint32_t> StatusNotifierWatcher::pixels(const std::string& item, int side) const {
  std::vector<std::uint32_t> pixels;
  GVariant* value = property(item, "IconPixmap");
  if (!value) return pixels;
  GVariantIter pixmaps;
  g_variant_iter_init(&pixmaps, value);
  gint32 width = 0, height = 0;
  GVariant* bytes = nullptr;
  while (g_variant_iter_next(&pixmaps, "(ii@ay)", &width, &height, &bytes)) {
    gsize count = 0;
    const auto* data = static_cast<const guchar*>(g_variant_get_fixed_array(bytes, &count, 1));
    if (width == side && height == side) {
      for (gsize index = 0; index + 3 < count; index += 4)
        pixels.push_back(std::uint32_t{data[index]} << 24 | std::uint32_t{data[index + 1]} << 16 |
                         std::uint32_t{data[index + 2]} << 8 | data[index + 3]);
    }
    g_variant_unref(bytes);
  }
  g_variant_unref(value);
  return pixels;
}

} // namespace orbel::test
