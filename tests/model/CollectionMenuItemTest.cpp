#include "model/CollectionMenuItem.h"

#include "model/AppMenuItem.h"
#include "model/CollectionIcon.h"
#include "model/CoreMenuItem.h"
#include "model/FileMenuItem.h"
#include "model/RunningAppMenuItem.h"
#include "tests/model/ModelFixture.h"

#include <cmath>

namespace orbel {
namespace {

class CollectionMenuItemTest : public ModelFixture {
protected:
  static std::shared_ptr<CollectionMenuItem> collectionOf(const MenuItemList& members) {
    auto collection = CollectionMenuItem::withName("Work");
    for (const auto& member : members)
      collection->addSubitem(member);
    return collection;
  }
  static std::shared_ptr<CollectionMenuItem> read(const PropertyList& dictionary) {
    return CollectionMenuItem::withDictionaryRepresentation(dictionary);
  }
  static MenuItemPointer core(const std::string& name) { return CoreMenuItem::withName(name); }
  // Draws the image anew at a size it has not been drawn at and returns how many members were drawn.
  std::size_t membersDrawn(const Image& image) {
    ++m_drawnSize;
    image.representation(m_drawnSize, m_drawnSize);
    return platform.graphics.lastCanvas.named("drawImage").size();
  }

private:
  int m_drawnSize = 320;
};

TEST_F(CollectionMenuItemTest, StartsEmptyWithItsName) {
  const auto collection = CollectionMenuItem::withName("Work");
  EXPECT_EQ(collection->name(), "Work");
  EXPECT_TRUE(collection->canHoldSubitems());
  EXPECT_EQ(collection->subitems(), MenuItemList{});
  EXPECT_EQ(stored(*collection), PropertyList(storedCollection("Work", {})));
}

TEST_F(CollectionMenuItemTest, OpensAndQuitsNothingByItself) {
  const auto collection = collectionOf({core("Mail")});
  platform.workspace.launch(1, "Mail");
  collection->open();
  collection->quit();
  collection->openPath("/x");
  EXPECT_FALSE(collection->canQuit());
  EXPECT_FALSE(collection->canOpenPath("/x"));
  EXPECT_EQ(collection->openWithAppPaths(), std::nullopt);
  EXPECT_TRUE(platform.workspace.actions.empty());
}

TEST_F(CollectionMenuItemTest, CanBeRenamed) {
  const auto collection = CollectionMenuItem::withName("Work");
  EXPECT_TRUE(collection->canRename());
  collection->rename("Play");
  EXPECT_EQ(collection->name(), "Play");
  EXPECT_EQ(stored(*collection), PropertyList(storedCollection("Play", {})));
}

TEST_F(CollectionMenuItemTest, StoresItsMembersInOrder) {
  const auto collection =
      collectionOf({core("Mail"), FileMenuItem::withPath("/a"), AppMenuItem::withPath("/B.app")});
  EXPECT_EQ(stored(*collection),
            PropertyList(storedCollection(
                "Work", {storedCore("Mail"), storedFile("/a", "a"), storedApp("/B.app", "B.app")})));
}

TEST_F(CollectionMenuItemTest, LeavesOutMembersThatAreNeverStored) {
  const auto collection = collectionOf(
      {RunningAppMenuItem::withRunningApplication(std::make_shared<FakeRunningApplication>(1, "a")),
       core("Mail")});
  EXPECT_EQ(stored(*collection), PropertyList(storedCollection("Work", {storedCore("Mail")})));
}

TEST_F(CollectionMenuItemTest, DropsUnknownMembersSilentlyAndKeepsTheOthersInOrder) {
  const auto collection =
      read(storedCollection("Work", {storedCore("Mail"), Dictionary{{"class", "WebMenuItem"}},
                                     storedCore("Safari"), "text", 7, storedCore("Finder")}));
  EXPECT_EQ(namesOfMembers(*collection), (Strings{"Mail", "Safari", "Finder"}));
  EXPECT_TRUE(platform.logged.empty());
  EXPECT_TRUE(collection->hasDroppedMembers());
}

TEST_F(CollectionMenuItemTest, DropsAnApplicationWhoseBookmarkLeadsNowhere) {
  const auto collection = read(storedCollection("Work", {storedApp("broken:", "Lost"), storedCore("Mail")}));
  EXPECT_EQ(namesOfMembers(*collection), Strings{"Mail"});
  EXPECT_TRUE(collection->hasDroppedMembers());
}

TEST_F(CollectionMenuItemTest, TellsOfMembersDroppedInACollectionWithinIt) {
  const auto inner = storedCollection("Inner", {Dictionary{{"class", "WebMenuItem"}}});
  EXPECT_TRUE(read(storedCollection("Outer", {storedCollection("Middle", {inner})}))->hasDroppedMembers());
}

TEST_F(CollectionMenuItemTest, DropsNothingOfWhatCanBeRead) {
  EXPECT_FALSE(read(storedCollection("Outer", {storedCore("Mail"), storedCollection("Inner", {})}))
                   ->hasDroppedMembers());
  EXPECT_FALSE(CollectionMenuItem::withName("New")->hasDroppedMembers());
}

TEST_F(CollectionMenuItemTest, AMissingListOfMembersIsAnEmptyCollection) {
  const auto collection = read(Dictionary{{"class", "CollectionMenuItem"}, {"name", "Work"}});
  EXPECT_EQ(collection->subitems(), MenuItemList{});
  EXPECT_FALSE(collection->hasDroppedMembers());
}

TEST_F(CollectionMenuItemTest, AListOfMembersThatIsNoListIsAnEmptyCollectionThatDroppedThem) {
  for (const PropertyList& value :
       {PropertyList("text"), PropertyList(7), PropertyList(storedCore("Mail"))}) {
    const auto collection = read(Dictionary{{"name", "Work"}, {"subitems", value}});
    EXPECT_EQ(collection->subitems(), MenuItemList{});
    EXPECT_TRUE(collection->hasDroppedMembers());
  }
}

TEST_F(CollectionMenuItemTest, AnEmptyOneIsIdentifiedByItsClassAlone) {
  EXPECT_EQ(CollectionMenuItem::withName("Work")->identity(), "CollectionMenuItem");
}

TEST_F(CollectionMenuItemTest, IsIdentifiedByItsMembersInSortedOrderJoinedWithHyphens) {
  const auto collection = collectionOf({core("zebra"), core("Mail"), FileMenuItem::withPath("/a")});
  EXPECT_EQ(collection->identity(), "CollectionMenuItemCoreMenuItemMail-CoreMenuItemzebra-FileMenuItem/a");
}

TEST_F(CollectionMenuItemTest, SortsWithoutRegardToCase) {
  EXPECT_EQ(collectionOf({core("b"), core("A"), core("C")})->identity(),
            "CollectionMenuItemCoreMenuItemA-CoreMenuItemb-CoreMenuItemC");
}

TEST_F(CollectionMenuItemTest, NeitherOrderNorNamePlaysAPartInTheIdentity) {
  const auto one = collectionOf({core("a"), core("b"), core("B")});
  const auto other = collectionOf({core("B"), core("b"), core("a")});
  other->rename("Other");
  EXPECT_EQ(one->identity(), other->identity());
  EXPECT_EQ(one->image(), other->image());
  one->addSubitem(core("c"));
  EXPECT_NE(one->identity(), other->identity());
}

TEST_F(CollectionMenuItemTest, InsertsBeforeTheMemberAtAnIndex) {
  const auto collection = collectionOf({core("a"), core("c")});
  collection->insertSubitem(core("b"), 1);
  collection->insertSubitem(core("first"), 0);
  collection->insertSubitem(core("last"), 4);
  collection->insertSubitem(core("beyond"), 99);
  EXPECT_EQ(namesOfMembers(*collection), (Strings{"first", "a", "b", "c", "last", "beyond"}));
}

TEST_F(CollectionMenuItemTest, DoesNotAddWhatIsNoItem) {
  const auto collection = CollectionMenuItem::withName("Work");
  collection->addSubitem(nullptr);
  collection->insertSubitem(nullptr, 0);
  EXPECT_EQ(collection->subitems(), MenuItemList{});
}

TEST_F(CollectionMenuItemTest, RemovesEveryOccurrenceOfThatVeryObjectAndNoEqualOne) {
  const auto twice = core("a");
  const auto equal = core("a");
  const auto collection = collectionOf({twice, equal, twice});
  collection->removeSubitem(twice);
  EXPECT_EQ(collection->subitems(), MenuItemList{equal});
  collection->removeSubitem(core("a"));
  EXPECT_EQ(collection->subitems(), MenuItemList{equal});
}

TEST_F(CollectionMenuItemTest, AListOfItsMembersIsACopy) {
  const auto collection = collectionOf({core("a")});
  const auto before = collection->subitems();
  collection->addSubitem(core("b"));
  EXPECT_EQ(before.value_or(MenuItemList{}).size(), 1u);
}

TEST_F(CollectionMenuItemTest, RunsWhileAnyMemberRuns) {
  const auto collection = collectionOf({FileMenuItem::withPath("/a"), core("Mail"), core("Safari")});
  EXPECT_FALSE(collection->isRunning());
  platform.workspace.launch(1, "Safari");
  EXPECT_TRUE(collection->isRunning());
}

TEST_F(CollectionMenuItemTest, RepresentsWhatAnyMemberRepresentsAndSkipsFiles) {
  const auto inner = collectionOf({AppMenuItem::withPath("/B.app")});
  const auto collection = collectionOf({FileMenuItem::withPath("/usr/bin/x"), core("Mail"), inner});
  EXPECT_TRUE(collection->representsRunningApplication(FakeRunningApplication(1, "Mail")));
  EXPECT_TRUE(collection->representsRunningApplication(FakeRunningApplication(2, "B", "", "/B.app/B")));
  EXPECT_FALSE(
      collection->representsRunningApplication(FakeRunningApplication(3, "x", "/usr/bin/x", "/usr/bin/x")));
}

TEST_F(CollectionMenuItemTest, ItsIconIsDrawnWhenItsPixelsAreNeeded) {
  platform.workspace.namedImages = {"Mail", "Safari"};
  const auto collection = collectionOf({core("Mail"), core("Safari")});
  const auto image = collection->image();
  ASSERT_TRUE(image);
  EXPECT_EQ(image->size(), (Size{320, 320}));
  EXPECT_EQ(platform.graphics.renderings, 0);
  EXPECT_EQ(image->representation(64, 64).width, 64);
  EXPECT_EQ(platform.graphics.renderings, 1);
  const auto drawn = platform.graphics.lastCanvas.named("drawImage");
  ASSERT_EQ(drawn.size(), 2u);
  EXPECT_EQ(drawn[0].rect, CollectionIcon::memberFrame({0, 0, 320, 320}, 0, 2));
}

TEST_F(CollectionMenuItemTest, ItsIconIsCachedUnderItsIdentity) {
  const auto collection = collectionOf({core("Mail")});
  const auto image = collection->image();
  EXPECT_EQ(collection->image(), image);
  EXPECT_EQ(ImageCache::sharedCache().imageForKey(collection->identity()), image);
}

TEST_F(CollectionMenuItemTest, RenamingKeepsTheCachedIcon) {
  const auto collection = collectionOf({core("Mail")});
  const auto image = collection->image();
  collection->rename("Other");
  EXPECT_EQ(collection->image(), image);
}

TEST_F(CollectionMenuItemTest, EachChangeOfTheMembersDiscardsTheIconUnderTheIdentityBefore) {
  const auto collection = collectionOf({core("Mail")});
  const auto extra = core("Safari");
  const auto& cache = ImageCache::sharedCache();
  std::string before = collection->identity();
  const auto first = collection->image();
  collection->addSubitem(extra);
  EXPECT_EQ(cache.imageForKey(before), nullptr);
  before = collection->identity();
  const auto second = collection->image();
  EXPECT_NE(second, first);
  collection->removeSubitem(extra);
  EXPECT_EQ(cache.imageForKey(before), nullptr);
  before = collection->identity();
  EXPECT_NE(collection->image(), second);
  collection->insertSubitem(extra, 0);
  EXPECT_EQ(cache.imageForKey(before), nullptr);
}

TEST_F(CollectionMenuItemTest, ItsIconReadsTheMembersWhenItIsDrawn) {
  platform.workspace.namedImages = {"Mail", "Safari"};
  const auto collection = collectionOf({core("Mail")});
  const auto image = collection->image();
  EXPECT_EQ(membersDrawn(*image), 1u);
  collection->addSubitem(core("Safari"));
  EXPECT_EQ(membersDrawn(*image), 2u);
}

TEST_F(CollectionMenuItemTest, ItsIconDoesNotKeepItAlive) {
  auto collection = collectionOf({core("Mail")});
  const std::weak_ptr<CollectionMenuItem> observed = collection;
  const auto image = collection->image();
  collection.reset();
  EXPECT_TRUE(observed.expired());
}

// Every show reads the items anew, so the object behind a cached icon is soon destroyed.
TEST_F(CollectionMenuItemTest, ItsIconCanStillBeDrawnLargerOnceItIsGone) {
  platform.workspace.namedImages = {"Mail", "Safari"};
  const auto image = collectionOf({core("Mail"), core("Safari")})->image();
  EXPECT_EQ(membersDrawn(*image), 2u);
  const auto successor = collectionOf({core("Safari"), core("Mail")});
  EXPECT_EQ(successor->image(), image);
  EXPECT_EQ(membersDrawn(*image), 2u);
}

TEST_F(CollectionMenuItemTest, CollectionsWithinOneAnotherAreDrawnWithoutEndlessWork) {
  // Every rendering draws the images it is given, as a real canvas does.
  class RenderingGraphics : public Graphics {
  public:
    Bitmap render(int width, int height, Size pointSize,
                  const std::function<void(Canvas&)>& drawing) override {
      ++renderings;
      RecordingCanvas canvas;
      canvas.backingScale = width / pointSize.width;
      drawing(canvas);
      for (const auto& call : canvas.named("drawImage")) {
        const int side = static_cast<int>(std::ceil(call.rect.size.width * canvas.scale()));
        call.image->representation(side, side);
      }
      return Bitmap(width, height);
    }
    int renderings = 0;
  };
  RenderingGraphics graphics;
  Platform& real = Platform::current();
  Platform rendering{real.runLoop,
                     real.workspace,
                     real.preferences,
                     real.windows,
                     graphics,
                     real.text,
                     real.hotKeys,
                     real.keyboardLayout,
                     real.eventTaps,
                     real.contextMenus,
                     real.dialogs,
                     real.keyRecorder,
                     real.settingsFormFactory,
                     real.videoPlayerFactory,
                     real.statusBar,
                     real.loginItem,
                     real.userNotifications};
  Platform::setCurrent(&rendering);
  auto collection = CollectionMenuItem::withName("0");
  for (int depth = 1; depth < 200; ++depth) {
    auto outer = CollectionMenuItem::withName(std::to_string(depth));
    outer->addSubitem(collection);
    collection = outer;
  }
  collection->image()->representation(320, 320);
  Platform::setCurrent(&real);
  // 320, 80, 20, 5 and 2 pixels; the next would be half a pixel or less.
  EXPECT_GE(graphics.renderings, 4);
  EXPECT_LE(graphics.renderings, 6);
}

} // namespace
} // namespace orbel
