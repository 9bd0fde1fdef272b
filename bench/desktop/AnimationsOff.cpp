#include "bench/desktop/AnimationsOff.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace orbel::bench {

namespace {
// The XSETTINGS wire format: byte order, serial, count, then per setting a type, a padded name, a serial and
// a value.
std::vector<std::uint8_t> oneIntegerSetting(const std::string& name, std::int32_t value) {
  std::vector<std::uint8_t> bytes;
  const auto append = [&](const auto& number) {
    const auto* first = reinterpret_cast<const std::uint8_t*>(&number);
    bytes.insert(bytes.end(), first, first + sizeof number);
  };
  append(std::uint32_t{0}); // least significant byte first, three bytes unused
  append(std::uint32_t{1}); // serial
  append(std::uint32_t{1}); // one setting
  append(std::uint8_t{0});  // an integer
  append(std::uint8_t{0});
  append(static_cast<std::uint16_t>(name.size()));
  bytes.insert(bytes.end(), name.begin(), name.end());
  bytes.resize((bytes.size() + 3) / 4 * 4);
  append(std::uint32_t{1});
  append(value);
  return bytes;
}
} // namespace

AnimationsOff::AnimationsOff(test::DisplayConnection& display)
    : m_display(display), m_window(xcb_generate_id(display.get())) {
  xcb_connection_t* const connection = display.get();
  xcb_create_window(connection, 0, m_window, display.root(), -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  const auto settings = oneIntegerSetting("Gtk/EnableAnimations", 0);
  const xcb_atom_t property = display.atom("_XSETTINGS_SETTINGS");
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, property, property, 8,
                      static_cast<std::uint32_t>(settings.size()), settings.data());
  xcb_set_selection_owner(connection, m_window, display.atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
  display.roundTrip();
}

AnimationsOff::~AnimationsOff() {
  xcb_destroy_window(m_display.get(), m_window);
  m_display.roundTrip();
}

} // namespace orbel::bench
