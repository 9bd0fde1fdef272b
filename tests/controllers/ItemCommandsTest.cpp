#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class ItemCommandsTest : public ItemCommandsFixture {};

// ---- Ungroup, remove, keep ----

TEST_F(ItemCommandsTest, UngroupingPutsTheMembersWhereTheCollectionStoodInTheirOrder) {
  store({storedCore("Finder"), storedCore("Mail"),
         storedCollection("Work", {storedCore("A"), storedCore("B"), storedCore("C")}),
         storedCore("Safari")});
  shown();
  EXPECT_TRUE(choose(2, "Ungroup Collection"));
  EXPECT_EQ(names(), (Names{"Finder", "Mail", "A", "B", "C", "Safari"}));
  EXPECT_EQ(storedNames(), names());
}

TEST_F(ItemCommandsTest, ARemovedProgramThatRunsComesBackAtTheEnd) {
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  EXPECT_TRUE(choose(0, "Remove from Orbel Menu"));
  EXPECT_EQ(names(), (Names{"Mail", "Editor"}));
  EXPECT_EQ(storedNames(), Names{"Mail"});
}

TEST_F(ItemCommandsTest, ARemovedProgramThatRunsVanishesWhenRunningProgramsAreNotShown) {
  AppSettings::sharedInstance().setShowRunningApps(false);
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  store({storedApp("/apps/editor.desktop", "Editor"), storedCore("Mail")});
  shown();
  choose(0, "Remove from Orbel Menu");
  EXPECT_EQ(names(), Names{"Mail"});
}

TEST_F(ItemCommandsTest, RemovingTheLastItemBringsTheDefaultsBackInMemoryOnly) {
  store({storedCore("Mail")});
  shown();
  choose(0, "Remove from Orbel Menu");
  EXPECT_EQ(controller().menuItems().size(), 6u);
  EXPECT_TRUE(storedNames().empty());
}

TEST_F(ItemCommandsTest, AnItemThatWentWhileItsMenuWasOpenIsNotRemovedTwice) {
  store({storedCore("Safari"), storedCore("Mail")});
  shown().didRightClickItem(at(0));
  store({storedCore("Mail")});
  controller().refreshItems();
  platform.contextMenus.choose("Remove from Orbel Menu");
  EXPECT_EQ(storedNames(), Names{"Mail"});
}

TEST_F(ItemCommandsTest, EntriesStillActOnTheirItemWhenTheListWasLoadedAnewUnderTheMenu) {
  store({storedCore("Safari"), storedCollection("Work", {storedCore("A"), storedCore("B")}),
         storedCore("Mail")});
  shown().didRightClickItem(at(1));
  controller().refreshItems();
  platform.contextMenus.choose("Ungroup Collection");
  EXPECT_EQ(storedNames(), (Names{"Safari", "A", "B", "Mail"}));
  platform.runLoop.advance(1);
  controller().didRightClickItem(at(3));
  controller().refreshItems();
  platform.contextMenus.choose("Remove from Orbel Menu");
  EXPECT_EQ(storedNames(), (Names{"Safari", "A", "B"}));
}

TEST_F(ItemCommandsTest, ACollectionThatWasEmptiedWhileItsMenuWasOpenIsNotUngrouped) {
  store({storedCollection("Work", {storedCore("A")}), storedCore("Mail")});
  shown().didRightClickItem(at(0));
  store({storedCollection("Work", {}), storedCore("Mail")});
  controller().refreshItems();
  platform.contextMenus.choose("Ungroup Collection");
  EXPECT_EQ(names(), (Names{"Work", "Mail"}));
  EXPECT_EQ(platform.preferences.writes, 0);
}

class KeepTest : public ItemCommandsTest {
protected:
  void ask() {
    platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
    platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
    store({storedCore("Mail")});
    shown();
    ASSERT_TRUE(choose(1, "Keep in Orbel Menu"));
    ASSERT_TRUE(platform.dialogs.panel);
    EXPECT_EQ(platform.dialogs.owner, &controller().window().surface());
  }
};

TEST_F(KeepTest, TheOpenPanelOffersThatProgramAlone) {
  ask();
  const OpenPanel& panel = *platform.dialogs.panel;
  EXPECT_EQ(panel.title, "Orbel Menu");
  EXPECT_EQ(panel.message,
            "To add the application to Orbel Menu, please allow Orbel Menu to open the selected app.");
  EXPECT_EQ(panel.prompt, "Allow");
  EXPECT_EQ(panel.startPath, "/apps/editor.desktop");
  EXPECT_TRUE(panel.shouldEnable("/apps/editor.desktop"));
  EXPECT_TRUE(panel.shouldEnable("/apps/editor.desktop/"));
  EXPECT_FALSE(panel.shouldEnable("/apps/terminal.desktop"));
  EXPECT_FALSE(panel.shouldEnable("/apps"));
}

