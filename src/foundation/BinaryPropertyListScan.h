// Walks a binary property list as the library would, following every reference, but keeps nothing and stops
// at the limits of PropertyListGuard, at a reference that leads back to itself, and at anything that lies
// outside the bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orbel {

class BinaryPropertyListScan {
public:
  explicit BinaryPropertyListScan(std::span<const std::byte> bytes) : m_bytes(bytes) {}
  std::optional<std::string> objection();

private:
  enum class Kind { scalar, text, list, dictionary };
  struct Object {
    Kind kind = Kind::scalar;
    std::uint64_t count = 0;         // bytes of a scalar or a text, entries of a list or a dictionary
    std::uint64_t contentOffset = 0; // of the payload or the first reference
  };
  // A list or dictionary that is being walked.
  struct Frame {
    std::uint64_t number;
    Object object;
    std::uint64_t nextReference = 0;
    std::uint64_t referenceCount() const;
  };

  bool readTrailer();
  std::optional<std::string> walk();
  // Counts the object and, if it holds others, puts it on the path.
  std::optional<std::string> enter(std::uint64_t number, bool mustBeKey);
  // None when the object lies outside the bytes or is of a kind that no property list of ours has.
  std::optional<Object> objectNumbered(std::uint64_t number) const;
  std::optional<Object> withCount(Object object, std::uint64_t offset, std::uint64_t low,
                                  std::uint64_t unit) const;
  std::uint64_t bigEndian(std::uint64_t offset, std::uint64_t size) const;
  bool holds(std::uint64_t offset, std::uint64_t size) const;

  std::span<const std::byte> m_bytes;
  std::uint64_t m_offsetSize = 0;
  std::uint64_t m_referenceSize = 0;
  std::uint64_t m_objectCount = 0;
  std::uint64_t m_topObject = 0;
  std::uint64_t m_offsetTable = 0;
  std::vector<Frame> m_path;
  std::vector<bool> m_isOnPath;
  std::uint64_t m_valueCount = 0;
  std::uint64_t m_payloadBytes = 0;
};

} // namespace orbel
