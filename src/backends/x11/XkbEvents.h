// Events for changes of the keymap, the group and the modifiers on a connection, and how a connection uses
// the keyboard extension. An X client that uses the extension gets these in place of the core protocol's
// mapping notifications.
#pragma once

#include <cstdint>
#include <optional>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

class XkbEvents {
public:
  // Selects changes of the keymap. None, and logged, when the server lacks the extension.
  static std::optional<XkbEvents> selectKeymapChanges(Connection& connection);
  // Selects changes of the group, which come with nothing that is merely typed.
  void selectGroupChanges(Connection& connection) const;
  // Selects every change of the modifiers in effect, held, latched or locked, whoever is typed to.
  void selectModifierChanges(Connection& connection, bool selects) const;
  // A held key then sends presses without releases between them, on this connection alone.
  void makeAutoRepeatDetectable(Connection& connection) const;

  bool isKeymapChange(const xcb_generic_event_t& event) const;
  bool isGroupChange(const xcb_generic_event_t& event) const;
  struct ModifierChange {
    xcb_keycode_t keyCode = 0;      // of the key that did it; 0 when it was none
    std::uint16_t modifierMask = 0; // in effect from now on
  };
  std::optional<ModifierChange> modifierChange(const xcb_generic_event_t& event) const;

private:
  explicit XkbEvents(std::uint8_t eventType) : m_eventType(eventType) {}
  bool isOfType(const xcb_generic_event_t& event, std::uint8_t xkbType) const;

  std::uint8_t m_eventType; // the one that all events of the extension share
};

} // namespace orbel::x11
