#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class ItemMenuTest : public ItemCommandsFixture {};

TEST_F(ItemMenuTest, TheFinderItemHasNoContextMenuAtAll) {
  shown().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 0);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(ItemMenuTest, AFileOffersItsApplicationsTheDefaultAloneAboveTheOthers) {
  platform.workspace.defaultApplications["/a.txt"] = "/apps/editor.desktop";
  platform.workspace.candidates["/a.txt"] = {"/apps/writer.desktop", "/apps/editor.desktop",
                                             "/apps/Hex.desktop"};
  store({storedFile("/a.txt", "a")});
  shown().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), (Names{"Open With...", "Remove from Orbel Menu"}));
  const auto& submenu = platform.contextMenus.find("Open With...")->submenu;
  EXPECT_EQ(FakeContextMenus::titles(submenu),
            (Names{"editor.desktop", "-", "Hex.desktop", "writer.desktop"}));
  EXPECT_NE(submenu[0].image, nullptr);
  EXPECT_TRUE(platform.contextMenus.choose("Hex.desktop"));
  EXPECT_EQ(actions(), Names{"openWith /a.txt | /apps/Hex.desktop"});
  EXPECT_TRUE(controller().window().isFadingOut());
}

TEST_F(ItemMenuTest, ASingleApplicationIsFollowedByASeparator) {
  platform.workspace.defaultApplications["/a.txt"] = "/apps/editor.desktop";
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  store({storedFile("/a.txt", "a")});
  shown().didRightClickItem(at(0));
  EXPECT_EQ(FakeContextMenus::titles(platform.contextMenus.find("Open With...")->submenu),
            (Names{"editor.desktop", "-"}));
}

TEST_F(ItemMenuTest, AnOpenWithTagOutOfRangeDoesNothing) {
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  store({storedFile("/a.txt", "a")});
  shown().didRightClickItem(at(0));
  controller().openClicked(1);
  controller().openClicked(-1);
  EXPECT_TRUE(actions().empty());
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemMenuTest, EachKindShowsItsOwnEntries) {
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedApp("/apps/editor.desktop", "Editor"), storedApp("/apps/idle.desktop", "Idle"),
         storedCollection("Work", {storedCore("Mail")}), storedCollection("Empty", {})});
  shown();
  const std::pair<int, Names> expected[] = {
      {0, {"Quit Application", "Remove from Orbel Menu"}},
      {1, {"Remove from Orbel Menu"}},
      {2, {"Rename Collection", "Ungroup Collection", "Remove from Orbel Menu"}},
      {3, {"Rename Collection", "Remove from Orbel Menu"}},
      {4, {"Quit Application", "Keep in Orbel Menu"}},
  };
  for (const auto& [position, titles] : expected) {
    controller().didRightClickItem(at(position));
    EXPECT_EQ(platform.contextMenus.visibleTitles(), titles) << position;
    platform.contextMenus.close();
    letMenuFlagPass();
  }
}

TEST_F(ItemMenuTest, WithoutTheCompanionQuittingIsNotOffered) {
  platform.workspace.urlHandlers.clear();
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedCore("Mail")});
  shown().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"Keep in Orbel Menu"});
}

TEST_F(ItemMenuTest, ARightClickWhileTheMenuIsOpenOnlyClosesIt) {
  shown().didRightClickItem(at(1));
  EXPECT_TRUE(controller().itemMenuVisible());
  controller().didRightClickItem(at(2));
  EXPECT_FALSE(platform.contextMenus.isOpen);
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(ItemMenuTest, ARightClickWithinHalfASecondOfTheClosingIsStillTakenForClosing) {
  shown().didRightClickItem(at(1));
  platform.contextMenus.close();
  platform.runLoop.advance(0.49);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
  platform.runLoop.advance(0.02);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 2);
}

TEST_F(ItemMenuTest, QuittingAsksTheCompanionAndKeepsTheMenuOpen) {
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedCore("Mail")});
  shown();
  EXPECT_TRUE(choose(1, "Quit Application"));
  EXPECT_EQ(actions(), Names{"openUrl orbelmenu-toolkit:terminate/8"});
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemMenuTest, ItOpensAtThePointerOnTheMenusOwnSurface) {
  shown();
  platform.windows.movePointer({520, 580});
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.surface, &controller().window().surface());
  EXPECT_EQ(platform.contextMenus.place, (Point{220, 280}));
}

TEST_F(ItemMenuTest, WhereThePointerIsUnknownItOpensInTheMiddle) {
  shown();
  platform.windows.pointer.reset();
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.place, (Point{200, 200}));
}

TEST_F(ItemMenuTest, QuittingIsShownInGreyForAProgramThatCannotBeAsked) {
  platform.workspace.launch(-1, "Remote")->closable = false;
  shown();
  const auto last = static_cast<std::int64_t>(controller().menuItems().size()) - 1;
  controller().didRightClickItem(at(last));
  ASSERT_NE(platform.contextMenus.find("Quit Application"), nullptr);
  EXPECT_FALSE(platform.contextMenus.find("Quit Application")->isEnabled);
  EXPECT_TRUE(platform.contextMenus.find("Keep in Orbel Menu")->isEnabled);
  EXPECT_FALSE(platform.contextMenus.choose("Quit Application"));
  EXPECT_TRUE(actions().empty());
}

} // namespace
} // namespace orbel
