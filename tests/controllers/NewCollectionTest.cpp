#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class NewCollectionTest : public ItemCommandsFixture {};

TEST_F(NewCollectionTest, ANewCollectionStandsBeforeTheItemInWhoseDirectionTheClickWas) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(1));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"New Collection"});
  platform.contextMenus.choose("New Collection");
  ASSERT_TRUE(platform.dialogs.prompt);
  EXPECT_EQ(platform.dialogs.owner, &controller().window().surface());
  EXPECT_EQ(platform.dialogs.prompt->button, "Create");
  EXPECT_EQ(platform.dialogs.prompt->placeholder, "Collection Name");
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Work", "Mail"}));
  EXPECT_EQ(storedNames(), names());
}

TEST_F(NewCollectionTest, ItsMenuOpensAtThePointerOnTheMenusSurface) {
  shown();
  platform.windows.movePointer({450, 510});
  controller().didRightClickOutsideOfItem(at(0));
  EXPECT_EQ(platform.contextMenus.surface, &controller().window().surface());
  EXPECT_EQ(platform.contextMenus.place, (Point{150, 210}));
}

TEST_F(NewCollectionTest, ANewCollectionPastTheLastItemIsAppended) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(2));
  platform.contextMenus.choose("New Collection");
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Mail", "Work"}));
}

TEST_F(NewCollectionTest, ANewCollectionIsAppendedWhenItsPlaceWentWhileThePromptWasUp) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(0));
  platform.contextMenus.choose("New Collection");
  store({storedCore("Mail")});
  controller().refreshItems();
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Mail", "Work"}));
}

TEST_F(NewCollectionTest, ANewCollectionKeepsItsPlaceWhenTheListWasLoadedAnewUnderThePrompt) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(1));
  platform.contextMenus.choose("New Collection");
  controller().refreshItems();
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Work", "Mail"}));
}

TEST_F(NewCollectionTest, WhileThePromptIsUpNothingHidesTheMenu) {
  store({storedCore("Finder")});
  shown().didRightClickOutsideOfItem(at(0));
  platform.contextMenus.choose("New Collection");
  EXPECT_FALSE(controller().canClose());
  controller().hideWindow(true, true);
  EXPECT_FALSE(controller().window().isFadingOut());
  platform.dialogs.answerPrompt("Work");
  EXPECT_TRUE(controller().canClose());
  controller().hideWindow(true, true);
  EXPECT_TRUE(controller().window().isFadingOut());
}

TEST_F(NewCollectionTest, AnEmptyNameAndACancelledPromptMakeNone) {
  store({storedCore("Finder")});
  shown();
  for (const auto& answer : {std::optional<std::string>(""), std::optional<std::string>()}) {
    controller().didRightClickOutsideOfItem(at(0));
    platform.contextMenus.choose("New Collection");
    platform.dialogs.answerPrompt(answer);
    EXPECT_EQ(names(), Names{"Finder"});
    EXPECT_EQ(platform.preferences.writes, 0);
    EXPECT_TRUE(controller().canClose());
  }
}

TEST_F(NewCollectionTest, TheMenuBetweenItemsLeavesTheFlagOfTheItemMenuAlone) {
  shown().didRightClickOutsideOfItem(at(1));
  EXPECT_FALSE(controller().itemMenuVisible());
}

TEST_F(NewCollectionTest, ARightClickBetweenItemsClosesAnOpenItemMenu) {
  shown().didRightClickItem(at(1));
  controller().didRightClickOutsideOfItem(at(1));
  EXPECT_FALSE(platform.contextMenus.isOpen);
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

} // namespace
} // namespace orbel
