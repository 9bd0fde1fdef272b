#include "foundation/PropertyListCoder.h"

#include "foundation/PropertyListGuard.h"
#include "foundation/Utf8.h"

#include <plist/plist.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

namespace orbel {

namespace {

constexpr std::string_view kUidKey = "CF$UID";

struct NodeDeleter {
  void operator()(void* node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, NodeDeleter>; // plist_t is a void pointer

struct MallocDeleter {
  void operator()(void* memory) const { std::free(memory); } // as the library's documentation asks
};
template <typename T>
using Allocated = std::unique_ptr<T, MallocDeleter>;

using Encoded = std::pair<Allocated<char>, std::size_t>;

Encoded encoded(plist_t node, void (*encode)(plist_t, char**, std::uint32_t*)) {
  char* bytes = nullptr;
  std::uint32_t length = 0;
  encode(node, &bytes, &length);
  return {Allocated<char>(bytes), bytes ? length : 0};
}

Encoded listOfOne(Node node) {
  const Node list(plist_new_array());
  plist_array_append_item(list.get(), node.release());
  return encoded(list.get(), &plist_to_bin);
}

// The library hands out the same 64 bits for a negative integer and for one beyond 63 bits, but compares how
// many bytes they came in: 16 for the latter, 8 for every other and for a new one.
bool isBeyondSigned(plist_t integer, std::uint64_t bits) {
  if (bits >> 63 == 0) return false;
  const Node ordinary(plist_new_uint(bits));
  return plist_compare_node_value(integer, ordinary.get()) == 0;
}

PropertyList integerFrom(plist_t node) {
  std::uint64_t bits = 0;
  plist_get_uint_val(node, &bits);
  if (isBeyondSigned(node, bits)) return static_cast<double>(bits);
  return static_cast<std::int64_t>(bits);
}

// Taken from the binary form: the library's own accessor loses the sign of a fraction and all beyond 32 bits.
PropertyList::Date dateFrom(plist_t node) {
  constexpr std::size_t kDate = 11; // behind the header, the two bytes of a list of one and the date's marker
  const auto [bytes, length] = listOfOne(Node(plist_copy(node)));
  if (length < kDate + 8) return {};
  std::uint64_t bits = 0;
  for (std::size_t index = kDate; index < kDate + 8; ++index) {
    bits = bits << 8 | static_cast<std::uint8_t>(bytes.get()[index]);
  }
  return {std::bit_cast<double>(bits)};
}

PropertyList uid(std::uint64_t number) {
  return PropertyList::Dictionary{{std::string(kUidKey), static_cast<std::int64_t>(number)}};
}

PropertyList propertyListFrom(plist_t node);

PropertyList listFrom(plist_t node) {
  PropertyList::List list;
  list.reserve(plist_array_get_size(node));
  plist_array_iter rawIterator = nullptr;
  plist_array_new_iter(node, &rawIterator);
  const Allocated<void> iterator(rawIterator);
  plist_t item = nullptr;
  plist_array_next_item(node, iterator.get(), &item);
  while (item) {
    list.push_back(propertyListFrom(item));
    item = nullptr;
    plist_array_next_item(node, iterator.get(), &item);
  }
  return list;
}

PropertyList dictionaryFrom(plist_t node) {
  PropertyList::Dictionary dictionary;
  plist_dict_iter rawIterator = nullptr;
  plist_dict_new_iter(node, &rawIterator);
  const Allocated<void> iterator(rawIterator);
  while (true) {
    char* rawKey = nullptr;
    plist_t item = nullptr;
    plist_dict_next_item(node, iterator.get(), &rawKey, &item);
    const Allocated<char> key(rawKey);
    if (!key || !item) return dictionary;
    dictionary.insert_or_assign(Utf8::repaired(key.get()), propertyListFrom(item));
  }
}

// Recursive: the guard has limited the depth.
PropertyList propertyListFrom(plist_t node) {
  std::uint64_t length = 0;
  switch (plist_get_node_type(node)) {
  case PLIST_BOOLEAN: {
    std::uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
  }
  case PLIST_UINT:
    return integerFrom(node);
  case PLIST_REAL: {
    double value = 0;
    plist_get_real_val(node, &value);
    return value;
  }
  case PLIST_STRING: {
    // Not plist_get_string_val, which ends the program over a NUL inside.
    const char* text = plist_get_string_ptr(node, &length);
    return Utf8::repaired({text, text ? static_cast<std::size_t>(length) : 0});
  }
  case PLIST_DATA: {
    const char* bytes = plist_get_data_ptr(node, &length);
    PropertyList::Data data(bytes ? static_cast<std::size_t>(length) : 0);
    if (!data.empty()) std::memcpy(data.data(), bytes, data.size());
    return data;
  }
  case PLIST_DATE:
    return dateFrom(node);
  case PLIST_UID:
    plist_get_uid_val(node, &length);
    return uid(length);
  case PLIST_ARRAY:
    return listFrom(node);
  case PLIST_DICT:
    return dictionaryFrom(node);
  default:
    return {}; // keys are no values, and the library has no other kind
  }
}

std::string textFor(std::string_view text, PropertyListCoder::Format format) {
  if (format == PropertyListCoder::Format::xml) return Utf8::repairedForXml(text);
  std::string repaired = Utf8::repaired(text);
  // The library takes text up to the first NUL.
  for (std::size_t nul = repaired.find('\0'); nul != std::string::npos; nul = repaired.find('\0', nul)) {
    repaired.replace(nul, 1, "\xEF\xBF\xBD");
  }
  return repaired;
}

// The fraction has the sign of the whole seconds, and the library knows 32 bits of those.
Node dateNode(double seconds) {
  constexpr double kMicroseconds = 1e6;
  if (!std::isfinite(seconds)) seconds = 0;
  const double cut = std::clamp(seconds, double{std::numeric_limits<std::int32_t>::min() + 1},
                                double{std::numeric_limits<std::int32_t>::max() - 1});
  const double whole = std::trunc(cut);
  const double fraction = std::round((cut - whole) * kMicroseconds);
  return Node(plist_new_date(static_cast<std::int32_t>(whole), static_cast<std::int32_t>(fraction)));
}

const std::int64_t* uidIn(const PropertyList& value) {
  const auto* dictionary = value.dictionary();
  if (!dictionary || dictionary->size() != 1 || dictionary->begin()->first != kUidKey) return nullptr;
  const std::int64_t* number = dictionary->begin()->second.integer();
  return number && *number >= 0 ? number : nullptr;
}

Node nodeFor(const PropertyList& value, PropertyListCoder::Format format) {
  if (const auto* boolean = value.boolean()) return Node(plist_new_bool(*boolean ? 1 : 0));
  if (const auto* integer = value.integer())
    return Node(plist_new_uint(static_cast<std::uint64_t>(*integer)));
  if (const auto* real = value.real()) return Node(plist_new_real(*real));
  if (const auto* string = value.string()) return Node(plist_new_string(textFor(*string, format).c_str()));
  if (const auto* date = value.date()) return dateNode(date->secondsSince2001);
  if (const auto* data = value.data()) {
    // An empty vector may have no address, which the library takes for no data at all.
    const char* bytes = data->empty() ? "" : reinterpret_cast<const char*>(data->data());
    return Node(plist_new_data(bytes, data->size()));
  }
  if (const auto* number = uidIn(value)) return Node(plist_new_uid(static_cast<std::uint64_t>(*number)));
  if (const auto* list = value.list()) {
    Node node(plist_new_array());
    for (const PropertyList& item : *list)
      plist_array_append_item(node.get(), nodeFor(item, format).release());
    return node;
  }
  Node node(plist_new_dict());
  if (const auto* dictionary = value.dictionary()) {
    for (const auto& [key, item] : *dictionary) {
      plist_dict_set_item(node.get(), textFor(key, format).c_str(), nodeFor(item, format).release());
    }
  }
  return node;
}

PropertyList::Data bytesOf(const Encoded& encodedList) {
  PropertyList::Data data(encodedList.second);
  if (!data.empty()) std::memcpy(data.data(), encodedList.first.get(), data.size());
  return data;
}

// The library writes a binary list only of a list or a dictionary. Anything else is written as the one entry
// of a list, whose place as the top object it then takes.
PropertyList::Data binaryScalar(Node node) {
  constexpr std::size_t kLastByteOfTopObject = 9; // from the end
  PropertyList::Data data = bytesOf(listOfOne(std::move(node)));
  data[data.size() - kLastByteOfTopObject] = std::byte{1};
  return data;
}

} // namespace

Result<PropertyList> PropertyListCoder::read(std::span<const std::byte> bytes) {
  if (auto cause = PropertyListGuard::objection(bytes)) return Failure{*std::move(cause)};
  std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // the library stumbles over one
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  plist_t raw = nullptr;
  const auto parse = PropertyListGuard::isBinary(bytes) ? &plist_from_bin : &plist_from_xml;
  parse(text.data(), static_cast<std::uint32_t>(text.size()), &raw);
  const Node node(raw);
  if (!node) return Failure{"it is no well-formed property list"};
  return propertyListFrom(node.get());
}

PropertyList::Data PropertyListCoder::write(const PropertyList& value, Format format) {
  Node node = nodeFor(value, format);
  if (format == Format::xml) return bytesOf(encoded(node.get(), &plist_to_xml));
  const plist_type type = plist_get_node_type(node.get());
  if (type != PLIST_ARRAY && type != PLIST_DICT) return binaryScalar(std::move(node));
  return bytesOf(encoded(node.get(), &plist_to_bin));
}

} // namespace orbel
