// Which of the server's eight modifier bits stand for our modifiers under the current keyboard mapping.
// A snapshot: made anew when the mapping changes.
#pragma once

#include <cstdint>
#include <vector>

namespace orbel {

class Connection;

class ModifierMap {
public:
  // Two round trips.
  static ModifierMap current(Connection& connection);

  // The bits of the hot-key interface (Command 256, Shift 512, Option 2048, Control 4096) as X modifier bits.
  std::uint16_t maskForModifiers(std::uint32_t modifiers) const;
  // The modifiers with every state of Caps Lock and Num Lock, each once.
  std::vector<std::uint16_t> lockVariants(std::uint16_t modifierMask) const;
  // The modifiers of a key event's state that tell one combination from another.
  std::uint16_t significantMask() const;

private:
  std::uint16_t m_command = 0; // Super
  std::uint16_t m_option = 0;  // Alt
  std::uint16_t m_numLock = 0; // 0 when no key locks numbers
};

} // namespace orbel
