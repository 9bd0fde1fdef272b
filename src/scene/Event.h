// What the pointer and the keyboard do, as the window hands it to its view tree.
#pragma once

#include "foundation/Geometry.h"

#include <cstdint>

namespace orbel {

// Device-independent modifier flags, the values in which a shortcut is stored.
enum ModifierFlag : std::uint64_t {
  kShiftFlag = 0x20000,
  kControlFlag = 0x40000,
  kOptionFlag = 0x80000,   // Alt
  kCommandFlag = 0x100000, // Super
};
constexpr std::uint64_t kAllModifierFlags = kShiftFlag | kControlFlag | kOptionFlag | kCommandFlag;

enum class PointerButton { primary, secondary };

struct MouseEvent {
  Point locationInWindow; // points, y up
  std::uint64_t modifierFlags = 0;
  // Of a move or an exit: whether the primary button is down. A press and a release say it by themselves.
  bool primaryButtonIsDown = false;
};

// The virtual key code of a key that no shortcut can name, and of a shortcut without a key. Not ours to
// choose: MASShortcut::keyCode() is known to give the largest signed number there.
constexpr std::uint64_t kNoKeyCode = 0x7FFFFFFFFFFFFFFF;

struct KeyEvent {
  std::uint64_t keyCode = 0; // virtual key code, the numbering in which shortcuts are stored
  std::uint64_t modifierFlags = 0;
  bool modifierChange = false; // a modifier was pressed or released, no other key
};

} // namespace orbel
