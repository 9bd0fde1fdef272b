#include "backends/x11/DesktopSettings.h"

#include "backends/x11/Connection.h"
#include "backends/x11/ScreenSelection.h"

#include <bit>
#include <cstddef>
#include <variant>

namespace orbel::x11 {

namespace {
// Enough for some hundred settings; desktops publish about fifty.
constexpr std::uint32_t kMaximumBytes = 256 * 1024;

// The bytes name their own byte order; strings and names are padded to four bytes.
class Reader {
public:
  explicit Reader(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

  bool isBroken() const { return m_broken; }
  void setBigEndian(bool bigEndian) { m_bigEndian = bigEndian; }

  std::uint32_t number(std::size_t size) {
    const auto bytes = take(size);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const std::size_t place = m_bigEndian ? bytes.size() - 1 - i : i;
      value |= static_cast<std::uint32_t>(bytes[i]) << (8 * place);
    }
    return value;
  }

  std::string_view text(std::size_t length) {
    const auto bytes = take(length);
    take((4 - length % 4) % 4);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
  }

  void skip(std::size_t size) { take(size); }

private:
  std::span<const std::uint8_t> take(std::size_t size) {
    if (size > m_bytes.size()) {
      m_broken = true;
      m_bytes = {};
      return {};
    }
    const auto taken = m_bytes.first(size);
    m_bytes = m_bytes.subspan(size);
    return taken;
  }

  std::span<const std::uint8_t> m_bytes;
  bool m_bigEndian = false;
  bool m_broken = false;
};

enum SettingType : std::uint32_t { kInteger = 0, kString = 1, kColor = 2 };

using Setting = std::variant<std::monostate, std::int32_t, std::string>; // nothing for a colour

// None when there is no such setting; broken bytes hold nothing.
std::optional<Setting> find(std::span<const std::uint8_t> bytes, std::string_view name) {
  Reader reader(bytes);
  reader.setBigEndian(reader.number(1) == 1);
  reader.skip(7); // padding and the serial number of the whole
  const std::uint32_t count = reader.number(4);
  for (std::uint32_t i = 0; i < count && !reader.isBroken(); ++i) {
    const std::uint32_t type = reader.number(1);
    reader.skip(1);
    const std::size_t nameLength = reader.number(2);
    const std::string_view settingName = reader.text(nameLength);
    reader.skip(4); // the serial number of its last change
    Setting value;
    if (type == kInteger) {
      value = std::bit_cast<std::int32_t>(reader.number(4));
    } else if (type == kString) {
      const std::size_t length = reader.number(4);
      value = std::string(reader.text(length));
    } else if (type == kColor) {
      reader.skip(8);
    } else {
      return std::nullopt; // of unknown length, so nothing after it can be found
    }
    if (settingName == name && !reader.isBroken()) return value;
  }
  return std::nullopt;
}

template <class Value>
std::optional<Value> findValue(std::span<const std::uint8_t> bytes, std::string_view name) {
  const auto setting = find(bytes, name);
  const Value* value = setting ? std::get_if<Value>(&*setting) : nullptr;
  return value ? std::optional(*value) : std::nullopt;
}
} // namespace

std::vector<std::uint8_t> DesktopSettings::published() const {
  xcb_connection_t* xcb = m_connection.xcb();
  const xcb_window_t owner =
      ScreenSelection::owner(m_connection, ScreenSelection::atom(m_connection, "_XSETTINGS_S"));
  if (owner == XCB_NONE) return {};
  const xcb_atom_t property = m_connection.atom("_XSETTINGS_SETTINGS");
  const auto reply = ownReply(xcb_get_property_reply(
      xcb, xcb_get_property(xcb, 0, owner, property, property, 0, kMaximumBytes / 4), nullptr));
  if (!reply || reply->format != 8) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  return {bytes, bytes + xcb_get_property_value_length(reply.get())};
}

std::optional<std::int32_t> DesktopSettings::integer(std::string_view name) const {
  return integer(published(), name);
}

std::optional<std::string> DesktopSettings::text(std::string_view name) const {
  return text(published(), name);
}

std::optional<std::int32_t> DesktopSettings::integer(std::span<const std::uint8_t> bytes,
                                                     std::string_view name) {
  return findValue<std::int32_t>(bytes, name);
}

std::optional<std::string> DesktopSettings::text(std::span<const std::uint8_t> bytes, std::string_view name) {
  return findValue<std::string>(bytes, name);
}

} // namespace orbel::x11
