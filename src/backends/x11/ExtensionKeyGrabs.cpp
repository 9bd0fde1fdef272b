#include "backends/x11/ExtensionKeyGrabs.h"

#include "backends/x11/Connection.h"

#include <xcb/xinput.h>

namespace orbel::x11 {

namespace {
constexpr std::uint16_t kMajorVersion = 2;
constexpr std::uint16_t kMinorVersion = 2;
constexpr xcb_input_device_id_t kEveryKeyboard = XCB_INPUT_DEVICE_ALL_MASTER;
} // namespace

bool ExtensionKeyGrabs::isAvailable() {
  if (m_isAvailable) return *m_isAvailable;
  const auto* extension = xcb_get_extension_data(m_connection.xcb(), &xcb_input_id);
  m_isAvailable = false;
  if (!extension || !extension->present) return false;
  const auto version = ownReply(xcb_input_xi_query_version_reply(
      m_connection.xcb(), xcb_input_xi_query_version(m_connection.xcb(), kMajorVersion, kMinorVersion),
      nullptr));
  m_isAvailable = version && version->major_version >= kMajorVersion;
  return *m_isAvailable;
}

bool ExtensionKeyGrabs::isHeldByAnother(xcb_keycode_t keyCode, std::span<const std::uint32_t> modifierMasks) {
  if (!isAvailable()) return false;
  const std::uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
  const auto count = static_cast<std::uint16_t>(modifierMasks.size());
  const auto reply = ownReply(xcb_input_xi_passive_grab_device_reply(
      m_connection.xcb(),
      xcb_input_xi_passive_grab_device(m_connection.xcb(), XCB_CURRENT_TIME, m_connection.root(), XCB_NONE,
                                       keyCode, kEveryKeyboard, count, 1, XCB_INPUT_GRAB_TYPE_KEYCODE,
                                       XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_INPUT_GRAB_MODE_22_ASYNC,
                                       XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, modifierMasks.data()),
      nullptr));
  // Waited for: a key that is pressed meanwhile would still come to this grab instead of to our own hot key.
  const auto released = xcb_input_xi_passive_ungrab_device_checked(
      m_connection.xcb(), m_connection.root(), keyCode, kEveryKeyboard, count, XCB_INPUT_GRAB_TYPE_KEYCODE,
      modifierMasks.data());
  const auto error = ownReply(xcb_request_check(m_connection.xcb(), released));
  // The reply lists the modifiers that could not be had.
  return reply && reply->num_modifiers != 0;
}

} // namespace orbel::x11
