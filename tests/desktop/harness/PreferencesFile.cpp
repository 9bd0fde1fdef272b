#include "tests/desktop/harness/PreferencesFile.h"

#include "tests/support/base/TextFile.h"

#include <stdexcept>
#include <utility>

namespace orbel::test {

PreferencesFile::PreferencesFile(std::filesystem::path path) : m_path(std::move(path)) {}

void PreferencesFile::set(const std::string& key, PropertyListNode value) {
  writeBytes(parsedForChange().with(key, std::move(value)).serialized(PropertyListFormat::xml));
}

void PreferencesFile::remove(const std::string& key) {
  const PropertyListNode list = parsedForChange();
  plist_dict_remove_item(list.get(), key.c_str());
  writeBytes(list.serialized(PropertyListFormat::xml));
}

std::optional<bool> PreferencesFile::boolean(const std::string& key) const {
  return booleanIn(valueIn(parsed().get(), key));
}

std::optional<std::int64_t> PreferencesFile::integer(const std::string& key) const {
  return integerIn(valueIn(parsed().get(), key));
}

std::optional<std::string> PreferencesFile::string(const std::string& key) const {
  return stringIn(valueIn(parsed().get(), key));
}

std::optional<std::string> PreferencesFile::data(const std::string& key) const {
  return dataIn(valueIn(parsed().get(), key));
}

std::optional<StoredShortcut> PreferencesFile::shortcut() const {
  const auto archive = data(kShortcutKey);
  return archive ? StoredShortcut::unarchived(*archive) : std::nullopt;
}

std::optional<std::vector<StoredItem>> PreferencesFile::menuItems() const {
  const PropertyListNode list = parsed();
  const plist_t items = valueIn(list.get(), kItemsKey);
  if (!items || plist_get_node_type(items) != PLIST_ARRAY) return std::nullopt;
  return StoredItem::readList(items);
}

bool PreferencesFile::contains(const std::string& key) const {
  return valueIn(parsed().get(), key) != nullptr;
}

std::string PreferencesFile::bytes() const {
  return readFile(m_path);
}

void PreferencesFile::writeBytes(const std::string& bytes) {
  replaceFile(m_path, bytes);
}

PropertyListNode PreferencesFile::parsed() const {
  return PropertyListNode::parse(bytes());
}

PropertyListNode PreferencesFile::parsedForChange() const {
  if (!exists()) return PropertyListNode::dictionary();
  PropertyListNode list = parsed();
  if (!list || plist_get_node_type(list.get()) != PLIST_DICT) {
    throw std::runtime_error(m_path.string() + " is no dictionary that could be changed");
  }
  return list;
}

} // namespace orbel::test
