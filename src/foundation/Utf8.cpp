#include "foundation/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace orbel {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct Character {
  std::uint32_t code = 0;
  std::size_t length = 0; // bytes; 0 when the bytes are no character
};

std::uint32_t byteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

Character firstCharacter(std::string_view text) {
  const std::uint32_t lead = byteAt(text, 0);
  if (lead < 0x80) return {lead, 1};
  Character character;
  std::uint32_t smallest = 0; // a smaller code in as many bytes is an overlong form
  if (lead >= 0xC2 && lead <= 0xDF) {
    character = {lead & 0x1F, 2};
    smallest = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    character = {lead & 0x0F, 3};
    smallest = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    character = {lead & 0x07, 4};
    smallest = 0x10000;
  } else {
    return {};
  }
  if (text.size() < character.length) return {};
  for (std::size_t index = 1; index < character.length; ++index) {
    const std::uint32_t byte = byteAt(text, index);
    if ((byte & 0xC0) != 0x80) return {};
    character.code = character.code << 6 | (byte & 0x3F);
  }
  const bool isSurrogate = character.code >= 0xD800 && character.code <= 0xDFFF;
  if (character.code < smallest || character.code > 0x10FFFF || isSurrogate) return {};
  return character;
}

bool isForbiddenInXml(std::uint32_t code) {
  if (code < 0x20) return code != '\t' && code != '\n' && code != '\r';
  return code == 0xFFFE || code == 0xFFFF;
}

} // namespace

std::string Utf8::repaired(std::string_view text) {
  return repaired(text, Controls::kept);
}

std::string Utf8::repairedForXml(std::string_view text) {
  return repaired(text, Controls::replaced);
}

std::string Utf8::repaired(std::string_view text, Controls controls) {
  const bool isPlain = std::all_of(text.begin(), text.end(), [](char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code >= 0x20 && code < 0x80;
  });
  if (isPlain) return std::string(text);
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    const bool isBad =
        character.length == 0 || (controls == Controls::replaced && isForbiddenInXml(character.code));
    const std::size_t consumed = std::max<std::size_t>(character.length, 1);
    result += isBad ? kReplacement : text.substr(0, consumed);
    text.remove_prefix(consumed);
  }
  return result;
}

} // namespace orbel
