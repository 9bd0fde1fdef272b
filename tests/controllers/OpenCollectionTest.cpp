// The collection's menu, as the main menu sees it.
#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class OpenCollectionTest : public ItemCommandsFixture {
protected:
  void openCollection() {
    store({storedCollection("Work", {storedCore("Mail"), storedCore("Safari")}), storedCore("iTunes")});
    shown().didClickItem(at(0));
    platform.runLoop.advance(0.2);
  }
};

TEST_F(OpenCollectionTest, AHideWithoutForceHasNoEffect) {
  openCollection();
  controller().hideWindow(true);
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(OpenCollectionTest, AForcedHideClosesBothMenus) {
  openCollection();
  const auto collection = controller().collectionController();
  controller().hideWindow(true, true);
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_TRUE(collection->window().isFadingOut());
  EXPECT_EQ(controller().collectionController(), nullptr);
  EXPECT_TRUE(controller().orbelView().enabled());
}

TEST_F(OpenCollectionTest, AMemberThatIsOpenedClosesBothMenus) {
  openCollection();
  controller().collectionController()->didClickItem(at(1));
  EXPECT_EQ(actions(), Names{"launch Safari"});
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_EQ(controller().collectionController(), nullptr);
}

TEST_F(OpenCollectionTest, ItsCloseButtonClosesItAloneAndTheMainMenuReloadsSoonAfter) {
  openCollection();
  const auto collection = controller().collectionController();
  platform.windows.click(collection->window().frame().center());
  EXPECT_EQ(controller().collectionController(), nullptr);
  EXPECT_TRUE(collection->window().isFadingOut());
  EXPECT_TRUE(controller().orbelView().enabled());
  EXPECT_FALSE(controller().window().isFadingOut());
  const auto before = controller().menuItems();
  platform.runLoop.advance(0.29);
  EXPECT_EQ(controller().menuItems(), before);
  platform.runLoop.advance(0.02);
  EXPECT_NE(controller().menuItems(), before);
}

// Neither a menu that fades in nor one that fades out may outlive the one that it belongs to.
TEST_F(OpenCollectionTest, ItGoesWithTheMainMenuInTheMiddleOfAFade) {
  for (const bool isFadingOut : {false, true}) {
    store({storedCollection("Work", {storedCore("Mail")})});
    shown().didClickItem(at(0));
    const std::weak_ptr<CollectionWindowController> collection = controller().collectionController();
    if (isFadingOut) controller().collectionWindowControllerShouldClose(*controller().collectionController());
    platform.runLoop.advance(0.05);
    EXPECT_FALSE(collection.expired());
    letControllerGo();
    EXPECT_TRUE(collection.expired());
    platform.runLoop.advance(1);
  }
}

TEST_F(OpenCollectionTest, AMenuThatIsFadingOutNeitherClosesNorHidesWhatIsOpenMeanwhile) {
  openCollection();
  const auto first = controller().collectionController();
  controller().collectionWindowControllerShouldClose(*first);
  controller().didClickItem(at(0));
  const auto second = controller().collectionController();
  ASSERT_NE(second, first);
  controller().collectionWindowControllerShouldClose(*first);
  EXPECT_EQ(controller().collectionController(), second);
  controller().collectionWindowControllerDidSelectItem(*first);
  EXPECT_EQ(controller().collectionController(), second);
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(OpenCollectionTest, ANewMenuSizeChangesTheMainMenuAlone) {
  openCollection();
  const Rect frame = controller().collectionController()->window().frame();
  AppSettings::sharedInstance().setMenuSizeSettings(3);
  EXPECT_EQ(controller().window().frame().size.width, 600);
  EXPECT_EQ(controller().collectionController()->window().frame(), frame);
}

TEST_F(OpenCollectionTest, HoveringCountsTheCollectionsFrameToo) {
  openCollection();
  controller().collectionController()->showWindowAtScreenPosition({900, 900});
  platform.windows.pointer = Point{1000, 1000};
  EXPECT_TRUE(controller().mouseHoveringOverMenu());
  platform.windows.pointer = Point{1100, 1000};
  EXPECT_FALSE(controller().mouseHoveringOverMenu());
}

TEST_F(OpenCollectionTest, AReloadHandsTheFreshObjectToTheOpenMenu) {
  openCollection();
  const auto before = controller().collectionController()->collectionItem();
  controller().refreshItems();
  EXPECT_NE(controller().collectionController()->collectionItem(), before);
  EXPECT_EQ(MenuItemPointer(controller().collectionController()->collectionItem()),
            controller().menuItems().at(0));
}

// Several collections may hold the same, new ones above all.
TEST_F(OpenCollectionTest, AReloadTellsTwoEmptyCollectionsApart) {
  store({storedCollection("First", {}), storedCollection("Second", {})});
  shown().didClickItem(at(0));
  controller().refreshItems();
  EXPECT_EQ(MenuItemPointer(controller().collectionController()->collectionItem()),
            controller().menuItems().at(0));
}

TEST_F(OpenCollectionTest, AReloadTellsTwoCollectionsOfTheSameNameAndMembersApart) {
  for (const int open : {0, 1, 2}) {
    store({storedCollection("New", {}), storedCollection("New", {}), storedCollection("New", {})});
    shown().didClickItem(at(open));
    store({storedCore("Mail"), storedCollection("New", {}), storedCollection("New", {}),
           storedCollection("New", {})});
    controller().refreshItems();
    EXPECT_EQ(MenuItemPointer(controller().collectionController()->collectionItem()),
              controller().menuItems().at(static_cast<std::size_t>(open + 1)));
    letControllerGo();
  }
}

TEST_F(OpenCollectionTest, OfEqualCollectionsTheLastOneIsTakenWhenThereAreFewerThanBefore) {
  store({storedCollection("New", {}), storedCollection("New", {}), storedCollection("New", {})});
  shown().didClickItem(at(2));
  store({storedCollection("New", {}), storedCollection("New", {})});
  controller().refreshItems();
  EXPECT_EQ(MenuItemPointer(controller().collectionController()->collectionItem()),
            controller().menuItems().at(1));
}

TEST_F(OpenCollectionTest, ARenamedCollectionIsFoundByWhatItHolds) {
  openCollection();
  store({storedCore("iTunes"), storedCollection("Play", {storedCore("Mail"), storedCore("Safari")})});
  controller().refreshItems();
  ASSERT_TRUE(controller().collectionController());
  EXPECT_EQ(MenuItemPointer(controller().collectionController()->collectionItem()),
            controller().menuItems().at(1));
}

// Its changes would be saved nowhere.
TEST_F(OpenCollectionTest, TheMenuOfACollectionThatHasGoneIsClosed) {
  openCollection();
  store({storedCore("iTunes")});
  controller().refreshItems();
  EXPECT_EQ(controller().collectionController(), nullptr);
  EXPECT_TRUE(controller().orbelView().enabled());
  EXPECT_EQ(names(), Names{"iTunes"});
}

// The release beside the menus hides them before their view receives it.
TEST_F(OpenCollectionTest, AMoveThatEndsBesideBothMenusIsStored) {
  openCollection();
  const Point center = controller().collectionController()->window().frame().center();
  platform.windows.movePointer({center.x + 92, center.y});
  platform.windows.press(PointerButton::primary);
  for (const double way : {0.25, 0.5, 0.75, 1.0}) // around to the place behind the other, and out there
    platform.windows.movePointer({center.x + 92 - way * 227, center.y - way * 186});
  controller().hideWindow(true, true);
  platform.windows.release(PointerButton::primary);
  platform.runLoop.advance(1);
  const PropertyList& stored = platform.preferences.values["menuItems"].list()->at(0);
  EXPECT_EQ(*stored.find("subitems")->list(), (PropertyList::List{storedCore("Safari"), storedCore("Mail")}));
}

TEST_F(OpenCollectionTest, AMemberIsRemovedAlsoWhenTheListWasLoadedAnewUnderItsMenu) {
  openCollection();
  controller().collectionController()->didRightClickItem(at(0));
  controller().refreshItems();
  platform.contextMenus.choose("Remove from Orbel Menu");
  EXPECT_EQ(names(*controller().menuItems().at(0)->subitems()), Names{"Safari"});
}

} // namespace
} // namespace orbel
