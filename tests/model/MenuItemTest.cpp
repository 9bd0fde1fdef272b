#include "model/MenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/RepresentsRunningApplication.h"
#include "model/RunningAppMenuItem.h"
#include "tests/model/ModelFixture.h"

#include <map>
#include <random>
#include <utility>

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

// What an item offers to whoever does not know its kind.
struct Offer {
  std::string kind;
  bool rename;
  bool image;
  bool alwaysRuns;
  bool openPath;
  bool otherApplications;
  bool quitWhileItRuns;
  bool subitems;
  std::vector<std::string> stored; // the keys, none for an item that is never stored
  bool representsRunningApplication;
};

TEST_F(MenuItemTest, EachKindOffersWhatTheTableSays) {
  const auto program = platform.workspace.launch(7, "Mail", "/B.app", "/B.app/program");
  platform.workspace.namedImages = {"Mail"};
  const std::map<std::string, MenuItemPointer> items = {
      {"FileMenuItem", FileMenuItem::withPath("/a")},
      {"AppMenuItem", AppMenuItem::withPath("/B.app")},
      {"CoreMenuItem", CoreMenuItem::withName("Mail")},
      {"RunningAppMenuItem", RunningAppMenuItem::withRunningApplication(program)},
      {"CollectionMenuItem", CollectionMenuItem::withName("Work")},
  };
  items.at("CollectionMenuItem")->addSubitem(items.at("AppMenuItem"));
  const Strings bookmarked{"bookmarkData", "class", "name"};
  constexpr bool yes = true;
  constexpr bool no = false;
  const Strings named{"class", "name"};
  const Strings withMembers{"class", "name", "subitems"};
  // clang-format off
  const std::vector<Offer> table = {
      // kind                 rename image always open others quit subitems stored    represents
      {"FileMenuItem",        no,    yes,  no,    no,  yes,   no,  no,  bookmarked,   no},
      {"AppMenuItem",         no,    yes,  no,    yes, no,    yes, no,  bookmarked,   yes},
      {"CoreMenuItem",        no,    yes,  no,    yes, no,    yes, no,  named,        yes},
      {"RunningAppMenuItem",  no,    yes,  yes,   yes, no,    yes, no,  {},           yes},
      {"CollectionMenuItem",  yes,   yes,  no,    no,  no,    no,  yes, withMembers,  yes},
  };
  // clang-format on
  for (const Offer& offer : table) {
    SCOPED_TRACE(offer.kind);
    MenuItem& item = *items.at(offer.kind);
    EXPECT_TRUE(item.name());
    EXPECT_EQ(item.canRename(), offer.rename);
    item.rename("Another");
    EXPECT_EQ(item.name() == "Another", offer.rename);
    EXPECT_EQ(item.image() != nullptr, offer.image);
    EXPECT_EQ(item.isRunning(), offer.kind != "FileMenuItem") << "the program runs";
    EXPECT_EQ(item.canOpenPath("/x"), offer.openPath);
    platform.workspace.actions.clear();
    item.openPath("/x");
    EXPECT_EQ(!platform.workspace.actions.empty(), offer.openPath);
    EXPECT_EQ(item.openWithAppPaths().has_value(), offer.otherApplications);
    platform.workspace.actions.clear();
    item.openWithAppPath("/B.app");
    EXPECT_EQ(!platform.workspace.actions.empty(), offer.otherApplications);
    EXPECT_EQ(item.canQuit(), offer.quitWhileItRuns);
    platform.workspace.actions.clear();
    item.quit();
    EXPECT_EQ(platform.workspace.actions,
              offer.quitWhileItRuns ? Strings{"openUrl orbelmenu-toolkit:terminate/7"} : Strings{});
    EXPECT_EQ(item.canHoldSubitems(), offer.subitems);
    EXPECT_EQ(item.subitems().has_value(), offer.subitems);
    Strings keys;
    const auto dictionary = item.dictionaryRepresentation();
    if (dictionary) {
      for (const auto& [key, value] : *dictionary->dictionary())
        keys.push_back(key);
      EXPECT_EQ(*dictionary->find("class")->string(), offer.kind);
    }
    EXPECT_EQ(keys, offer.stored);
    EXPECT_EQ(item.identity().rfind(offer.kind, 0), 0u) << item.identity();
    const auto* matching = dynamic_cast<RepresentsRunningApplication*>(&item);
    EXPECT_EQ(matching != nullptr, offer.representsRunningApplication);
    EXPECT_TRUE(!matching || matching->representsRunningApplication(*program));
  }
  platform.workspace.terminate(7);
  for (const Offer& offer : table) {
    EXPECT_EQ(items.at(offer.kind)->isRunning(), offer.alwaysRuns) << offer.kind;
    EXPECT_EQ(items.at(offer.kind)->canQuit(), offer.alwaysRuns) << offer.kind;
  }
}

TEST_F(MenuItemTest, OpeningDoesWhatTheKindStandsFor) {
  platform.workspace.files["/folder"] = Workspace::FileKind::directory;
  const auto program = platform.workspace.launch(7, "Letters", "/B.app", "/B.app/program");
  const auto collection = CollectionMenuItem::withName("Work");
  collection->addSubitem(CoreMenuItem::withName("Mail"));
  const std::vector<std::pair<MenuItemPointer, Strings>> table = {
      {FileMenuItem::withPath("/a"), {"openFile /a"}},
      {FileMenuItem::withPath("/folder"), {"showFolder /folder"}},
      {AppMenuItem::withPath("/B.app"), {"launchPath /B.app"}},
      {CoreMenuItem::withName("Mail"), {"launch Mail"}},
      {RunningAppMenuItem::withRunningApplication(program), {"launch /B.app/program"}},
      {collection, {}},
  };
  for (const auto& [item, actions] : table) {
    platform.workspace.actions.clear();
    item->open();
    EXPECT_EQ(platform.workspace.actions, actions) << item->identity();
  }
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
