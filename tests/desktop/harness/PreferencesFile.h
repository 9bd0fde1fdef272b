// The agent's preferences file as an outside program sees it: every read parses the file anew, every write
// replaces it in one rename. Keys are the store's ("menuItems", "GlobalShortcut", "menuSizeSettings", ...).
#pragma once

#include "tests/desktop/harness/PropertyListNode.h"
#include "tests/desktop/harness/StoredItem.h"
#include "tests/desktop/harness/StoredShortcut.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

class PreferencesFile {
public:
  explicit PreferencesFile(std::filesystem::path path);

  const std::filesystem::path& path() const { return m_path; }
  bool exists() const { return std::filesystem::exists(m_path); }

  void setBoolean(const std::string& key, bool value) { set(key, PropertyListNode::boolean(value)); }
  void setInteger(const std::string& key, std::int64_t value) { set(key, PropertyListNode::integer(value)); }
  void setString(const std::string& key, const std::string& value) {
    set(key, PropertyListNode::string(value));
  }
  void setData(const std::string& key, const std::string& bytes) { set(key, PropertyListNode::data(bytes)); }
  void setShortcut(const StoredShortcut& shortcut) { setData(kShortcutKey, shortcut.archived()); }
  void setMenuItems(const std::vector<StoredItem>& items) { set(kItemsKey, StoredItem::list(items)); }
  // Throws std::runtime_error when the present file is no dictionary.
  void set(const std::string& key, PropertyListNode value);
  void remove(const std::string& key);

  // Nothing where the key is absent or holds another type.
  std::optional<bool> boolean(const std::string& key) const;
  std::optional<std::int64_t> integer(const std::string& key) const;
  std::optional<std::string> string(const std::string& key) const;
  std::optional<std::string> data(const std::string& key) const;
  std::optional<StoredShortcut> shortcut() const;
  std::optional<std::vector<StoredItem>> menuItems() const;
  bool contains(const std::string& key) const;

  // The file as it is, and as a test wants it broken.
  std::string bytes() const;
  void writeBytes(const std::string& bytes);

private:
  static constexpr const char* kShortcutKey = "GlobalShortcut";
  static constexpr const char* kItemsKey = "menuItems";

  PropertyListNode parsed() const;
  PropertyListNode parsedForChange() const;

  std::filesystem::path m_path;
};

} // namespace orbel::test
