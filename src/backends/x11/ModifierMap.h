// Which of the server's eight modifier bits stand for our modifiers under the current keyboard mapping.
// A snapshot: made anew when the mapping changes.
#pragma once

#include <bitset>
#include <cstdint>
#include <vector>

namespace orbel::x11 {

class Connection;

class ModifierMap {
public:
  // Two round trips.
  static ModifierMap current(Connection& connection);

  // The bits of HotKeyModifier as X modifier bits.
  std::uint16_t maskForModifiers(std::uint32_t modifiers) const;
  // The modifiers with every state of Caps Lock and Num Lock, each once.
  std::vector<std::uint16_t> lockVariants(std::uint16_t modifierMask) const;
  // The modifiers of a key event's state that distinguish one combination from another.
  std::uint16_t significantMask() const;
  // X modifier bits as the flags in which a shortcut is stored (scene/Event.h); locks are none of them.
  std::uint64_t modifierFlags(std::uint16_t modifierMask) const;
  // Whether the key with this X key code sets a modifier. Num Lock does not count: it is a key with a name of
  // its own.
  bool isModifierKey(std::uint8_t keyCode) const { return m_modifierKeys[keyCode]; }

private:
  std::uint16_t m_command = 0; // Super
  std::uint16_t m_option = 0;  // Alt
  std::uint16_t m_numLock = 0; // 0 when no key locks numbers
  std::bitset<256> m_modifierKeys;
};

} // namespace orbel::x11
