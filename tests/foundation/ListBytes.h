// Bytes for tests of property lists: from hexadecimal digits, from text, and hand-made binary lists with
// any flaw.
#pragma once

#include "foundation/PropertyList.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace orbel {

inline PropertyList::Data bytesOfText(std::string_view text) {
  PropertyList::Data data(text.size());
  if (!text.empty()) std::memcpy(data.data(), text.data(), text.size());
  return data;
}

inline PropertyList::Data bytesOfHex(std::string_view digits) {
  PropertyList::Data data;
  for (std::size_t index = 0; index + 1 < digits.size(); index += 2) {
    data.push_back(static_cast<std::byte>(std::stoi(std::string(digits.substr(index, 2)), nullptr, 16)));
  }
  return data;
}

inline PropertyList::Data xmlList(std::string_view value) {
  return bytesOfText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" +
                     std::string(value) + "</plist>\n");
}

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  result.reserve(text.size() * count);
  for (std::size_t index = 0; index < count; ++index)
    result += text;
  return result;
}

// Puts raw objects behind one another, with references of two bytes and offsets of eight. The first object is
// the top.
class BinaryListBuilder {
public:
  using Bytes = std::string;

  static Bytes reference(std::uint16_t number) {
    return {static_cast<char>(number >> 8), static_cast<char>(number & 0xFF)};
  }
  static Bytes list(std::initializer_list<std::uint16_t> references) {
    Bytes object(1, static_cast<char>(0xA0 + references.size()));
    for (const std::uint16_t number : references)
      object += reference(number);
    return object;
  }
  static Bytes ascii(std::string_view text) { // at most 14 characters
    return static_cast<char>(0x50 + text.size()) + std::string(text);
  }

  BinaryListBuilder& add(const Bytes& object) {
    m_offsets.push_back(m_body.size());
    m_body += object;
    return *this;
  }

  PropertyList::Data bytes() const {
    Bytes result = m_body;
    for (const std::uint64_t offset : m_offsets)
      result += bigEndian(offset);
    result += Bytes(6, '\0') + Bytes({8, 2});
    result += bigEndian(m_offsets.size()) + bigEndian(0) + bigEndian(m_body.size());
    return bytesOfText(result);
  }

private:
  static Bytes bigEndian(std::uint64_t value) {
    Bytes result;
    for (int shift = 56; shift >= 0; shift -= 8)
      result += static_cast<char>((value >> shift) & 0xFF);
    return result;
  }

  Bytes m_body = "bplist00";
  std::vector<std::uint64_t> m_offsets;
};

} // namespace orbel
