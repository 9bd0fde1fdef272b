#include "tests/view/OrbelViewFixture.h"

#include "scene/Animation.h"
#include "tests/doubles/RecordingCanvas.h"

#include <algorithm>

namespace orbel {
namespace {

class OrbelViewReloadTest : public OrbelViewFixture {
protected:
  RecordingCanvas painted() {
    RecordingCanvas canvas;
    tree.paint(canvas, {0, 0, 450, 460});
    return canvas;
  }
  // The opacity with which that picture is painted; -1 when it is not.
  double opacityOf(const ImagePointer& image) {
    const RecordingCanvas canvas = painted();
    const auto call =
        std::find_if(canvas.calls.begin(), canvas.calls.end(),
                     [&](const RecordingCanvas::Call& entry) { return entry.image == image.get(); });
    return call != canvas.calls.end() ? call->opacity : -1;
  }
  void settle() {
    platform.runLoop.advance(1);
    painted();
  }
};

TEST_F(OrbelViewReloadTest, AsksForEveryCountBeforeEachAndOnceMoreAfterTheLast) {
  fill({3, 2});
  EXPECT_EQ(controller.sectionQuestions, 3);
  EXPECT_EQ(controller.countQuestions, 4 + 3);
  EXPECT_EQ(view->numberOfSections(), 2);
  EXPECT_EQ(view->numberOfItemsInSection(0), 3);
  EXPECT_EQ(view->numberOfItemsInSection(1), 2);
  EXPECT_EQ(titlesInSection(1), (std::vector<std::string>{"1-0", "1-1"}));
  EXPECT_EQ(view->subviews().size(), 5u);
}

TEST_F(OrbelViewReloadTest, AnEmptySourceOrNoneEmptiesTheCircle) {
  fill({3});
  fill({});
  EXPECT_EQ(view->totalNumberOfItems(), 0);
  EXPECT_EQ(view->numberOfSections(), 0);
  EXPECT_TRUE(view->subviews().empty());
  fill({3});
  view->setDataSource(nullptr);
  view->reloadData();
  EXPECT_EQ(view->numberOfSections(), 0);
  EXPECT_TRUE(view->subviews().empty());
}

TEST_F(OrbelViewReloadTest, ForgetsEverySizeTheTurnAndTheDrag) {
  fill({4});
  view->setRelativeSize(9, {0, 1});
  view->setRelativeSize(9, {3, 3});
  press(centerOf(0, 1));
  ASSERT_NE(view->draggedItem(), nullptr);
  movePointer(onCircle(degrees(5)));
  ASSERT_NE(view->draggedItemSection(), kNotFound);
  const std::weak_ptr<OrbelItem> dragged = view->draggedItem();
  host.pointer.reset();
  view->reloadData();
  EXPECT_EQ(view->draggedItem(), nullptr);
  EXPECT_EQ(gap(), ItemPath());
  EXPECT_EQ(sizes(), (std::vector<double>{1, 1, 1, 1}));
  EXPECT_EQ(view->relativeSize({3, 3}), 0);
  EXPECT_EQ(view->startArc(), 0);
  EXPECT_EQ(view->totalNumberOfItems(), 4);
  EXPECT_TRUE(dragged.expired());
}

TEST_F(OrbelViewReloadTest, LaysOutAtOnceMagnifiedForWhereThePointerIs) {
  view->setMagnifyItemsOnMouseOver(true);
  controller.serve({8});
  placePointer(at(degrees(10), 150));
  view->reloadData();
  EXPECT_EQ(view->lastMouseOverItemIndex(), 0);
  EXPECT_NEAR(view->relativeSize({0, 0}), kPi + 1, 1e-12);
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 8, 1e-12);
  view->sections().forEach(
      [](const OrbelItem& shown, ItemPath) { EXPECT_EQ(shown.presentedFrame(), shown.frame()); });
}

TEST_F(OrbelViewReloadTest, WithAnUnknownPointerTheCircleIsAtRest) {
  view->setMagnifyItemsOnMouseOver(true);
  host.pointer.reset();
  fill({8});
  EXPECT_EQ(view->lastMouseOverItemIndex(), -1);
  EXPECT_EQ(sizes(), std::vector<double>(8, 1));
  EXPECT_NEAR(directionOf(item(0, 0)), kPi / 8, 1e-12);
}

TEST_F(OrbelViewReloadTest, AsksForNoTitleUntilThePointerMoves) {
  for (const Point pointer : {onCircle(kPi / 4), Point{5, 5}, Point{40, 40}}) {
    controller.serve({4});
    placePointer(pointer);
    view->reloadData();
    view->reloadData();
    EXPECT_TRUE(controller.titleQuestions.empty()) << pointer.x;
  }
  movePointer(onCircle(kPi / 4));
  EXPECT_EQ(controller.titleQuestions, (std::vector<ItemPath>{{0, 0}}));
}

TEST_F(OrbelViewReloadTest, WithoutItemsThePointerChangesNothing) {
  fill({});
  movePointer(onCircle(1));
  EXPECT_EQ(view->startArc(), 0);
  fill({0, 0});
  movePointer(onCircle(2));
  EXPECT_EQ(view->startArc(), 0);
}

TEST_F(OrbelViewReloadTest, NewItemsFadeIn) {
  fill({2});
  settle();
  controller.entries[0].push_back({"new", Image::withBitmap({320, 320}, Bitmap(16, 16))});
  view->reloadData();
  EXPECT_EQ(item(0, 2).presentedOpacity(), 0);
  platform.runLoop.advance(kAnimationDuration / 2);
  EXPECT_GT(item(0, 2).presentedOpacity(), 0);
  EXPECT_LT(item(0, 2).presentedOpacity(), 1);
  platform.runLoop.advance(kAnimationDuration);
  EXPECT_EQ(item(0, 2).presentedOpacity(), 1);
}

TEST_F(OrbelViewReloadTest, ItemsThatStayDoNotBlink) {
  fill({3});
  settle();
  const auto image = controller.entries[0][1].image;
  const OrbelItem* const old = &item(0, 1);
  view->reloadData();
  EXPECT_NE(&item(0, 1), old);
  EXPECT_EQ(item(0, 1).presentedOpacity(), 1);
  EXPECT_FALSE(tree.isAnimating());
  EXPECT_EQ(painted().named("drawImage").size(), 3u)
      << "the old ones are gone, not fading above the new ones";
  EXPECT_EQ(opacityOf(image), 1);
}

TEST_F(OrbelViewReloadTest, AnItemThatIsStillFadingInGoesOnFromThere) {
  fill({1});
  platform.runLoop.advance(kAnimationDuration / 2);
  painted();
  const double opacity = item(0, 0).presentedOpacity();
  ASSERT_GT(opacity, 0);
  ASSERT_LT(opacity, 1);
  view->reloadData();
  EXPECT_EQ(item(0, 0).presentedOpacity(), opacity);
  platform.runLoop.advance(1);
  EXPECT_EQ(item(0, 0).presentedOpacity(), 1);
}

TEST_F(OrbelViewReloadTest, ItemsThatGoFadeOut) {
  fill({3});
  settle();
  const auto gone = controller.entries[0][1].image;
  controller.entries[0].erase(controller.entries[0].begin() + 1);
  view->reloadData();
  EXPECT_EQ(view->subviews().size(), 2u);
  EXPECT_EQ(opacityOf(gone), 1);
  platform.runLoop.advance(kAnimationDuration / 2);
  EXPECT_GT(opacityOf(gone), 0);
  EXPECT_LT(opacityOf(gone), 1);
  platform.runLoop.advance(kAnimationDuration);
  EXPECT_EQ(opacityOf(gone), -1);
}

TEST_F(OrbelViewReloadTest, AnotherTitleOrAnotherPictureIsAnotherItem) {
  fill({2});
  settle();
  controller.entries[0][0].title = "renamed";
  controller.entries[0][1].image = Image::withBitmap({320, 320}, Bitmap(16, 16));
  view->reloadData();
  EXPECT_EQ(item(0, 0).presentedOpacity(), 0);
  EXPECT_EQ(item(0, 1).presentedOpacity(), 0);
}

TEST_F(OrbelViewReloadTest, OfTwoEqualItemsEachTakesThePlaceOfOne) {
  controller.serve({2});
  controller.entries[0][1] = controller.entries[0][0];
  view->reloadData();
  settle();
  controller.entries[0].push_back(controller.entries[0][0]);
  view->reloadData();
  int fadingIn = 0;
  view->sections().forEach(
      [&](const OrbelItem& shown, ItemPath) { fadingIn += shown.presentedOpacity() < 1 ? 1 : 0; });
  EXPECT_EQ(fadingIn, 1);
}

TEST_F(OrbelViewReloadTest, TheItemUnderTheUsersHandTakesItsPlaceWithoutBlinking) {
  fill({4});
  settle();
  press(centerOf(0, 1));
  movePointer(onCircle(degrees(5)));
  view->reloadData();
  EXPECT_EQ(item(0, 1).presentedOpacity(), 1);
  EXPECT_EQ(painted().named("drawImage").size(), 4u);
}

TEST_F(OrbelViewReloadTest, TheTitleOfAnItemThatGoesIsClosed) {
  fill({4});
  settle();
  movePointer(centerOf(0, 0));
  ASSERT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
  fill({});
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewReloadTest, TheTitleOfAnItemThatStaysIsNotClosed) {
  fill({4});
  settle();
  movePointer(centerOf(0, 0));
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  const FakeBubble* const bubble = platform.windows.shownBubbles[0];
  view->reloadData();
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0], bubble);
  EXPECT_EQ(item(0, 0).titlePopover(), bubble);
}

