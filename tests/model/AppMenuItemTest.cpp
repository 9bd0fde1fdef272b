#include "model/AppMenuItem.h"

#include "tests/model/ModelFixture.h"

namespace orbel {
namespace {

class AppMenuItemTest : public ModelFixture {
protected:
  static bool represents(const std::string& itemPath, const std::string& executablePath) {
    const FakeRunningApplication application(1, "Program", "", executablePath);
    return AppMenuItem::withPath(itemPath)->representsRunningApplication(application);
  }
};

TEST_F(AppMenuItemTest, IsMadeFromAPathWithItsBookmarkAndDisplayName) {
  platform.workspace.displayNames = {{"/Applications/A.app", "A"}};
  const auto item = AppMenuItem::withPath("/Applications/A.app");
  EXPECT_EQ(item->url(), "/Applications/A.app");
  EXPECT_EQ(item->identity(), "AppMenuItem/Applications/A.app");
  EXPECT_EQ(stored(*item), PropertyList(storedApp("/Applications/A.app", "A")));
}

TEST_F(AppMenuItemTest, IsDroppedWhenItsBookmarkLeadsNowhere) {
  EXPECT_EQ(AppMenuItem::withDictionaryRepresentation(storedApp("broken:x", "Lost")), nullptr);
  EXPECT_EQ(platform.logged, Strings{"the bookmark cannot be resolved"});
}

TEST_F(AppMenuItemTest, IsDroppedWhenItsBookmarkIsMissingEmptyOrNoData) {
  const PropertyList bookmarks[] = {PropertyList::Data{}, "text", 7, List{}};
  for (const PropertyList& value : bookmarks) {
    EXPECT_EQ(AppMenuItem::withDictionaryRepresentation(Dictionary{{"name", "a"}, {"bookmarkData", value}}),
              nullptr);
  }
  EXPECT_EQ(AppMenuItem::withDictionaryRepresentation(Dictionary{{"name", "a"}}), nullptr);
  EXPECT_EQ(platform.logged.size(), 5u);
}

TEST_F(AppMenuItemTest, ReplacesAStaleBookmarkInMemoryAndStoresTheFreshOneNextTime) {
  const auto item = AppMenuItem::withDictionaryRepresentation(storedApp("stale:/moved/A.app", "A"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->url(), "/moved/A.app");
  EXPECT_EQ(stored(*item), PropertyList(storedApp("/moved/A.app", "A")));
}

TEST_F(AppMenuItemTest, StaysWhereAnErrorComesTogetherWithAPath) {
  const auto item = AppMenuItem::withDictionaryRepresentation(storedApp("warning:/A.app", "A"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->url(), "/A.app");
  EXPECT_EQ(platform.logged, Strings{"not all of it was found"});
  EXPECT_EQ(stored(*item), PropertyList(storedApp("warning:/A.app", "A")));
}

TEST_F(AppMenuItemTest, KeepsAStaleBookmarkThatCannotBeMadeAnew) {
  platform.workspace.files["/gone/A.app"] = Workspace::FileKind::missing;
  const auto item = AppMenuItem::withDictionaryRepresentation(storedApp("stale:/gone/A.app", "A"));
  ASSERT_TRUE(item);
  EXPECT_EQ(item->url(), "/gone/A.app");
  EXPECT_EQ(platform.logged, Strings{"no bookmark of /gone/A.app"});
  EXPECT_EQ(stored(*item), PropertyList(storedApp("stale:/gone/A.app", "A")));
}

TEST_F(AppMenuItemTest, SharesItsIconWithEveryItemOfTheSamePath) {
  const auto image = AppMenuItem::withPath("/A.app")->image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (Size{320, 320}));
  EXPECT_EQ(AppMenuItem::withPath("/A.app")->image(), image);
  EXPECT_EQ(ImageCache::sharedCache().imageForKey("AppMenuItem/A.app"), image);
  EXPECT_EQ(platform.workspace.iconsAsked, 1);
}

TEST_F(AppMenuItemTest, LaunchesItsBundle) {
  AppMenuItem::withPath("/A.app")->open();
  EXPECT_EQ(platform.workspace.actions, Strings{"launchPath /A.app"});
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(AppMenuItemTest, LogsOnceWhatTheWorkspaceCannotDo) {
  platform.workspace.actionsSucceed = false;
  AppMenuItem::withPath("/A.app")->open();
  AppMenuItem::withPath("/A.app")->openPath("/x.txt");
  EXPECT_EQ(platform.logged, (Strings{"cannot launch /A.app", "cannot openWith /x.txt | /A.app"}));
}

TEST_F(AppMenuItemTest, OpensAnyDocumentWithItsBundle) {
  const auto item = AppMenuItem::withPath("/A.app");
  EXPECT_TRUE(item->canOpenPath("/x.txt"));
  EXPECT_TRUE(item->canOpenPath(""));
  item->openPath("/x.txt");
  EXPECT_EQ(platform.workspace.actions, Strings{"openWith /x.txt | /A.app"});
}

TEST_F(AppMenuItemTest, RepresentsTheBundlesOwnExecutable) {
  EXPECT_TRUE(represents("/Applications/A.app", "/Applications/A.app/Contents/MacOS/A"));
}

TEST_F(AppMenuItemTest, DoesNotRepresentAHelperInsideTheBundle) {
  EXPECT_FALSE(
      represents("/Applications/A.app", "/Applications/A.app/Contents/Library/Helper.app/Contents/MacOS/H"));
}

TEST_F(AppMenuItemTest, DoesNotRepresentABundleWhosePathMerelyBeginsAlike) {
  EXPECT_FALSE(represents("/Applications/A.app", "/Applications/A.app 2.app/Contents/MacOS/A"));
}

TEST_F(AppMenuItemTest, DoesNotRepresentAnExecutableWhosePathHoldsItsOwnFurtherOn) {
  EXPECT_FALSE(represents("/A.app", "/Volumes/A.app/Contents/MacOS/A"));
}

TEST_F(AppMenuItemTest, RepresentsAnExecutableThatIsTheItemItself) {
  EXPECT_TRUE(represents("/opt/tool.app", "/opt/tool.app"));
}

TEST_F(AppMenuItemTest, RepresentsAProgramThatRunsItsDesktopEntry) {
  const FakeRunningApplication application(1, "Editor", "/share/applications/editor.desktop",
                                           "/usr/bin/editor");
  EXPECT_TRUE(
      AppMenuItem::withPath("/share/applications/editor.desktop")->representsRunningApplication(application));
  EXPECT_FALSE(
      AppMenuItem::withPath("/share/applications/other.desktop")->representsRunningApplication(application));
}

TEST_F(AppMenuItemTest, RepresentsNoProgramOfUnknownPaths) {
  const FakeRunningApplication application(1, "Program");
  EXPECT_FALSE(AppMenuItem::withPath("/A.app")->representsRunningApplication(application));
}

TEST_F(AppMenuItemTest, WithoutAPathRepresentsNothingAndDoesNothing) {
  const auto item = AppMenuItem::withPath("broken:x");
  const auto application = platform.workspace.launch(1, "Program", "", "/usr/bin/program");
  EXPECT_EQ(item->identity(), "AppMenuItem");
  EXPECT_FALSE(item->representsRunningApplication(*application));
  EXPECT_FALSE(item->isRunning());
  item->open();
  item->openPath("/x");
  item->quit();
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(AppMenuItemTest, RunsAndCanQuitWhileAnyProgramMatches) {
  const auto item = AppMenuItem::withPath("/A.app");
  platform.workspace.launch(1, "Other", "", "/usr/bin/other");
  EXPECT_FALSE(item->isRunning());
  EXPECT_FALSE(item->canQuit());
  platform.workspace.launch(2, "A", "", "/A.app/A");
  EXPECT_TRUE(item->isRunning());
  EXPECT_TRUE(item->canQuit());
  platform.workspace.terminate(2);
  EXPECT_FALSE(item->isRunning());
}

TEST_F(AppMenuItemTest, AsksTheCompanionToQuitOnlyTheFirstOfTwoProcesses) {
  platform.workspace.launch(7, "Other", "", "/usr/bin/other");
  platform.workspace.launch(2147483647, "A", "", "/A.app/A");
  platform.workspace.launch(12, "A", "", "/A.app/A");
  AppMenuItem::withPath("/A.app")->quit();
  EXPECT_EQ(platform.workspace.actions, Strings{"openUrl orbelmenu-toolkit:terminate/2147483647"});
}

TEST_F(AppMenuItemTest, OnlyAProgramThatCanBeAskedToCloseIsAskedToQuit) {
  const auto first = platform.workspace.launch(-1, "A", "", "/A.app/A");
  platform.workspace.launch(12, "A", "", "/A.app/A");
  first->closable = false;
  const auto item = AppMenuItem::withPath("/A.app");
  EXPECT_TRUE(item->canQuit());
  EXPECT_FALSE(item->canAskToQuit());
  item->quit();
  EXPECT_TRUE(platform.workspace.actions.empty()) << "nor is another process in its stead";
  first->closable = true;
  EXPECT_TRUE(item->canAskToQuit());
  platform.workspace.terminate(-1);
  platform.workspace.terminate(12);
  EXPECT_FALSE(item->canAskToQuit());
}

TEST_F(AppMenuItemTest, QuitsNothingWhenNothingMatches) {
  platform.workspace.launch(7, "Other", "", "/usr/bin/other");
  AppMenuItem::withPath("/A.app")->quit();
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(AppMenuItemTest, OffersNoOtherApplicationsAndHoldsNothing) {
  const auto item = AppMenuItem::withPath("/A.app");
  EXPECT_EQ(item->openWithAppPaths(), std::nullopt);
  EXPECT_EQ(item->subitems(), std::nullopt);
  EXPECT_FALSE(item->canRename());
}

} // namespace
} // namespace orbel
