#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/ModelFixture.h"

#include <random>

namespace orbel {
namespace {

class BareMenuItem : public MenuItem {};

class MenuItemTest : public ModelFixture {
protected:
  static MenuItemPointer read(const PropertyList& dictionary) {
    return MenuItem::withDictionaryRepresentation(dictionary);
  }

  // An item of any stored kind; collections nest up to that depth.
  PropertyList storedByChance(int depth) {
    const std::string name = "Name " + std::to_string(below(1000)) + (below(2) == 0 ? "" : " \xC3\xA9");
    const std::string path = "/Folder " + std::to_string(below(50)) + "/File " + std::to_string(below(50));
    switch (below(depth > 0 ? 4 : 3)) {
    case 0:
      return storedFile(path, name);
    case 1:
      return storedApp(path + ".app", name);
    case 2:
      return storedCore(name);
    default:
      break;
    }
    List members;
    for (std::size_t count = below(6); count > 0; --count)
      members.push_back(storedByChance(depth - 1));
    return storedCollection(name, std::move(members));
  }
  std::size_t below(std::size_t limit) { return random() % limit; }

  std::mt19937 random{11};
};

TEST_F(MenuItemTest, CanDoNothingByDefault) {
  BareMenuItem item;
  EXPECT_EQ(item.name(), std::nullopt);
  EXPECT_FALSE(item.canRename());
  EXPECT_EQ(item.image(), nullptr);
  EXPECT_FALSE(item.isRunning());
  EXPECT_FALSE(item.canOpenPath("/a"));
  EXPECT_EQ(item.openWithAppPaths(), std::nullopt);
  EXPECT_FALSE(item.canQuit());
  EXPECT_FALSE(item.canHoldSubitems());
  EXPECT_EQ(item.subitems(), std::nullopt);
  EXPECT_EQ(item.dictionaryRepresentation(), std::nullopt);

  item.rename("new");
  item.open();
  item.openPath("/a");
  item.openWithAppPath("/b.app");
  item.quit();
  item.addSubitem(CoreMenuItem::withName("Mail"));
  item.insertSubitem(CoreMenuItem::withName("Mail"), 0);
  item.removeSubitem(nullptr);
  EXPECT_EQ(item.name(), std::nullopt);
  EXPECT_EQ(item.subitems(), std::nullopt);
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(MenuItemTest, IsIdentifiedByItselfByDefault) {
  const BareMenuItem one;
  const BareMenuItem other;
  EXPECT_EQ(one.identity(), one.identity());
  EXPECT_NE(one.identity(), other.identity());
  EXPECT_EQ(one.identity().rfind("<MenuItem: ", 0), 0u);
}

TEST_F(MenuItemTest, ReadsEachStoredKindByItsClassName) {
  EXPECT_TRUE(std::dynamic_pointer_cast<FileMenuItem>(read(storedFile("/a", "a"))));
  EXPECT_TRUE(std::dynamic_pointer_cast<AppMenuItem>(read(storedApp("/a.app", "a"))));
  EXPECT_TRUE(std::dynamic_pointer_cast<CoreMenuItem>(read(storedCore("Mail"))));
  EXPECT_TRUE(std::dynamic_pointer_cast<CollectionMenuItem>(read(storedCollection("c", {}))));
}

TEST_F(MenuItemTest, ReadsNothingWithoutAClassEvenWithANameAndABookmark) {
  EXPECT_EQ(read(Dictionary{{"name", "a"}, {"bookmarkData", bookmark("/a")}}), nullptr);
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(MenuItemTest, ReadsNothingOfAnyOtherClassWithoutAWord) {
  for (const char* name :
       {"RunningAppMenuItem", "MenuItem", "NSObject", "filemenuitem", "FileMenuItem ", ""}) {
    EXPECT_EQ(read(Dictionary{{"class", name}, {"name", "a"}, {"bookmarkData", bookmark("/a")}}), nullptr)
        << name;
  }
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(MenuItemTest, ReadsNothingFromWhatIsNoItemDictionary) {
  for (const PropertyList& value :
       {PropertyList("FileMenuItem"), PropertyList(7), PropertyList(true), PropertyList(List{"class"}),
        PropertyList(Dictionary{}), PropertyList(Dictionary{{"class", 7}}),
        PropertyList(Dictionary{{"class", List{}}}), PropertyList(PropertyList::Data{})}) {
    EXPECT_EQ(read(value), nullptr);
  }
}

TEST_F(MenuItemTest, AnUnknownClassBetweenTwoItemsLeavesTheTwoInOrder) {
  const auto items = readList(
      {storedCore("Mail"), Dictionary{{"class", "WebMenuItem"}, {"name", "x"}}, storedFile("/b", "b")});
  EXPECT_EQ(namesOf(items), (Strings{"Mail", "b"}));
}

TEST_F(MenuItemTest, AMissingOrMalformedNameIsNoName) {
  for (const char* className : {"FileMenuItem", "AppMenuItem", "CoreMenuItem", "CollectionMenuItem"}) {
    for (const bool isMalformed : {false, true}) {
      Dictionary dictionary = {{"class", className}, {"bookmarkData", bookmark("/a.app")}};
      if (isMalformed) dictionary.emplace("name", 7);
      platform.logged.clear();
      const auto item = read(dictionary);
      ASSERT_TRUE(item) << className;
      EXPECT_EQ(item->name(), std::nullopt) << className;
      EXPECT_EQ(platform.logged.size(), isMalformed ? 1u : 0u) << className;
      EXPECT_EQ(stored(*item).find("name"), nullptr) << className;
    }
  }
}

TEST_F(MenuItemTest, AnEmptyNameStaysAnEmptyName) {
  const auto item = read(storedCore(""));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->name(), "");
  EXPECT_EQ(stored(*item), PropertyList(storedCore("")));
}

TEST_F(MenuItemTest, StoredItemsComeBackUntouched) {
  const PropertyList items[] = {
      storedFile("/Users/a/b.txt", "b"), storedApp("/Applications/A.app", "A"), storedCore("Launchpad"),
      storedCollection("Work", {storedCore("Mail"), storedCollection("Inner", {})})};
  for (const PropertyList& dictionary : items) {
    const auto item = read(dictionary);
    ASSERT_TRUE(item);
    EXPECT_EQ(stored(*item), dictionary);
  }
}

TEST_F(MenuItemTest, WhateverIsStoredByChanceComesBackUntouched) {
  for (int count = 0; count < 500; ++count) {
    const PropertyList dictionary = storedByChance(5);
    const auto item = read(dictionary);
    ASSERT_TRUE(item);
    ASSERT_EQ(stored(*item), dictionary) << "item number " << count;
  }
}

TEST_F(MenuItemTest, ReadsCollectionsNestedTwoHundredDeep) {
  PropertyList dictionary = storedCore("Mail");
  for (int depth = 0; depth < 200; ++depth)
    dictionary = storedCollection(std::to_string(depth), {dictionary});
  auto item = read(dictionary);
  ASSERT_TRUE(item);
  EXPECT_EQ(stored(*item), dictionary);
  EXPECT_FALSE(item->isRunning());
  std::string identity;
  for (int depth = 0; depth < 200; ++depth)
    identity += "CollectionMenuItem";
  EXPECT_EQ(item->identity(), identity + "CoreMenuItemMail");
  int depth = 0;
  while (item->canHoldSubitems()) {
    const MenuItemList members = item->subitems().value_or(MenuItemList{});
    ASSERT_EQ(members.size(), 1u);
    item = members.front();
    ++depth;
  }
  EXPECT_EQ(depth, 200);
}

TEST_F(MenuItemTest, ReadsTenThousandItemsWithoutMakingASinglePicture) {
  List list;
  for (int index = 0; index < 10'000; ++index) {
    const std::string number = std::to_string(index);
    list.push_back(index % 2 == 0 ? storedFile("/f" + number, number)
                                  : storedApp("/a" + number + ".app", number));
  }
  const auto items = readList(list);
  ASSERT_EQ(items.size(), 10'000u);
  EXPECT_EQ(items[9'999]->name(), "9999");
  EXPECT_EQ(items[9'999]->identity(), "AppMenuItem/a9999.app");
  EXPECT_EQ(platform.workspace.iconsAsked, 0);
  EXPECT_EQ(platform.workspace.bookmarksMade, 0);
  EXPECT_TRUE(ImageCache::sharedCache().keys().empty());
}

} // namespace
} // namespace orbel