TEST_F(OrbelViewReloadTest, TheTitleOfAnItemThatMovedFromUnderThePointerIsClosed) {
  fill({4});
  settle();
  movePointer(centerOf(0, 0));
  ASSERT_EQ(titlesShown(), std::vector<std::string>{"0-0"});
  std::rotate(controller.entries[0].begin(), controller.entries[0].begin() + 1, controller.entries[0].end());
  view->reloadData();
  ASSERT_EQ(item(0, 3).title(), "0-0");
  EXPECT_TRUE(titlesShown().empty());
}

TEST_F(OrbelViewReloadTest, NoTitleStaysWhereThePointerIsUnknown) {
  fill({4});
  settle();
  movePointer(centerOf(0, 0));
  host.pointer.reset();
  view->reloadData();
  EXPECT_TRUE(titlesShown().empty());
}

class IconsTest : public OrbelViewReloadTest {
protected:
  void serveOneCountedIcon() {
    controller.serve({1});
    controller.entries[0][0].image = std::make_shared<Image>(Size{320, 320}, [this](int width, int height) {
      ++renderings;
      largest = std::max(width, height);
      return Bitmap(width, height);
    });
  }
  int renderings = 0;
  int largest = 0;
};

TEST_F(IconsTest, AreMadeOnceForTheLargestSideEverDrawn) {
  host.scale = 2;
  serveOneCountedIcon();
  view->reloadData();
  EXPECT_EQ(renderings, 1);
  EXPECT_EQ(largest, 200) << "a quarter of the width in device pixels";
  item(0, 0).image()->representation(63, 63);
  EXPECT_EQ(renderings, 1);
}

TEST_F(IconsTest, AreRoundedUpToWholePixels) {
  host.scale = 1.25;
  view->setFrame({0, 0, 401, 401});
  serveOneCountedIcon();
  view->reloadData();
  EXPECT_EQ(largest, 126) << "125.3125";
}

TEST_F(IconsTest, WaitForAWindow) {
  view->removeFromSuperview();
  serveOneCountedIcon();
  view->reloadData();
  EXPECT_EQ(renderings, 0);
  tree.contentView().addSubview(view);
  EXPECT_EQ(largest, 100);
}

TEST_F(IconsTest, GrowWithTheView) {
  serveOneCountedIcon();
  view->reloadData();
  view->setFrame({0, 0, 600, 600});
  EXPECT_EQ(largest, 150);
}

} // namespace
} // namespace orbel
