#include "ControllerFixture.h"

namespace orbel {
namespace {

class ItemCommandsTest : public ControllerTest {
protected:
  ItemCommandsTest() { platform.workspace.urlHandlers["orbelmenu-toolkit"] = "/toolkit.desktop"; }
  Names actions() {
    Names result;
    for (const auto& action : platform.workspace.actions) {
      if (action != "openUrl orbelmenu-toolkit:") result.push_back(action);
    }
    return result;
  }
  Names memberNames(std::int64_t position) {
    return names(*controller().menuItems().at(static_cast<std::size_t>(position))->subitems());
  }
  void letMenuFlagPass() { platform.runLoop.advance(0.51); }
  bool choose(std::int64_t position, const std::string& title) {
    controller().didRightClickItem(at(position));
    const bool found = platform.contextMenus.choose(title);
    letMenuFlagPass();
    return found;
  }
};

// ---- Clicks ----

TEST_F(ItemCommandsTest, AClickOpensTheItemAndHidesWithoutActivatingTheEarlierProgram) {
  const auto earlier = platform.workspace.launch(9, "Earlier");
  platform.workspace.frontmost = earlier;
  store({storedApp("/apps/editor.desktop", "Editor")});
  shown().didClickItem(at(0));
  EXPECT_EQ(actions(), Names{"launchPath /apps/editor.desktop"});
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_TRUE(earlier->activations.empty());
}

TEST_F(ItemCommandsTest, TheSecondClickOfADoubleClickOpensNothing) {
  store({storedApp("/apps/editor.desktop", "Editor")});
  shown().didClickItem(at(0));
  controller().didClickItem(at(0));
  EXPECT_EQ(actions().size(), 1u);
}

TEST_F(ItemCommandsTest, AClickOnACollectionOpensItsMenuAtThePointerAndDisablesTheMainView) {
  store({storedCollection("Work", {storedCore("Mail")})});
  shown();
  platform.windows.movePointer({520, 610});
  controller().didClickItem(at(0));
  ASSERT_NE(controller().collectionController(), nullptr);
  EXPECT_EQ(controller().collectionController()->window().frame(), Rect::centeredAt({520, 610}, 300));
  EXPECT_FALSE(controller().orbelView().enabled());
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemCommandsTest, TheTitleOfAClickedCollectionDoesNotStandOverItsMenu) {
  store({storedCollection("Work", {}), storedCore("Mail")});
  shown();
  platform.windows.click({500 + 122, 500});
  EXPECT_NE(controller().collectionController(), nullptr);
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(ItemCommandsTest, InSwiftModeReachingACollectionOpensItsMenu) {
  store({storedCollection("Work", {storedCore("Mail")}), storedCore("Mail")});
  AppSettings::sharedInstance().setSwiftMode(true);
  shown();
  platform.windows.movePointer({500 + 122, 500});
  EXPECT_NE(controller().collectionController(), nullptr);
}

// ---- The context menu of an item ----

TEST_F(ItemCommandsTest, TheFinderItemHasNoContextMenuAtAll) {
  shown().didRightClickItem(at(0));
  EXPECT_EQ(platform.contextMenus.timesOpened, 0);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(ItemCommandsTest, AFileOffersItsApplicationsTheDefaultAloneAboveTheOthers) {
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

TEST_F(ItemCommandsTest, ASingleApplicationIsFollowedByASeparator) {
  platform.workspace.defaultApplications["/a.txt"] = "/apps/editor.desktop";
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  store({storedFile("/a.txt", "a")});
  shown().didRightClickItem(at(0));
  EXPECT_EQ(FakeContextMenus::titles(platform.contextMenus.find("Open With...")->submenu),
            (Names{"editor.desktop", "-"}));
}

TEST_F(ItemCommandsTest, AnOpenWithTagOutOfRangeDoesNothing) {
  platform.workspace.candidates["/a.txt"] = {"/apps/editor.desktop"};
  store({storedFile("/a.txt", "a")});
  shown().didRightClickItem(at(0));
  controller().openClicked(1);
  controller().openClicked(-1);
  EXPECT_TRUE(actions().empty());
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemCommandsTest, EachKindShowsItsOwnEntries) {
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

TEST_F(ItemCommandsTest, WithoutTheCompanionQuittingIsNotOffered) {
  platform.workspace.urlHandlers.clear();
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedCore("Mail")});
  shown().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"Keep in Orbel Menu"});
}

TEST_F(ItemCommandsTest, ARightClickWhileTheMenuIsOpenOnlyClosesIt) {
  shown().didRightClickItem(at(1));
  EXPECT_TRUE(controller().itemMenuVisible());
  controller().didRightClickItem(at(2));
  EXPECT_FALSE(platform.contextMenus.isOpen);
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

TEST_F(ItemCommandsTest, ARightClickWithinHalfASecondOfTheClosingIsStillTakenForClosing) {
  shown().didRightClickItem(at(1));
  platform.contextMenus.close();
  platform.runLoop.advance(0.49);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
  platform.runLoop.advance(0.02);
  controller().didRightClickItem(at(1));
  EXPECT_EQ(platform.contextMenus.timesOpened, 2);
}

TEST_F(ItemCommandsTest, QuittingAsksTheCompanionAndKeepsTheMenuOpen) {
  platform.workspace.launch(8, "Terminal", "/apps/terminal.desktop");
  store({storedCore("Mail")});
  shown();
  EXPECT_TRUE(choose(1, "Quit Application"));
  EXPECT_EQ(actions(), Names{"openUrl orbelmenu-toolkit:terminate/8"});
  EXPECT_FALSE(controller().window().isFadingOut());
}

// ---- Rename ----

class RenameTest : public ItemCommandsTest {
protected:
  void ask() {
    store({storedCollection("Work", {storedCore("Mail")})});
    shown();
    ASSERT_TRUE(choose(0, "Rename Collection"));
  }
};

TEST_F(RenameTest, AsksWithTheOldNameAsPlaceholderAndSavesTheNewOne) {
  ask();
  ASSERT_TRUE(platform.dialogs.prompt);
  EXPECT_EQ(platform.dialogs.prompt->message, "Rename Collection");
  EXPECT_EQ(platform.dialogs.prompt->button, "Rename");
  EXPECT_EQ(platform.dialogs.prompt->placeholder, "Work");
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), Names{"Arbeit"});
  EXPECT_EQ(storedNames(), Names{"Arbeit"});
}

TEST_F(RenameTest, WhileThePromptIsUpNothingHidesTheMenu) {
  ask();
  controller().hideWindow(true, true);
  EXPECT_FALSE(controller().window().isFadingOut());
  EXPECT_FALSE(controller().canClose());
  platform.dialogs.answerPrompt(std::nullopt);
  EXPECT_TRUE(controller().canClose());
  controller().hideWindow(true, true);
  EXPECT_TRUE(controller().window().isFadingOut());
}

TEST_F(RenameTest, AnEmptyNameAndACancelledPromptChangeNothing) {
  ask();
  platform.dialogs.answerPrompt("");
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_TRUE(choose(0, "Rename Collection"));
  platform.dialogs.answerPrompt(std::nullopt);
  EXPECT_EQ(names(), Names{"Work"});
  EXPECT_EQ(platform.preferences.writes, 0);
}

TEST_F(RenameTest, ANameOfTenThousandCharactersIsKeptWhole) {
  ask();
  const std::string name(10000, 'x');
  platform.dialogs.answerPrompt(name);
  EXPECT_EQ(storedNames(), Names{name});
}

TEST_F(RenameTest, AListLoadedAnewUnderThePromptGetsTheNewNameToo) {
  ask();
  controller().refreshItems();
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), Names{"Arbeit"});
  EXPECT_EQ(storedNames(), Names{"Arbeit"});
}