TEST_F(KeepTest, ConfirmingPinsTheProgramAtItsPlace) {
  ask();
  platform.dialogs.answerPanel("/apps/editor.desktop");
  EXPECT_NE(std::dynamic_pointer_cast<AppMenuItem>(controller().menuItems().at(1)), nullptr);
  EXPECT_EQ(storedNames(), (Names{"Mail", "editor.desktop"}));
  EXPECT_TRUE(controller().canClose());
}

TEST_F(KeepTest, AChosenPathWithASlashAtItsEndIsTheSameOne) {
  ask();
  platform.dialogs.answerPanel("/apps/editor.desktop/");
  EXPECT_EQ(storedNames(), (Names{"Mail", "editor.desktop"}));
  const PropertyList* bookmark = platform.preferences.values["menuItems"].list()->at(1).find("bookmarkData");
  ASSERT_TRUE(bookmark);
  EXPECT_EQ(*bookmark, PropertyList(FakeWorkspace::bookmark("/apps/editor.desktop")));
}

TEST_F(KeepTest, AnyOtherChoiceAndACancelChangeNothing) {
  ask();
  EXPECT_FALSE(controller().canClose());
  platform.dialogs.answerPanel("/apps/terminal.desktop");
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_TRUE(choose(1, "Keep in Orbel Menu"));
  platform.dialogs.answerPanel(std::nullopt);
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_TRUE(controller().canClose());
}

TEST_F(KeepTest, AProgramThatEndedWhileThePanelWasUpIsNotPinned) {
  ask();
  platform.workspace.terminate(7);
  platform.dialogs.answerPanel("/apps/editor.desktop");
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_TRUE(controller().canClose());
}

TEST_F(KeepTest, AProgramThatNoFileIsKnownOfCannotBeKeptAndTheLogSaysSo) {
  platform.workspace.launch(7, "Remote");
  store({storedCore("Mail")});
  shown();
  const std::size_t before = platform.logged.size();
  EXPECT_TRUE(choose(1, "Keep in Orbel Menu"));
  EXPECT_FALSE(platform.dialogs.panel);
  EXPECT_TRUE(controller().canClose());
  EXPECT_EQ(platform.logged.size(), before + 1);
}

// ---- Moves and drops ----

TEST_F(ItemCommandsTest, AMoveIsSavedWithoutAReload) {
  store({storedCore("Finder"), storedCore("Safari"), storedCore("Mail")});
  shown();
  const auto shownFirst = controller().orbelView().sections().item(at(0));
  controller().didMoveItem(at(2), at(1));
  EXPECT_EQ(names(), (Names{"Finder", "Mail", "Safari"}));
  EXPECT_EQ(storedNames(), names());
  EXPECT_EQ(controller().orbelView().sections().item(at(0)), shownFirst) << "the view has moved it itself";
}

TEST_F(ItemCommandsTest, DroppedFilesStandAtTheDropInTheDragsOrder) {
  store({storedCore("Finder"), storedCore("Mail")});
  EXPECT_TRUE(shown().didReceiveDrag(FakeDrag(Names{"/a.txt", "/b.app"}), at(1)));
  EXPECT_EQ(names(), (Names{"Finder", "a.txt", "b.app", "Mail"}));
  EXPECT_NE(std::dynamic_pointer_cast<FileMenuItem>(controller().menuItems().at(1)), nullptr);
  EXPECT_NE(std::dynamic_pointer_cast<AppMenuItem>(controller().menuItems().at(2)), nullptr);
  EXPECT_EQ(storedNames(), names());
}

TEST_F(ItemCommandsTest, AnyPathThatHoldsTheApplicationEndingBecomesAnApplication) {
  shown().didReceiveDrag(FakeDrag(Names{"/notes.apps/list.txt", "/x/editor.desktop"}), at(0));
  EXPECT_NE(std::dynamic_pointer_cast<AppMenuItem>(controller().menuItems().at(0)), nullptr);
  EXPECT_NE(std::dynamic_pointer_cast<AppMenuItem>(controller().menuItems().at(1)), nullptr);
}

TEST_F(ItemCommandsTest, ADropWithoutAListOfFilesIsTakenAndSavesWhatIsThere) {
  store({storedCore("Finder")});
  EXPECT_TRUE(shown().didReceiveDrag(FakeDrag(std::nullopt), at(0)));
  EXPECT_EQ(storedNames(), Names{"Finder"});
}

TEST_F(ItemCommandsTest, ADropPastTheEndIsAppended) {
  store({storedCore("Finder")});
  shown().didReceiveDrag(FakeDrag(Names{"/a.txt"}), at(99));
  EXPECT_EQ(names(), (Names{"Finder", "a.txt"}));
}

TEST_F(ItemCommandsTest, FiveHundredDroppedFilesAreAllKeptInOrder) {
  store({storedCore("Finder")});
  Names files;
  for (int index = 0; index < 500; ++index)
    files.push_back("/file" + std::to_string(index));
  shown().didReceiveDrag(FakeDrag(files), at(1));
  ASSERT_EQ(storedNames().size(), 501u);
  EXPECT_EQ(storedNames()[1], "file0");
  EXPECT_EQ(storedNames()[500], "file499");
}

