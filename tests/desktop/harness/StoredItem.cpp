#include "tests/desktop/harness/StoredItem.h"

#include <utility>

namespace orbel::test {

namespace {

constexpr const char* kCollection = "CollectionMenuItem";

// The shortest bookmark there is: a resolver has to accept a path that nothing else vouches for.
PropertyListNode bookmark(const std::string& path) {
  const auto list = PropertyListNode::dictionary().with("path", PropertyListNode::string(path));
  return PropertyListNode::data(list.serialized(PropertyListFormat::binary));
}

} // namespace

StoredItem StoredItem::collection(const std::string& name, std::vector<StoredItem> members) {
  return {kCollection, name, {}, std::move(members)};
}

PropertyListNode StoredItem::dictionary() const {
  PropertyListNode result = PropertyListNode::dictionary()
                                .with("class", PropertyListNode::string(kind))
                                .with("name", PropertyListNode::string(name));
  if (!path.empty()) result = std::move(result).with("bookmarkData", bookmark(path));
  if (kind == kCollection) result = std::move(result).with("subitems", list(members));
  return result;
}

StoredItem StoredItem::read(plist_t dictionary) {
  const auto data = dataIn(valueIn(dictionary, "bookmarkData"));
  const PropertyListNode bookmark = PropertyListNode::parse(data.value_or(""));
  return {stringIn(valueIn(dictionary, "class")).value_or(""),
          stringIn(valueIn(dictionary, "name")).value_or(""),
          stringIn(valueIn(bookmark.get(), "path")).value_or(""), readList(valueIn(dictionary, "subitems"))};
}

PropertyListNode StoredItem::list(const std::vector<StoredItem>& items) {
  PropertyListNode result = PropertyListNode::array();
  for (const StoredItem& item : items)
    result = std::move(result).with(item.dictionary());
  return result;
}

std::vector<StoredItem> StoredItem::readList(plist_t array) {
  std::vector<StoredItem> items;
  for (std::uint32_t index = 0; index < elementCount(array); ++index)
    items.push_back(read(elementIn(array, index)));
  return items;
}

std::ostream& operator<<(std::ostream& stream, const StoredItem& item) {
  stream << item.kind << " \"" << item.name << '"';
  if (!item.path.empty()) stream << " [" << item.path << ']';
  if (item.members.empty()) return stream;
  stream << " {";
  for (const StoredItem& member : item.members)
    stream << ' ' << member << ';';
  return stream << " }";
}

} // namespace orbel::test
