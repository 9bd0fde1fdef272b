// A keyboard shortcut in its stored form, a keyed archive, made and read independently of the program
// under test.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orbel::test {

inline constexpr std::int64_t kShiftFlag = 0x20000;
inline constexpr std::int64_t kControlFlag = 0x40000;
inline constexpr std::int64_t kOptionFlag = 0x80000;   // Alt
inline constexpr std::int64_t kCommandFlag = 0x100000; // Super

// Virtual key codes as they are stored.
inline constexpr std::int64_t kSpaceKeyCode = 49;
inline constexpr std::int64_t kReturnKeyCode = 36;
inline constexpr std::int64_t kEscapeKeyCode = 53;
inline constexpr std::int64_t kLetterAKeyCode = 0;
inline constexpr std::int64_t kLetterJKeyCode = 38;
inline constexpr std::int64_t kF5KeyCode = 96;

struct StoredShortcut {
  std::int64_t keyCode = 0;
  std::int64_t modifierFlags = 0;

  // The bytes of a binary property list.
  std::string archived() const;
  static std::string archivedNothing();
  // Nothing for an archive of nothing and for bytes that are no archive of a shortcut.
  static std::optional<StoredShortcut> unarchived(const std::string& archive);

  friend bool operator==(const StoredShortcut&, const StoredShortcut&) = default;
};

} // namespace orbel::test
