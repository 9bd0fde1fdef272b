#include "model/FileMenuItem.h"

#include "model/RepresentsRunningApplication.h"
#include "tests/model/ModelFixture.h"

namespace orbel {
namespace {

class FileMenuItemTest : public ModelFixture {
protected:
  using FileKind = Workspace::FileKind;

  static std::shared_ptr<FileMenuItem> read(const Dictionary& dictionary) {
    return FileMenuItem::withDictionaryRepresentation(dictionary);
  }
  static std::shared_ptr<FileMenuItem> unresolved() { return read(storedFile("broken:x", "Lost")); }
};

TEST_F(FileMenuItemTest, IsMadeFromAPathWithItsBookmarkAndDisplayName) {
  platform.workspace.displayNames["/home/a/report.txt"] = "The Report";
  const auto item = FileMenuItem::withPath("/home/a/report.txt");
  EXPECT_EQ(item->url(), "/home/a/report.txt");
  EXPECT_EQ(item->name(), "The Report");
  EXPECT_EQ(item->bookmarkData(), FakeWorkspace::bookmark("/home/a/report.txt"));
  EXPECT_EQ(stored(*item), PropertyList(storedFile("/home/a/report.txt", "The Report")));
}

TEST_F(FileMenuItemTest, IsMadeWithoutAWordAlsoWhereTheBookmarkCannotBeResolved) {
  const auto item = FileMenuItem::withPath("broken:/a");
  EXPECT_EQ(item->url(), std::nullopt);
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(FileMenuItemTest, KeepsTheStoredNameWhateverTheFileIsCalledNow) {
  platform.workspace.displayNames["/a"] = "Now";
  EXPECT_EQ(read(storedFile("/a", "Then"))->name(), "Then");
}

TEST_F(FileMenuItemTest, StaysInTheMenuWhenItsBookmarkCannotBeResolved) {
  const auto item = unresolved();
  ASSERT_TRUE(item);
  EXPECT_EQ(item->url(), std::nullopt);
  EXPECT_EQ(platform.logged, Strings{"the bookmark cannot be resolved"});
  EXPECT_EQ(stored(*item), PropertyList(storedFile("broken:x", "Lost")));
}

TEST_F(FileMenuItemTest, SurvivesABookmarkThatIsMissingEmptyOrNoData) {
  const PropertyList bookmarks[] = {PropertyList::Data{}, "text", 7, Dictionary{}};
  for (const PropertyList& value : bookmarks) {
    const auto item = read({{"class", "FileMenuItem"}, {"name", "a"}, {"bookmarkData", value}});
    ASSERT_TRUE(item);
    EXPECT_EQ(item->url(), std::nullopt);
    item->open();
  }
  EXPECT_TRUE(read({{"class", "FileMenuItem"}}));
  EXPECT_EQ(platform.logged.size(), 5u);
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(FileMenuItemTest, ReplacesAStaleBookmarkInMemoryAndStoresTheFreshOneNextTime) {
  const auto item = read(storedFile("stale:/moved/b", "b"));
  EXPECT_EQ(item->url(), "/moved/b");
  EXPECT_EQ(platform.workspace.bookmarksMade, 1);
  EXPECT_EQ(stored(*item), PropertyList(storedFile("/moved/b", "b")));
}

TEST_F(FileMenuItemTest, LogsAnErrorThatComesTogetherWithAPathAndUsesThePath) {
  const auto item = read(storedFile("warning:/a", "a"));
  EXPECT_EQ(item->url(), "/a");
  EXPECT_EQ(platform.logged, Strings{"not all of it was found"});
  EXPECT_EQ(stored(*item), PropertyList(storedFile("warning:/a", "a")));
}

TEST_F(FileMenuItemTest, KeepsAStaleBookmarkThatCannotBeMadeAnew) {
  platform.workspace.files["/gone"] = Workspace::FileKind::missing;
  const auto item = read(storedFile("stale:/gone", "a"));
  EXPECT_EQ(item->url(), "/gone");
  EXPECT_EQ(platform.logged, Strings{"no bookmark of /gone"});
  EXPECT_EQ(stored(*item), PropertyList(storedFile("stale:/gone", "a")));
}

TEST_F(FileMenuItemTest, LeavesAGoodBookmarkAsItIs) {
  read(storedFile("/a", "a"));
  EXPECT_EQ(platform.workspace.bookmarksMade, 0);
}

TEST_F(FileMenuItemTest, IsIdentifiedByItsPathAlone) {
  EXPECT_EQ(read(storedFile("/home/a/b", "one"))->identity(), "FileMenuItem/home/a/b");
  EXPECT_EQ(read(storedFile("/home/a/b", "two"))->identity(), "FileMenuItem/home/a/b");
}

TEST_F(FileMenuItemTest, AllItemsWithoutAPathShareOneIdentityAndOneIcon) {
  const auto one = unresolved();
  const auto other = read(storedFile("broken:y", "Gone"));
  EXPECT_EQ(one->identity(), "FileMenuItem");
  EXPECT_EQ(other->identity(), "FileMenuItem");
  EXPECT_TRUE(one->image());
  EXPECT_EQ(one->image(), other->image());
  EXPECT_EQ(platform.workspace.iconsAsked, 1);
}

TEST_F(FileMenuItemTest, TakesItsIconFromTheWorkspaceOnceAndThenFromTheCache) {
  const auto item = FileMenuItem::withPath("/a");
  EXPECT_EQ(platform.workspace.iconsAsked, 0);
  const auto image = item->image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (Size{320, 320}));
  EXPECT_EQ(FileMenuItem::withPath("/a")->image(), image);
  EXPECT_EQ(platform.workspace.iconsAsked, 1);
  EXPECT_EQ(ImageCache::sharedCache().imageForKey("FileMenuItem/a"), image);
}

TEST_F(FileMenuItemTest, OpensAFileWithItsDefaultApplication) {
  FileMenuItem::withPath("/a.txt")->open();
  EXPECT_EQ(platform.workspace.actions, Strings{"openFile /a.txt"});
}

TEST_F(FileMenuItemTest, ShowsAFolderInTheFileBrowser) {
  platform.workspace.files["/folder"] = FileKind::directory;
  FileMenuItem::withPath("/folder")->open();
  EXPECT_EQ(platform.workspace.actions, Strings{"showFolder /folder"});
}

TEST_F(FileMenuItemTest, LogsOnceWhatTheWorkspaceCannotDo) {
  platform.workspace.actionsSucceed = false;
  FileMenuItem::withPath("/a.txt")->open();
  platform.workspace.files["/folder"] = FileKind::directory;
  FileMenuItem::withPath("/folder")->open();
  FileMenuItem::withPath("/a.txt")->openWithAppPath("/b.app");
  EXPECT_EQ(platform.logged, (Strings{"cannot openFile /a.txt", "cannot showFolder /folder",
                                      "cannot openWith /a.txt | /b.app"}));
}

TEST_F(FileMenuItemTest, OpensNothingAndLogsNothingWhenTheTargetWasDeleted) {
  const auto item = FileMenuItem::withPath("/gone");
  platform.workspace.files["/gone"] = FileKind::missing;
  item->open();
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(FileMenuItemTest, OpensNothingWithoutAPath) {
  const auto item = unresolved();
  platform.logged.clear();
  item->open();
  item->openWithAppPath("/b.app");
  EXPECT_EQ(item->openWithAppPaths(), Strings{});
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_TRUE(platform.logged.empty());
}

TEST_F(FileMenuItemTest, ListsTheDefaultApplicationOnceAndFirstThenTheOthersByDisplayName) {
  auto& workspace = platform.workspace;
  workspace.displayNames = {
      {"/z.app", "apple"}, {"/y.app", "Banana"}, {"/x.app", "cherry"}, {"/default.app", "Zulu"}};
  workspace.defaultApplications["/a"] = "/default.app";
  workspace.candidates["/a"] = {"/x.app", "/default.app", "/y.app", "/z.app"};
  EXPECT_EQ(FileMenuItem::withPath("/a")->openWithAppPaths(),
            (Strings{"/default.app", "/z.app", "/y.app", "/x.app"}));
}

TEST_F(FileMenuItemTest, KeepsApplicationsThatAreListedTwice) {
  platform.workspace.candidates["/a"] = {"/y.app", "/x.app", "/y.app"};
  EXPECT_EQ(FileMenuItem::withPath("/a")->openWithAppPaths(), (Strings{"/x.app", "/y.app", "/y.app"}));
}

TEST_F(FileMenuItemTest, KeepsThePlatformsOrderOfEqualDisplayNames) {
  platform.workspace.displayNames = {{"/2.app", "Viewer"}, {"/1.app", "viewer"}};
  platform.workspace.candidates["/a"] = {"/2.app", "/1.app"};
  EXPECT_EQ(FileMenuItem::withPath("/a")->openWithAppPaths(), (Strings{"/2.app", "/1.app"}));
}

TEST_F(FileMenuItemTest, ListsADefaultApplicationThatIsNotAmongTheOthers) {
  platform.workspace.defaultApplications["/a"] = "/default.app";
  EXPECT_EQ(FileMenuItem::withPath("/a")->openWithAppPaths(), Strings{"/default.app"});
}

TEST_F(FileMenuItemTest, ListsNoApplicationsRatherThanNoListWhenNothingCanOpenIt) {
  EXPECT_EQ(FileMenuItem::withPath("/a")->openWithAppPaths(), Strings{});
}

TEST_F(FileMenuItemTest, OpensWithAChosenApplication) {
  FileMenuItem::withPath("/a.txt")->openWithAppPath("/b.app");
  EXPECT_EQ(platform.workspace.actions, Strings{"openWith /a.txt | /b.app"});
}

TEST_F(FileMenuItemTest, NeitherRunsNorQuitsNorRepresentsAProgram) {
  platform.workspace.launch(1, "a", "/a", "/a");
  const auto item = FileMenuItem::withPath("/a");
  EXPECT_FALSE(item->isRunning());
  EXPECT_FALSE(item->canQuit());
  EXPECT_FALSE(item->canOpenPath("/b"));
  EXPECT_FALSE(item->canRename());
  EXPECT_FALSE(item->canHoldSubitems());
  item->quit();
  EXPECT_TRUE(platform.workspace.actions.empty());
  EXPECT_EQ(dynamic_cast<RepresentsRunningApplication*>(item.get()), nullptr);
}

} // namespace
} // namespace orbel
