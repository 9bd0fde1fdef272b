// One stored menu item (an item dictionary of the preferences file), made and read independently of
// the program.
#pragma once

#include "tests/desktop/harness/PropertyListNode.h"

#include <ostream>
#include <string>
#include <vector>

namespace orbel::test {

struct StoredItem {
  std::string kind; // the "class" key
  std::string name;
  std::string path; // inside "bookmarkData"; empty where the kind has none
  std::vector<StoredItem> members;

  static StoredItem core(const std::string& name) { return {"CoreMenuItem", name, {}, {}}; }
  static StoredItem application(const std::string& name, const std::string& path) {
    return {"AppMenuItem", name, path, {}};
  }
  static StoredItem file(const std::string& name, const std::string& path) {
    return {"FileMenuItem", name, path, {}};
  }
  static StoredItem collection(const std::string& name, std::vector<StoredItem> members);

  PropertyListNode dictionary() const;
  // What is missing stays empty, so a test sees exactly what was stored.
  static StoredItem read(plist_t dictionary);

  static PropertyListNode list(const std::vector<StoredItem>& items);
  static std::vector<StoredItem> readList(plist_t array);

  friend bool operator==(const StoredItem&, const StoredItem&) = default;
};

// Kind, name and path in brackets, the members after it: for failure messages.
std::ostream& operator<<(std::ostream& stream, const StoredItem& item);

} // namespace orbel::test
