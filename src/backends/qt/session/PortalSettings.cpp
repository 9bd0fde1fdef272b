// GLib's headers before Qt's, whose macros would otherwise replace words in them.
#include <gio/gio.h>

#include "backends/qt/session/PortalSettings.h"

#include "backends/common/SessionBus.h"

#include <utility>

namespace orbel::qt {

namespace {
constexpr const char* kService = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
constexpr const char* kKey = "color-scheme";
// The window waits for the answer, so that it does not change its colours before the user's eyes.
constexpr int kTimeout = 250; // milliseconds

enum Preference : guint32 { kPrefersDark = 1, kPrefersLight = 2 };

std::optional<ColorScheme> schemeOf(GVariant* value) {
  if (g_variant_is_of_type(value, G_VARIANT_TYPE_VARIANT)) {
    GVariant* inner = g_variant_get_variant(value);
    const auto scheme = schemeOf(inner);
    g_variant_unref(inner);
    return scheme;
  }
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return std::nullopt;
  switch (g_variant_get_uint32(value)) {
  case kPrefersDark:
    return ColorScheme::dark;
  case kPrefersLight:
    return ColorScheme::light;
  default:
    return std::nullopt;
  }
}
} // namespace

PortalSettings::PortalSettings(std::function<void()> changed) : m_changed(std::move(changed)) {
  if (!common::SessionBus::isThere()) return;
  m_bus = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  if (!m_bus) return;
  g_dbus_connection_set_exit_on_close(m_bus, FALSE);
  m_subscription = g_dbus_connection_signal_subscribe(
      m_bus, nullptr, kInterface, "SettingChanged", kPath, kNamespace, G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GVariant*, gpointer self) {
        static_cast<PortalSettings*>(self)->m_changed();
      },
      this, nullptr);
}

PortalSettings::~PortalSettings() {
  if (!m_bus) return;
  g_dbus_connection_signal_unsubscribe(m_bus, m_subscription);
  g_object_unref(m_bus);
}

std::optional<ColorScheme> PortalSettings::colorScheme() const {
  if (!m_bus) return std::nullopt;
  GVariant* reply = g_dbus_connection_call_sync(
      m_bus, kService, kPath, kInterface, "Read", g_variant_new("(ss)", kNamespace, kKey),
      G_VARIANT_TYPE("(v)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeout, nullptr, nullptr);
  if (!reply) return std::nullopt;
  GVariant* value = g_variant_get_child_value(reply, 0);
  const auto scheme = schemeOf(value);
  g_variant_unref(value);
  g_variant_unref(reply);
  return scheme;
}

} // namespace orbel::qt
