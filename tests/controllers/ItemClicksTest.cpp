#include "tests/controllers/ItemCommandsFixture.h"

namespace orbel {
namespace {

class ItemClicksTest : public ItemCommandsFixture {};

TEST_F(ItemClicksTest, AClickOpensTheItemAndHidesWithoutActivatingTheEarlierProgram) {
  const auto earlier = platform.workspace.launch(9, "Earlier");
  platform.workspace.frontmost = earlier;
  store({storedApp("/apps/editor.desktop", "Editor")});
  shown().didClickItem(at(0));
  EXPECT_EQ(actions(), Names{"launchPath /apps/editor.desktop"});
  EXPECT_TRUE(controller().window().isFadingOut());
  EXPECT_TRUE(earlier->activations.empty());
}

TEST_F(ItemClicksTest, TheSecondClickOfADoubleClickOpensNothing) {
  store({storedApp("/apps/editor.desktop", "Editor")});
  shown().didClickItem(at(0));
  controller().didClickItem(at(0));
  EXPECT_EQ(actions().size(), 1u);
}

TEST_F(ItemClicksTest, AClickOnACollectionOpensItsMenuAtThePointerAndDisablesTheMainView) {
  store({storedCollection("Work", {storedCore("Mail")})});
  shown();
  platform.windows.movePointer({520, 610});
  controller().didClickItem(at(0));
  ASSERT_NE(controller().collectionController(), nullptr);
  EXPECT_EQ(controller().collectionController()->window().frame(), Rect::centeredAt({520, 610}, 300));
  EXPECT_FALSE(controller().orbelView().enabled());
  EXPECT_FALSE(controller().window().isFadingOut());
}

TEST_F(ItemClicksTest, TheTitleOfAClickedCollectionDoesNotStandOverItsMenu) {
  store({storedCollection("Work", {}), storedCore("Mail")});
  shown();
  platform.windows.click({500 + 122, 500});
  EXPECT_NE(controller().collectionController(), nullptr);
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(ItemClicksTest, InSwiftModeReachingACollectionOpensItsMenu) {
  store({storedCollection("Work", {storedCore("Mail")}), storedCore("Mail")});
  AppSettings::sharedInstance().setSwiftMode(true);
  shown();
  platform.windows.movePointer({500 + 122, 500});
  EXPECT_NE(controller().collectionController(), nullptr);
}

} // namespace
} // namespace orbel
