#include "model/CoreMenuItem.h"

#include "tests/model/ModelFixture.h"

namespace orbel {
namespace {

class CoreMenuItemTest : public ModelFixture {
protected:
  static std::shared_ptr<CoreMenuItem> nameless() {
    return CoreMenuItem::withDictionaryRepresentation(Dictionary{{"class", "CoreMenuItem"}});
  }
};

TEST_F(CoreMenuItemTest, IsStoredByItsNameAlone) {
  const auto item = CoreMenuItem::withName("Safari");
  EXPECT_EQ(stored(*item), PropertyList(Dictionary{{"class", "CoreMenuItem"}, {"name", "Safari"}}));
  const auto again = CoreMenuItem::withDictionaryRepresentation(stored(*item));
  EXPECT_EQ(again->name(), "Safari");
  EXPECT_EQ(platform.workspace.bookmarksMade, 0);
}

TEST_F(CoreMenuItemTest, IsIdentifiedByClassAndNameWithNothingBetween) {
  const auto item = CoreMenuItem::withName("Finder");
  EXPECT_EQ(item->identity(), "CoreMenuItemFinder");
  item->setName("App Store");
  EXPECT_EQ(item->name(), "App Store");
  EXPECT_EQ(item->identity(), "CoreMenuItemApp Store");
}

TEST_F(CoreMenuItemTest, ShowsThePictureOfItsNameWithoutTheCache) {
  platform.workspace.namedImages = {"Mail"};
  const auto image = CoreMenuItem::withName("Mail")->image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image, platform.workspace.imageNamed("Mail"));
  EXPECT_TRUE(ImageCache::sharedCache().keys().empty());
}

TEST_F(CoreMenuItemTest, HasNoImageWhereThereIsNoPictureOfItsName) {
  EXPECT_EQ(CoreMenuItem::withName("Notes")->image(), nullptr);
}

TEST_F(CoreMenuItemTest, LaunchesByName) {
  CoreMenuItem::withName("Launchpad")->open();
  EXPECT_EQ(platform.workspace.actions, Strings{"launch Launchpad"});
}

TEST_F(CoreMenuItemTest, LogsOnceWhatTheWorkspaceCannotDo) {
  platform.workspace.actionsSucceed = false;
  CoreMenuItem::withName("iTunes")->open();
  EXPECT_EQ(platform.logged, Strings{"cannot launch iTunes"});
  platform.logged.clear();
  CoreMenuItem::withName("Safari")->openPath("/x.html");
  EXPECT_EQ(platform.logged, Strings{"cannot openWith /x.html | Safari"});
  platform.logged.clear();
  platform.workspace.launch(4, "Mail");
  CoreMenuItem::withName("Mail")->quit();
  EXPECT_EQ(platform.logged, Strings{"cannot openUrl orbelmenu-toolkit:terminate/4"});
}

TEST_F(CoreMenuItemTest, OpensDocumentsUnlessItIsExactlyLaunchpadOrAppStore) {
  for (const char* name :
       {"Finder", "iTunes", "Safari", "Mail", "app store", "App store", "launchpad", "App Store "}) {
    EXPECT_TRUE(CoreMenuItem::withName(name)->canOpenPath("/x")) << name;
  }
  EXPECT_FALSE(CoreMenuItem::withName("Launchpad")->canOpenPath("/x"));
  EXPECT_FALSE(CoreMenuItem::withName("App Store")->canOpenPath("/x"));
}

TEST_F(CoreMenuItemTest, OpensADocumentWithTheNamedApplication) {
  CoreMenuItem::withName("Safari")->openPath("/x.html");
  EXPECT_EQ(platform.workspace.actions, Strings{"openWith /x.html | Safari"});
}

TEST_F(CoreMenuItemTest, RepresentsAProgramOfExactlyItsName) {
  const auto item = CoreMenuItem::withName("Mail");
  EXPECT_TRUE(item->representsRunningApplication(FakeRunningApplication(1, "Mail")));
  EXPECT_FALSE(item->representsRunningApplication(FakeRunningApplication(1, "mail")));
  EXPECT_FALSE(item->representsRunningApplication(FakeRunningApplication(1, "Mail 2")));
}

TEST_F(CoreMenuItemTest, RepresentsTheProgramThatPlaysItsRole) {
  platform.workspace.roleOfBundle["/share/browser.desktop"] = "Safari";
  const FakeRunningApplication browser(1, "Web Browser", "/share/browser.desktop");
  EXPECT_TRUE(CoreMenuItem::withName("Safari")->representsRunningApplication(browser));
  EXPECT_FALSE(CoreMenuItem::withName("Mail")->representsRunningApplication(browser));
}

TEST_F(CoreMenuItemTest, RunsAndQuitsLikeAnApplication) {
  const auto item = CoreMenuItem::withName("Mail");
  EXPECT_FALSE(item->isRunning());
  EXPECT_FALSE(item->canQuit());
  item->quit();
  EXPECT_TRUE(platform.workspace.actions.empty());
  platform.workspace.launch(3, "Other");
  platform.workspace.launch(4, "Mail");
  platform.workspace.launch(5, "Mail");
  EXPECT_TRUE(item->isRunning());
  EXPECT_TRUE(item->canQuit());
  item->quit();
  EXPECT_EQ(platform.workspace.actions, Strings{"openUrl orbelmenu-toolkit:terminate/4"});
}

TEST_F(CoreMenuItemTest, WithoutANameDoesNothing) {
  const auto item = nameless();
  ASSERT_TRUE(item);
  platform.workspace.launch(3, "");
  EXPECT_EQ(item->identity(), "CoreMenuItem");
  EXPECT_EQ(item->image(), nullptr);
  EXPECT_FALSE(item->isRunning());
  item->open();
  item->openPath("/x");
  EXPECT_TRUE(platform.workspace.actions.empty());
}

} // namespace
} // namespace orbel
