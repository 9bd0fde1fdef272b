#include "backends/x11/XkbEvents.h"

#include "backends/x11/Connection.h"
#include "backends/x11/XcbEvent.h"
#include "foundation/Log.h"

// The C header has a member of this name.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

namespace orbel::x11 {

namespace {
constexpr std::uint16_t kMajorVersion = 1;
constexpr std::uint16_t kMinorVersion = 0;
constexpr xcb_xkb_device_spec_t kCoreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

// Each part by itself: users of one connection select different parts and must leave the others' alone.
void selectState(Connection& connection, std::uint16_t part, bool selects) {
  xcb_xkb_select_events_details_t details{};
  details.affectState = part;
  details.stateDetails = selects ? part : 0;
  xcb_xkb_select_events_aux(connection.xcb(), kCoreKeyboard, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0,
                            &details);
}
} // namespace

std::optional<XkbEvents> XkbEvents::selectKeymapChanges(Connection& connection) {
  const auto* extension = xcb_get_extension_data(connection.xcb(), &xcb_xkb_id);
  if (!extension || !extension->present) {
    Log::warning("the X server has no keyboard extension; changes of the keyboard layout are not followed");
    return std::nullopt;
  }
  const auto use = ownReply(xcb_xkb_use_extension_reply(
      connection.xcb(), xcb_xkb_use_extension(connection.xcb(), kMajorVersion, kMinorVersion), nullptr));
  if (!use || !use->supported) {
    Log::warning(
        "the X server's keyboard extension is too old; changes of the keyboard layout are not followed");
    return std::nullopt;
  }
  constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
  constexpr std::uint16_t mapParts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                     XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                     XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
  xcb_xkb_select_events(connection.xcb(), kCoreKeyboard, events, 0, events, mapParts, mapParts, nullptr);
  return XkbEvents(extension->first_event);
}

void XkbEvents::selectGroupChanges(Connection& connection) const {
  selectState(connection, XCB_XKB_STATE_PART_GROUP_STATE, true);
}

void XkbEvents::selectModifierChanges(Connection& connection, bool selects) const {
  selectState(connection, XCB_XKB_STATE_PART_MODIFIER_STATE, selects);
}

void XkbEvents::makeAutoRepeatDetectable(Connection& connection) const {
  constexpr std::uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
  const auto reply = ownReply(xcb_xkb_per_client_flags_reply(
      connection.xcb(), xcb_xkb_per_client_flags(connection.xcb(), kCoreKeyboard, flag, flag, 0, 0, 0),
      nullptr));
  if (!reply || (reply->value & flag) == 0)
    Log::warning(
        "the X server does not tell auto-repeat from presses; a held hot key triggers again and again");
}

bool XkbEvents::isKeymapChange(const xcb_generic_event_t& event) const {
  return isOfType(event, XCB_XKB_NEW_KEYBOARD_NOTIFY) || isOfType(event, XCB_XKB_MAP_NOTIFY);
}

bool XkbEvents::isGroupChange(const xcb_generic_event_t& event) const {
  return isOfType(event, XCB_XKB_STATE_NOTIFY) &&
         (reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event).changed &
          XCB_XKB_STATE_PART_GROUP_STATE) != 0;
}

std::optional<XkbEvents::ModifierChange> XkbEvents::modifierChange(const xcb_generic_event_t& event) const {
  if (!isOfType(event, XCB_XKB_STATE_NOTIFY)) return std::nullopt;
  const auto& change = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
  if ((change.changed & XCB_XKB_STATE_PART_MODIFIER_STATE) == 0) return std::nullopt;
  return ModifierChange{change.keycode, change.mods};
}

bool XkbEvents::isOfType(const xcb_generic_event_t& event, std::uint8_t xkbType) const {
  // Every event of the extension has its own type where others keep the detail.
  return eventType(event) == m_eventType && event.pad0 == xkbType;
}

} // namespace orbel::x11
