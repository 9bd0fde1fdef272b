#include "tests/desktop/harness/PropertyListNode.h"

#include <utility>

namespace orbel::test {

namespace {

bool hasType(plist_t node, plist_type type) {
  return node && plist_get_node_type(node) == type;
}

} // namespace

PropertyListNode& PropertyListNode::operator=(PropertyListNode&& other) noexcept {
  if (this != &other) {
    plist_free(m_node);
    m_node = other.release();
  }
  return *this;
}

PropertyListNode PropertyListNode::integer(std::int64_t number) {
  return PropertyListNode(plist_new_uint(static_cast<std::uint64_t>(number)));
}

PropertyListNode PropertyListNode::data(std::string_view bytes) {
  return PropertyListNode(plist_new_data(bytes.data(), bytes.size()));
}

PropertyListNode PropertyListNode::parse(std::string_view bytes) {
  plist_t node = nullptr;
  if (!bytes.empty()) plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
  return PropertyListNode(node);
}

plist_t PropertyListNode::release() {
  return std::exchange(m_node, nullptr);
}

PropertyListNode&& PropertyListNode::with(const std::string& key, PropertyListNode value) && {
  plist_dict_set_item(m_node, key.c_str(), value.release());
  return std::move(*this);
}

PropertyListNode&& PropertyListNode::with(PropertyListNode element) && {
  plist_array_append_item(m_node, element.release());
  return std::move(*this);
}

std::string PropertyListNode::serialized(PropertyListFormat format) const {
  char* bytes = nullptr;
  std::uint32_t length = 0;
  const bool isXml = format == PropertyListFormat::xml;
  isXml ? plist_to_xml(m_node, &bytes, &length) : plist_to_bin(m_node, &bytes, &length);
  std::string result(bytes, length);
  isXml ? plist_to_xml_free(bytes) : plist_to_bin_free(bytes);
  return result;
}

std::optional<std::string> stringIn(plist_t node) {
  if (!hasType(node, PLIST_STRING)) return std::nullopt;
  std::uint64_t length = 0;
  const char* text = plist_get_string_ptr(node, &length);
  return std::string(text, length);
}

std::optional<std::string> dataIn(plist_t node) {
  if (!hasType(node, PLIST_DATA)) return std::nullopt;
  std::uint64_t length = 0;
  const char* bytes = plist_get_data_ptr(node, &length);
  return std::string(bytes, length);
}

std::optional<std::int64_t> integerIn(plist_t node) {
  if (!hasType(node, PLIST_UINT)) return std::nullopt;
  std::uint64_t number = 0;
  plist_get_uint_val(node, &number);
  return static_cast<std::int64_t>(number);
}

std::optional<double> realIn(plist_t node) {
  if (!hasType(node, PLIST_REAL)) return std::nullopt;
  double number = 0;
  plist_get_real_val(node, &number);
  return number;
}

std::optional<bool> booleanIn(plist_t node) {
  if (!hasType(node, PLIST_BOOLEAN)) return std::nullopt;
  std::uint8_t value = 0;
  plist_get_bool_val(node, &value);
  return value != 0;
}

std::optional<std::uint64_t> uidIn(plist_t node) {
  if (hasType(node, PLIST_UID)) {
    std::uint64_t index = 0;
    plist_get_uid_val(node, &index);
    return index;
  }
  const auto index = integerIn(valueIn(node, "CF$UID"));
  return index ? std::optional(static_cast<std::uint64_t>(*index)) : std::nullopt;
}

plist_t valueIn(plist_t dictionary, const std::string& key) {
  return hasType(dictionary, PLIST_DICT) ? plist_dict_get_item(dictionary, key.c_str()) : nullptr;
}

plist_t elementIn(plist_t array, std::uint64_t index) {
  if (index >= elementCount(array)) return nullptr;
  return plist_array_get_item(array, static_cast<std::uint32_t>(index));
}

std::uint32_t elementCount(plist_t array) {
  return hasType(array, PLIST_ARRAY) ? plist_array_get_size(array) : 0;
}

} // namespace orbel::test
