// An owned property list of libplist, read and written without any code of the program under test.
#pragma once

#include <cstdint>
#include <optional>
#include <plist/plist.h>
#include <string>
#include <string_view>

namespace orbel::test {

enum class PropertyListFormat { xml, binary };

class PropertyListNode {
public:
  PropertyListNode() = default;
  explicit PropertyListNode(plist_t node) : m_node(node) {}
  ~PropertyListNode() { plist_free(m_node); }
  PropertyListNode(PropertyListNode&& other) noexcept : m_node(other.release()) {}
  PropertyListNode& operator=(PropertyListNode&& other) noexcept;

  static PropertyListNode dictionary() { return PropertyListNode(plist_new_dict()); }
  static PropertyListNode array() { return PropertyListNode(plist_new_array()); }
  static PropertyListNode string(const std::string& text) {
    return PropertyListNode(plist_new_string(text.c_str()));
  }
  static PropertyListNode integer(std::int64_t number);
  static PropertyListNode real(double number) { return PropertyListNode(plist_new_real(number)); }
  static PropertyListNode boolean(bool value) { return PropertyListNode(plist_new_bool(value ? 1 : 0)); }
  static PropertyListNode data(std::string_view bytes);
  static PropertyListNode uid(std::uint64_t index) { return PropertyListNode(plist_new_uid(index)); }
  // Either format; nothing when the bytes are no property list.
  static PropertyListNode parse(std::string_view bytes);

  explicit operator bool() const { return m_node != nullptr; }
  plist_t get() const { return m_node; }
  // For handing the node to a container, which then owns it.
  plist_t release();

  // Chained: PropertyListNode::dictionary().with("name", PropertyListNode::string("Finder")).
  PropertyListNode&& with(const std::string& key, PropertyListNode value) &&;
  PropertyListNode&& with(PropertyListNode element) &&;
  std::string serialized(PropertyListFormat format) const;

private:
  plist_t m_node = nullptr;
};

// Reads of a borrowed node; nothing where it is absent or of another type.
std::optional<std::string> stringIn(plist_t node);
std::optional<std::string> dataIn(plist_t node);
std::optional<std::int64_t> integerIn(plist_t node);
std::optional<double> realIn(plist_t node);
std::optional<bool> booleanIn(plist_t node);
// A UID as binary lists have it, or the dictionary with "CF$UID" that XML has instead.
std::optional<std::uint64_t> uidIn(plist_t node);
// Empty pointers for what is not there.
plist_t valueIn(plist_t dictionary, const std::string& key);
plist_t elementIn(plist_t array, std::uint64_t index);
std::uint32_t elementCount(plist_t array);

} // namespace orbel::test
