// The settings that the desktop hands to all toolkits through the X server (XSETTINGS).
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orbel::x11 {

class Connection;

class DesktopSettings {
public:
  // The connection outlives the object.
  explicit DesktopSettings(Connection& connection) : m_connection(connection) {}

  // Asked of the server now; none when the desktop has no such setting or no program publishes settings.
  std::optional<std::int32_t> integer(std::string_view name) const;
  std::optional<std::string> text(std::string_view name) const;

  // Looks a setting up in the bytes that a settings manager publishes; broken bytes hold nothing.
  static std::optional<std::int32_t> integer(std::span<const std::uint8_t> bytes, std::string_view name);
  static std::optional<std::string> text(std::span<const std::uint8_t> bytes, std::string_view name);

private:
  std::vector<std::uint8_t> published() const; // empty when no program publishes settings
  Connection& m_connection;
};

} // namespace orbel::x11
