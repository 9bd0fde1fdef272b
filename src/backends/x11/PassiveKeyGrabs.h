// Key combinations grabbed passively on the root window, whatever Caps Lock and Num Lock are. Nothing else
// that is typed is touched: an active grab would silence other grabs and the program under the menu. A held
// key is one press. The grabs follow changes of the keyboard mapping. Used by X11HotKeys and EscapeGrab,
// which share one connection and so do not hinder each other.
#pragma once

#include "backends/x11/DelayedCall.h"
#include "backends/x11/ExtensionKeyGrabs.h"
#include "backends/x11/ModifierMap.h"
#include "backends/x11/XkbEvents.h"
#include "foundation/Lifetime.h"
#include "foundation/Registration.h"
#include "foundation/Result.h"

#include <bitset>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

namespace orbel::x11 {

class Connection;

struct KeyCombination {
  std::uint16_t evdevCode = 0;
  std::uint32_t modifiers = 0; // bits of HotKeyModifier
};

class PassiveKeyGrabs {
public:
  explicit PassiveKeyGrabs(Connection& connection);
  ~PassiveKeyGrabs();
  PassiveKeyGrabs(const PassiveKeyGrabs&) = delete;
  PassiveKeyGrabs& operator=(const PassiveKeyGrabs&) = delete;

  // Fails when another program holds the combination or the keyboard has no such key. A grab of the input
  // extension is no hindrance: this one takes precedence over it for as long as it lasts.
  Result<Registration> grab(KeyCombination combination, std::function<void()> pressed);
  // As grab(), but refused also where another program holds the combination by the input extension: its own
  // shortcut would be silenced.
  Result<Registration> grabIfFree(KeyCombination combination, std::function<void()> pressed);
  // Whether grabIfFree() would be refused for that; found out by trying. What we hold ourselves is not held
  // by another.
  bool isHeldByAnother(KeyCombination combination);

private:
  using Grab = std::pair<xcb_keycode_t, std::uint16_t>; // key code and modifier mask
  struct Entry {
    KeyCombination combination;
    std::function<void()> pressed;
    std::vector<Grab> grabs; // empty when they could not be taken after a change of the mapping
  };

  void handleEvent(const xcb_generic_event_t& event);
  void handlePress(const xcb_key_press_event_t& press);
  void handleRelease(const xcb_key_release_event_t& release);
  void mappingChanged();
  void remove(const std::shared_ptr<Entry>& entry);

  std::vector<Grab> grabsFor(KeyCombination combination) const;
  // All of them or none.
  bool take(const std::vector<Grab>& grabs);
  void release(const std::vector<Grab>& grabs);
  bool isHeldByExtension(const std::vector<Grab>& grabs);

  Connection& m_connection;
  ExtensionKeyGrabs m_extensionGrabs;
  ModifierMap m_modifiers;
  std::optional<XkbEvents> m_xkb;
  std::vector<std::shared_ptr<Entry>> m_entries;
  std::map<Grab, int> m_holders;     // how many entries share a grab: the server knows one
  std::bitset<256> m_down;           // key codes seen pressed during the current grab
  xcb_keycode_t m_activatingKey = 0; // the key whose release ends the current grab; 0 when there is none
  DelayedCall m_mappingChange;
  Registration m_events;
  Lifetime m_lifetime; // registrations may outlive us
};

} // namespace orbel::x11
