// The keys whose text does not depend on the keyboard layout, by virtual key code (the numbering of stored
// shortcuts). The shortcut value reads the tables; the recorder uses the named codes.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace orbel {

constexpr std::uint64_t kSpaceKeyCode = 49;
constexpr std::uint64_t kDeleteKeyCode = 51;
constexpr std::uint64_t kEscapeKeyCode = 53;
constexpr std::uint64_t kForwardDeleteKeyCode = 117;

// What menus write for the keys that take no character.
constexpr std::string_view kDeleteGlyph = "\u232B";
constexpr std::string_view kEscapeGlyph = "\u238B";

class KeyNames {
public:
  // The fixed text in UTF-8, in English where it is a word; none when the keyboard layout decides.
  static std::optional<std::string_view> fixedText(std::uint64_t keyCode);

  // 1 to 19 for F1 to F19; none for other keys (F20 has no fixed text).
  static std::optional<int> functionKeyNumber(std::uint64_t keyCode);

  // F1 to F20, the keys that make a shortcut without any modifier.
  static bool isFunctionKey(std::uint64_t keyCode);
};

} // namespace orbel
