// Judges the bytes of a property list from outside before the library sees them. The library follows every
// reference of a binary list and recurses over the result, so 170 bytes can keep it busy for minutes and a
// deep list can end the process. Linear in the bytes and, for a binary list, in the values it stands for.
// Called by PropertyListCoder.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace orbel {

class PropertyListGuard {
public:
  // Of the bytes, and of all strings and data once each reference has been followed.
  static constexpr std::size_t kMaximumByteCount = std::size_t{64} * 1024 * 1024;
  // Lists and dictionaries within one another.
  static constexpr std::size_t kMaximumDepth = 512;
  // Once each reference has been followed; the keys of dictionaries count too.
  static constexpr std::size_t kMaximumValueCount = 1'000'000;

  static bool isBinary(std::span<const std::byte> bytes);

  // What speaks against reading the bytes, readable, for the log; nothing when they may be read. Bytes that
  // pass may still be no property list: whether every value is well-formed is the library's question.
  static std::optional<std::string> objection(std::span<const std::byte> bytes);
};

} // namespace orbel
