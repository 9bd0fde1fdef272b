#include "foundation/PropertyListGuard.h"

#include "foundation/BinaryPropertyListScan.h"
#include "foundation/XmlPropertyListScan.h"

#include <cstring>
#include <string_view>

namespace orbel {

bool PropertyListGuard::isBinary(std::span<const std::byte> bytes) {
  constexpr std::string_view kMagic = "bplist";
  return bytes.size() >= kMagic.size() && std::memcmp(bytes.data(), kMagic.data(), kMagic.size()) == 0;
}

std::optional<std::string> PropertyListGuard::objection(std::span<const std::byte> bytes) {
  if (bytes.empty()) return "there is nothing in it";
  if (bytes.size() > kMaximumByteCount) return "it is larger than 64 MiB";
  if (isBinary(bytes)) return BinaryPropertyListScan(bytes).objection();
  return XmlPropertyListScan({reinterpret_cast<const char*>(bytes.data()), bytes.size()}).objection();
}

} // namespace orbel