TEST_F(RenameTest, ACollectionThatWentUnderThePromptIsNotBroughtBackAndNothingElseIsRenamed) {
  ask();
  store({storedCore("Mail"), storedCollection("Play", {})});
  controller().refreshItems();
  platform.dialogs.answerPrompt("Arbeit");
  EXPECT_EQ(names(), (Names{"Mail", "Play"}));
  EXPECT_EQ(platform.preferences.writes, 0);
  EXPECT_TRUE(controller().canClose());
}

TEST_F(RenameTest, SpacesLineBreaksAndRightToLeftTextAreNamesAsTheyAre) {
  for (const char* name : {"   ", "two\nlines", "\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d"}) {
    store({storedCollection("Work", {storedCore("Mail")})});
    shown();
    platform.runLoop.advance(1);
    ASSERT_TRUE(choose(0, "Rename Collection"));
    platform.dialogs.answerPrompt(name);
    EXPECT_EQ(storedNames(), Names{name});
  }
}

// ---- New collection ----

TEST_F(ItemCommandsTest, ANewCollectionStandsBeforeTheItemInWhoseDirectionTheClickWas) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(1));
  EXPECT_EQ(platform.contextMenus.visibleTitles(), Names{"New Collection"});
  platform.contextMenus.choose("New Collection");
  ASSERT_TRUE(platform.dialogs.prompt);
  EXPECT_EQ(platform.dialogs.prompt->button, "Create");
  EXPECT_EQ(platform.dialogs.prompt->placeholder, "Collection Name");
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Work", "Mail"}));
  EXPECT_EQ(storedNames(), names());
}