TEST_F(ItemCommandsTest, ADocumentDroppedOntoAProgramOpensInItAndHidesTheMenu) {
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  store({storedCore("Mail")});
  shown();
  const FakeDrag drag(Names{"/a.txt"});
  EXPECT_TRUE(controller().canDrop(drag, at(1)));
  EXPECT_TRUE(controller().didDrop(drag, at(1)));
  EXPECT_EQ(actions(), Names{"openWith /a.txt | /apps/editor.desktop"});
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_EQ(platform.preferences.writes, 0);
}

TEST_F(ItemCommandsTest, FilesDroppedOntoACollectionBecomeItsMembers) {
  store({storedCollection("Work", {storedCore("Mail")})});
  shown();
  const FakeDrag drag(Names{"/a.txt", "/b.app"});
  EXPECT_TRUE(controller().canDrop(drag, at(0)));
  EXPECT_TRUE(controller().didDrop(drag, at(0)));
  EXPECT_EQ(memberNames(0), (Names{"Mail", "a.txt", "b.app"}));
  EXPECT_EQ(platform.preferences.values["menuItems"].list()->at(0).find("subitems")->list()->size(), 3u);
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemCommandsTest, DroppedFilesThatHaveGoneAreLeftOutWithAWordInTheLog) {
  store({storedCore("Finder"), storedCollection("Work", {})});
  platform.workspace.files["/gone.txt"] = Workspace::FileKind::missing;
  platform.workspace.files["/gone.app"] = Workspace::FileKind::missing;
  EXPECT_TRUE(shown().didReceiveDrag(FakeDrag(Names{"/gone.txt", "/a.txt", "/gone.app"}), at(1)));
  EXPECT_EQ(names(), (Names{"Finder", "a.txt", "Work"}));
  EXPECT_EQ(storedNames(), names());
  EXPECT_EQ(platform.logged.size(), 2u);

  EXPECT_TRUE(controller().didDrop(FakeDrag(Names{"/gone.txt", "/b.txt"}), at(2)));
  EXPECT_EQ(names(*controller().menuItems().at(2)->subitems()), Names{"b.txt"});
  EXPECT_FALSE(controller().didDrop(FakeDrag(Names{"/gone.txt"}), at(2)));
  EXPECT_EQ(names(*controller().menuItems().at(2)->subitems()), Names{"b.txt"});
}

TEST_F(ItemCommandsTest, AFileItemTakesNoFiles) {
  store({storedFile("/x.txt", "x")});
  shown();
  const FakeDrag drag(Names{"/a.txt"});
  EXPECT_FALSE(controller().canDrop(drag, at(0)));
  EXPECT_FALSE(controller().didDrop(drag, at(0)));
}

TEST_F(ItemCommandsTest, AnItemDroppedOntoACollectionMovesIntoIt) {
  store({storedCore("Safari"), storedCollection("Work", {storedCore("Mail")})});
  shown();
  EXPECT_TRUE(controller().canDropItem(at(0), at(1)));
  controller().didDropItem(at(0), at(1));
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_EQ(memberNames(0), (Names{"Mail", "Safari"}));
  EXPECT_EQ(storedNames(), Names{"Work"});
}

TEST_F(ItemCommandsTest, TheFinderARunningProgramAndAFilledCollectionDoNotGoIntoACollection) {
  platform.workspace.launch(7, "Editor", "/apps/editor.desktop");
  store(
      {storedCore("Finder"), storedCollection("Work", {storedCore("Mail")}), storedCollection("Other", {})});
  shown();
  EXPECT_FALSE(controller().canDropItem(at(0), at(1)));
  EXPECT_FALSE(controller().canDropItem(at(3), at(1)));
  EXPECT_FALSE(controller().canDropItem(at(1), at(2)));
  EXPECT_FALSE(controller().canDropItem(at(0), at(0)));
}

// Drops are decided by the name alone, context menus by the kind, too.
TEST_F(ItemCommandsTest, AProgramThatIsNamedFinderGoesIntoNoCollectionAndHasAContextMenu) {
  store({storedApp("/apps/finder.desktop", "Finder"), storedCollection("Work", {})});
  shown();
  EXPECT_FALSE(controller().canDropItem(at(0), at(1)));
  controller().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(ItemCommandsTest, AnEmptyCollectionPassesTheCheckButTheDropMovesNothing) {
  store({storedCollection("Empty", {}), storedCollection("Work", {storedCore("Mail")})});
  shown();
  EXPECT_TRUE(controller().canDropItem(at(0), at(1)));
  controller().didDropItem(at(0), at(1));
  EXPECT_EQ(names(), (Names{"Empty", "Work"}));
  EXPECT_EQ(memberNames(1), Names{"Mail"});
  EXPECT_EQ(platform.preferences.writes, 1);
}

} // namespace
} // namespace orbel
