#include "foundation/BinaryPropertyListScan.h"

#include "foundation/PropertyListGuard.h"

namespace orbel {

namespace {

constexpr std::uint64_t kHeaderSize = 8;
constexpr std::uint64_t kTrailerSize = 32;
constexpr std::uint64_t kLargestField = 8; // bytes of an offset or a reference

} // namespace

std::uint64_t BinaryPropertyListScan::Frame::referenceCount() const {
  return object.kind == Kind::dictionary ? 2 * object.count : object.count;
}

std::optional<std::string> BinaryPropertyListScan::objection() {
  if (!readTrailer()) return "it is cut off or its table of objects lies outside of it";
  m_isOnPath.assign(static_cast<std::size_t>(m_objectCount), false);
  return walk();
}

bool BinaryPropertyListScan::readTrailer() {
  if (m_bytes.size() < kHeaderSize + kTrailerSize + 2) return false;
  const std::uint64_t trailer = m_bytes.size() - kTrailerSize;
  m_offsetSize = bigEndian(trailer + 6, 1);
  m_referenceSize = bigEndian(trailer + 7, 1);
  m_objectCount = bigEndian(trailer + 8, 8);
  m_topObject = bigEndian(trailer + 16, 8);
  m_offsetTable = bigEndian(trailer + 24, 8);
  if (m_offsetSize == 0 || m_offsetSize > kLargestField) return false;
  if (m_referenceSize == 0 || m_referenceSize > kLargestField) return false;
  // Every object has at least its marker byte; this also keeps the product below from overflowing.
  if (m_objectCount == 0 || m_objectCount > trailer || m_topObject >= m_objectCount) return false;
  if (m_offsetTable < kHeaderSize || m_offsetTable > trailer) return false;
  return m_objectCount * m_offsetSize <= trailer - m_offsetTable;
}

std::optional<std::string> BinaryPropertyListScan::walk() {
  if (auto cause = enter(m_topObject, false)) return cause;
  while (!m_path.empty()) {
    Frame& frame = m_path.back();
    if (frame.nextReference == frame.referenceCount()) {
      m_isOnPath[static_cast<std::size_t>(frame.number)] = false;
      m_path.pop_back();
      continue;
    }
    const std::uint64_t index = frame.nextReference++;
    const std::uint64_t number =
        bigEndian(frame.object.contentOffset + index * m_referenceSize, m_referenceSize);
    // The keys of a dictionary stand before its values.
    const bool isKey = frame.object.kind == Kind::dictionary && index < frame.object.count;
    if (auto cause = enter(number, isKey)) return cause;
  }
  return std::nullopt;
}

std::optional<std::string> BinaryPropertyListScan::enter(std::uint64_t number, bool mustBeKey) {
  if (++m_valueCount > PropertyListGuard::kMaximumValueCount) {
    return "its references stand for more than 1,000,000 values";
  }
  if (number >= m_objectCount) return "a reference leads to no object";
  const auto object = objectNumbered(number);
  if (!object) return "an object lies outside of it or is of an unknown kind";
  if (mustBeKey && object->kind != Kind::text) return "a key of a dictionary is not text";
  if (object->kind == Kind::scalar || object->kind == Kind::text) {
    m_payloadBytes += object->count;
    if (m_payloadBytes > PropertyListGuard::kMaximumByteCount)
      return "its references stand for more than 64 MiB";
    return std::nullopt;
  }
  if (m_isOnPath[static_cast<std::size_t>(number)]) return "a list or dictionary holds itself";
  if (m_path.size() == PropertyListGuard::kMaximumDepth) return "it is nested more than 512 deep";
  m_isOnPath[static_cast<std::size_t>(number)] = true;
  m_path.push_back({number, *object});
  return std::nullopt;
}

std::optional<BinaryPropertyListScan::Object>
BinaryPropertyListScan::objectNumbered(std::uint64_t number) const {
  const std::uint64_t offset = bigEndian(m_offsetTable + number * m_offsetSize, m_offsetSize);
  if (offset < kHeaderSize || !holds(offset, 1)) return std::nullopt;
  const std::uint64_t marker = bigEndian(offset, 1);
  const std::uint64_t low = marker & 0x0F;
  switch (marker >> 4) {
  case 0x0: // false and true
    if (low == 8 || low == 9) return Object{Kind::scalar, 0, offset + 1};
    return std::nullopt;
  case 0x1: // integer of 1, 2, 4, 8 or 16 bytes
    if (low > 4 || !holds(offset + 1, std::uint64_t{1} << low)) return std::nullopt;
    return Object{Kind::scalar, std::uint64_t{1} << low, offset + 1};
  case 0x2: // float and double
    if ((low != 2 && low != 3) || !holds(offset + 1, std::uint64_t{1} << low)) return std::nullopt;
    return Object{Kind::scalar, std::uint64_t{1} << low, offset + 1};
  case 0x3: // date
    if (low != 3 || !holds(offset + 1, 8)) return std::nullopt;
    return Object{Kind::scalar, 8, offset + 1};
  case 0x4:
    return withCount({Kind::scalar, 0, 0}, offset, low, 1); // data
  case 0x5:
    return withCount({Kind::text, 0, 0}, offset, low, 1); // ASCII
  case 0x6:
    return withCount({Kind::text, 0, 0}, offset, low, 2); // UTF-16
  case 0x8:                                               // UID
    if (low >= kLargestField || !holds(offset + 1, low + 1)) return std::nullopt;
    return Object{Kind::scalar, low + 1, offset + 1};
  case 0xA:
    return withCount({Kind::list, 0, 0}, offset, low, m_referenceSize);
  case 0xD:
    return withCount({Kind::dictionary, 0, 0}, offset, low, 2 * m_referenceSize);
  default:
    return std::nullopt;
  }
}

std::optional<BinaryPropertyListScan::Object> BinaryPropertyListScan::withCount(Object object,
                                                                                std::uint64_t offset,
                                                                                std::uint64_t low,
                                                                                std::uint64_t unit) const {
  object.count = low;
  object.contentOffset = offset + 1;
  if (low == 0x0F) {
    // The count does not fit the marker: an integer object follows.
    if (!holds(offset + 1, 1)) return std::nullopt;
    const std::uint64_t marker = bigEndian(offset + 1, 1);
    const std::uint64_t size = std::uint64_t{1} << (marker & 0x0F);
    if ((marker >> 4) != 0x1 || size > kLargestField || !holds(offset + 2, size)) return std::nullopt;
    object.count = bigEndian(offset + 2, size);
    object.contentOffset = offset + 2 + size;
  }
  if (object.count > m_bytes.size() || !holds(object.contentOffset, object.count * unit)) return std::nullopt;
  if (object.kind == Kind::scalar || object.kind == Kind::text) object.count *= unit;
  return object;
}

std::uint64_t BinaryPropertyListScan::bigEndian(std::uint64_t offset, std::uint64_t size) const {
  std::uint64_t value = 0;
  for (std::uint64_t index = 0; index < size; ++index) {
    value = value << 8 | std::to_integer<std::uint64_t>(m_bytes[static_cast<std::size_t>(offset + index)]);
  }
  return value;
}

bool BinaryPropertyListScan::holds(std::uint64_t offset, std::uint64_t size) const {
  // Objects stand before the table of their offsets.
  return offset <= m_offsetTable && size <= m_offsetTable - offset;
}

} // namespace orbel
