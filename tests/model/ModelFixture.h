// What every test of the menu items needs: the doubles and stored items made by hand.
#pragma once

#include "model/ImageCache.h"
#include "model/MenuItem.h"
#include "tests/doubles/FakePlatform.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orbel {

class ModelFixture : public testing::Test {
protected:
  using Dictionary = PropertyList::Dictionary;
  using List = PropertyList::List;
  using Strings = std::vector<std::string>;

  static ImagePointer anyImage() { return Image::withBitmap({320, 320}, Bitmap(1, 1)); }

  // The doubles read a bookmark as the path it holds; "broken:..." does not resolve, "stale:..." is stale,
  // "warning:..." resolves with an error beside the path.
  static PropertyList bookmark(const std::string& path) { return FakeWorkspace::bookmark(path); }
  static Dictionary storedFile(const std::string& path, const std::string& name) {
    return {{"class", "FileMenuItem"}, {"name", name}, {"bookmarkData", bookmark(path)}};
  }
  static Dictionary storedApp(const std::string& path, const std::string& name) {
    return {{"class", "AppMenuItem"}, {"name", name}, {"bookmarkData", bookmark(path)}};
  }
  static Dictionary storedCore(const std::string& name) {
    return {{"class", "CoreMenuItem"}, {"name", name}};
  }
  static Dictionary storedCollection(const std::string& name, List subitems) {
    return {{"class", "CollectionMenuItem"}, {"name", name}, {"subitems", std::move(subitems)}};
  }

  // A stored list read the way the controllers do: what cannot be read is skipped.
  static MenuItemList readList(const List& stored) {
    MenuItemList items;
    for (const PropertyList& dictionary : stored) {
      if (auto item = MenuItem::withDictionaryRepresentation(dictionary)) items.push_back(item);
    }
    return items;
  }
  static Strings namesOf(const MenuItemList& items) {
    Strings names;
    for (const auto& item : items)
      names.push_back(item->name().value_or("(none)"));
    return names;
  }
  static Strings namesOfMembers(const MenuItem& collection) {
    return namesOf(collection.subitems().value_or(MenuItemList{}));
  }
  // An empty dictionary where there is none.
  static PropertyList stored(const MenuItem& item) {
    return item.dictionaryRepresentation().value_or(PropertyList(Dictionary{}));
  }

  FakePlatform platform;
};

} // namespace orbel