TEST_F(ItemCommandsTest, ANewCollectionPastTheLastItemIsAppended) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(2));
  platform.contextMenus.choose("New Collection");
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Mail", "Work"}));
}

TEST_F(ItemCommandsTest, ANewCollectionIsAppendedWhenItsPlaceWentWhileThePromptWasUp) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(0));
  platform.contextMenus.choose("New Collection");
  store({storedCore("Mail")});
  controller().refreshItems();
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Mail", "Work"}));
}

TEST_F(ItemCommandsTest, ANewCollectionKeepsItsPlaceWhenTheListWasLoadedAnewUnderThePrompt) {
  store({storedCore("Finder"), storedCore("Mail")});
  shown().didRightClickOutsideOfItem(at(1));
  platform.contextMenus.choose("New Collection");
  controller().refreshItems();
  platform.dialogs.answerPrompt("Work");
  EXPECT_EQ(names(), (Names{"Finder", "Work", "Mail"}));
}

TEST_F(ItemCommandsTest, TheMenuBetweenItemsLeavesTheFlagOfTheItemMenuAlone) {
  shown().didRightClickOutsideOfItem(at(1));
  EXPECT_FALSE(controller().itemMenuVisible());
}

TEST_F(ItemCommandsTest, ARightClickBetweenItemsClosesAnOpenItemMenu) {
  shown().didRightClickItem(at(1));
  controller().didRightClickOutsideOfItem(at(1));
  EXPECT_FALSE(platform.contextMenus.isOpen);
  EXPECT_EQ(platform.contextMenus.timesOpened, 1);
}

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
  shown().didMoveItem(at(2), at(1));
  EXPECT_EQ(names(), (Names{"Finder", "Mail", "Safari"}));
  EXPECT_EQ(storedNames(), names());
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

TEST_F(ItemCommandsTest, AnEmptyCollectionPassesTheCheckButTheDropMovesNothing) {
  store({storedCollection("Empty", {}), storedCollection("Work", {storedCore("Mail")})});
  shown();
  EXPECT_TRUE(controller().canDropItem(at(0), at(1)));
  controller().didDropItem(at(0), at(1));
  EXPECT_EQ(names(), (Names{"Empty", "Work"}));
  EXPECT_EQ(memberNames(1), Names{"Mail"});
  EXPECT_EQ(platform.preferences.writes, 1);
}

// ---- The collection's menu, as the main menu sees it ----

class OpenCollectionTest : public ItemCommandsTest {
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
    if (isFadingOut) controller().collectionWindowControllerShouldClose();
    platform.runLoop.advance(0.05);
    EXPECT_FALSE(collection.expired());
    letControllerGo();
    EXPECT_TRUE(collection.expired());
    platform.runLoop.advance(1);
  }
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

TEST_F(OpenCollectionTest, AMemberIsRemovedAlsoWhenTheListWasLoadedAnewUnderItsMenu) {
  openCollection();
  controller().collectionController()->didRightClickItem(at(0));
  controller().refreshItems();
  platform.contextMenus.choose("Remove from Orbel Menu");
  EXPECT_EQ(names(*controller().menuItems().at(0)->subitems()), Names{"Safari"});
}

} // namespace
} // namespace orbel
