#include "view/OrbelItem.h"

#include "scene/Animation.h"
#include "tests/doubles/FakePlatform.h"
#include "tests/doubles/FakeViewTreeHost.h"
#include "tests/doubles/RecordingCanvas.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orbel {
namespace {

ImagePointer anIcon() {
  return Image::withBitmap({320, 320}, Bitmap(32, 32));
}

class OrbelItemTest : public testing::Test {
protected:
  std::shared_ptr<OrbelItem> itemInWindow(std::optional<std::string> title) {
    auto item = std::make_shared<OrbelItem>(anIcon(), std::move(title));
    item->setFrame({10, 20, 100, 100});
    tree.contentView().addSubview(item);
    return item;
  }

  FakePlatform platform;
  FakeViewTreeHost host{Rect(1000, 700, 400, 400), platform.windows};
  ViewTree tree{host, platform.runLoop, false};
};

TEST_F(OrbelItemTest, StartsAsASquareOf48PointsWithoutDotAndOverlay) {
  const auto icon = anIcon();
  const OrbelItem item(icon, "Files");
  EXPECT_EQ(item.frame(), Rect(0, 0, 48, 48));
  EXPECT_EQ(item.image(), icon);
  EXPECT_EQ(item.title(), "Files");
  EXPECT_FALSE(item.highlighted());
  EXPECT_FALSE(item.selected());
  EXPECT_EQ(item.highlightColor(), Color::gray());
  EXPECT_TRUE(item.highlightLayer().hidden);
  EXPECT_EQ(item.highlightLayer().color, Color::gray());
  EXPECT_EQ(item.selectionLayer().opacity, 0);
}

TEST_F(OrbelItemTest, TheDotIsCentredBelowTheItem) {
  OrbelItem item({0, 0, 100, 100});
  EXPECT_EQ(item.highlightLayer().frame, Rect(47, -9, 6, 6));
}

TEST_F(OrbelItemTest, DotAndOverlayFollowTheItemsSize) {
  OrbelItem item(anIcon(), std::nullopt);
  EXPECT_EQ(item.highlightLayer().frame, Rect(21, -9, 6, 6));
  item.setFrame({5, 5, 80, 80});
  EXPECT_EQ(item.highlightLayer().frame, Rect(37, -9, 6, 6));
  EXPECT_EQ(item.selectionLayer().frame, Rect(0, 0, 80, 80));
}

TEST_F(OrbelItemTest, HighlightingShowsTheDot) {
  OrbelItem item(anIcon(), std::nullopt);
  item.setHighlighted(true);
  EXPECT_FALSE(item.highlightLayer().hidden);
  item.setHighlighted(false);
  EXPECT_TRUE(item.highlightLayer().hidden);
}

TEST_F(OrbelItemTest, NoHighlightColorKeepsTheDotsEarlierColor) {
  OrbelItem item(anIcon(), std::nullopt);
  item.setHighlightColor(Color::white(1));
  EXPECT_EQ(item.highlightLayer().color, Color::white(1));
  item.setHighlightColor(std::nullopt);
  EXPECT_EQ(item.highlightColor(), std::nullopt);
  EXPECT_EQ(item.highlightLayer().color, Color::white(1));
}

TEST_F(OrbelItemTest, SelectingDarkensTheIconByHalf) {
  OrbelItem item(anIcon(), std::nullopt);
  item.setSelected(true);
  EXPECT_EQ(item.selectionLayer().opacity, 0.5);
  EXPECT_EQ(item.selectionLayer().mask, item.image());
  item.setSelected(true);
  EXPECT_EQ(item.selectionLayer().opacity, 0.5);
  item.setSelected(false);
  EXPECT_EQ(item.selectionLayer().opacity, 0);
  item.setSelected(false);
  EXPECT_EQ(item.selectionLayer().opacity, 0);
}

TEST_F(OrbelItemTest, SelectingAnItemWithoutAnImageLeavesTheOverlayInvisible) {
  OrbelItem item(nullptr, "Files");
  item.setSelected(true);
  EXPECT_TRUE(item.selected());
  EXPECT_EQ(item.selectionLayer().opacity, 0);
}

TEST_F(OrbelItemTest, AnImageThatComesAfterTheSelectionIsDarkenedOnlyByAChange) {
  OrbelItem item(nullptr, "Files");
  item.setSelected(true);
  item.setImage(anIcon());
  item.setSelected(true);
  EXPECT_EQ(item.selectionLayer().opacity, 0);
  item.setSelected(false);
  item.setSelected(true);
  EXPECT_EQ(item.selectionLayer().opacity, 0.5);
}

TEST_F(OrbelItemTest, LosingTheImageWhileSelectedLightensAtTheNextSelection) {
  OrbelItem item(anIcon(), "Files");
  item.setSelected(true);
  item.setImage(nullptr);
  item.setSelected(true);
  EXPECT_EQ(item.selectionLayer().opacity, 0);
}

TEST_F(OrbelItemTest, PaintsTheIconThenTheSilhouetteThenTheDot) {
  const auto item = itemInWindow("Files");
  item->setSelected(true);
  item->setHighlighted(true);
  item->setHighlightColor(Color::white(1));
  RecordingCanvas canvas;
  tree.paint(canvas, {0, 0, 400, 400});
  ASSERT_EQ(canvas.calls.size(), 3u);
  EXPECT_EQ(canvas.calls[0].name, "drawImage");
  EXPECT_EQ(canvas.calls[0].rect, Rect(10, 20, 100, 100));
  EXPECT_EQ(canvas.calls[0].image, item->image().get());
  EXPECT_EQ(canvas.calls[1].name, "drawSilhouette");
  EXPECT_EQ(canvas.calls[1].rect, Rect(10, 20, 100, 100));
  EXPECT_EQ(canvas.calls[1].color, Color::white(0, 0.5));
  EXPECT_EQ(canvas.calls[2].name, "fillEllipse");
  EXPECT_EQ(canvas.calls[2].rect, Rect(57, 11, 6, 6));
  EXPECT_EQ(canvas.calls[2].color, Color::white(1));
}

TEST_F(OrbelItemTest, AtRestPaintsTheIconAlone) {
  itemInWindow("Files");
  RecordingCanvas canvas;
  tree.paint(canvas, {0, 0, 400, 400});
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].name, "drawImage");
}

TEST_F(OrbelItemTest, WithoutAnImagePaintsNothingButTheDot) {
  const auto item = itemInWindow(std::nullopt);
  item->setImage(nullptr);
  item->setHighlighted(true);
  RecordingCanvas canvas;
  tree.paint(canvas, {0, 0, 400, 400});
  ASSERT_EQ(canvas.calls.size(), 1u);
  EXPECT_EQ(canvas.calls[0].name, "fillEllipse");
}

TEST_F(OrbelItemTest, OnItsWayIsPaintedWhereItIsAndNotWhereItGoes) {
  const auto item = itemInWindow(std::nullopt);
  item->setHighlighted(true);
  item->setFrame({10, 20, 200, 200}, Animated::yes);
  RecordingCanvas canvas;
  tree.paint(canvas, {0, 0, 400, 400});
  EXPECT_EQ(canvas.named("drawImage").front().rect, Rect(10, 20, 100, 100));
  EXPECT_EQ(canvas.named("fillEllipse").front().rect, Rect(57, 11, 6, 6));
  EXPECT_EQ(item->highlightLayer().frame, Rect(97, -9, 6, 6));
}

TEST_F(OrbelItemTest, EveryChangeOfItsLookDamagesTheDotsPlaceToo) {
  const auto item = itemInWindow("Files");
  const auto damageOf = [&](auto change) {
    host.damage = {};
    change();
    return host.damage;
  };
  const Rect dotOnWindow(57, 11, 6, 6);
  const auto covers = [&](const Rect& damage) {
    return damage.unitedWith(dotOnWindow) == damage && !damage.isEmpty();
  };
  EXPECT_TRUE(covers(damageOf([&] { item->setHighlighted(true); })));
  EXPECT_TRUE(covers(damageOf([&] { item->setHighlightColor(Color::white(1)); })));
  EXPECT_TRUE(covers(damageOf([&] { item->setSelected(true); })));
  EXPECT_TRUE(covers(damageOf([&] { item->setImage(anIcon()); })));
  EXPECT_TRUE(damageOf([&] { item->setSelected(true); }).isEmpty()) << "nothing changed";
}

TEST_F(OrbelItemTest, ThereIsABubbleExactlyWhileThereIsATitle) {
  OrbelItem item(anIcon(), std::nullopt);
  EXPECT_EQ(item.titlePopover(), nullptr);
  item.setTitle("Files");
  ASSERT_NE(item.titlePopover(), nullptr);
  EXPECT_EQ(static_cast<FakeBubble*>(item.titlePopover())->text, "Files");
  item.setTitle("Music");
  EXPECT_EQ(static_cast<FakeBubble*>(item.titlePopover())->text, "Music");
  item.setTitle(std::nullopt);
  EXPECT_EQ(item.titlePopover(), nullptr);
}

TEST_F(OrbelItemTest, ShowingTheTitlePointsTheBubbleAtTheItemOnTheScreen) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->text, "Files");
  EXPECT_EQ(platform.windows.shownBubbles[0]->surface, host.hostSurface());
  EXPECT_EQ(platform.windows.shownBubbles[0]->anchor, Rect(1010, 720, 100, 100));
  item->closeTitle();
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelItemTest, NoTitleIsShownOutsideAWindowOrWithoutATitle) {
  OrbelItem outside(anIcon(), "Files");
  outside.showTitle();
  const auto untitled = itemInWindow("Files");
  untitled->setTitle(std::nullopt);
  untitled->showTitle();
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
  untitled->closeTitle();
}

TEST_F(OrbelItemTest, NoTitleIsShownInAWindowThatIsNoSurface) {
  FakeViewTreeHost plain{Rect(0, 0, 400, 400)};
  ViewTree otherTree{plain, platform.runLoop, false};
  const auto item = std::make_shared<OrbelItem>(anIcon(), "Files");
  otherTree.contentView().addSubview(item);
  item->showTitle();
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelItemTest, ABubbleThatShowsIsNotClosedByAnotherTitle) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->setTitle("Music");
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->text, "Files");
  EXPECT_FALSE(item->titlePopover()->isShown());
}

TEST_F(OrbelItemTest, TheBubbleOfAnEarlierTitleGoesWhenTheNewOneShows) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->setTitle("Music");
  item->showTitle();
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(platform.windows.shownBubbles[0]->text, "Music");
}

TEST_F(OrbelItemTest, TheBubbleOfAnEarlierTitleGoesWhenTheTitleIsClosed) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->setTitle(std::nullopt);
  EXPECT_EQ(platform.windows.shownBubbles.size(), 1u);
  item->closeTitle();
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelItemTest, TheBubbleFollowsTheItemWhileItMoves) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->setFrame({110, 20, 100, 100}, Animated::yes);
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  const FakeBubble& bubble = *platform.windows.shownBubbles[0];
  EXPECT_EQ(bubble.anchor, Rect(1010, 720, 100, 100));
  platform.runLoop.advance(kAnimationDuration / 2);
  EXPECT_GT(bubble.anchor.minX(), 1010);
  EXPECT_LT(bubble.anchor.minX(), 1110);
  platform.runLoop.advance(kAnimationDuration);
  EXPECT_EQ(bubble.anchor, Rect(1110, 720, 100, 100));
}

TEST_F(OrbelItemTest, ATitleThatIsNotShownStaysHiddenWhileTheItemMoves) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->closeTitle();
  item->setFrame({110, 20, 100, 100});
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelItemTest, LeavingTheWindowClosesTheTitle) {
  const auto item = itemInWindow("Files");
  item->showTitle();
  item->removeFromSuperview();
  EXPECT_TRUE(platform.windows.shownBubbles.empty());
}

TEST_F(OrbelItemTest, AReplacementTakesPlaceAndOpenBubbleOfAnEqualTitle) {
  const auto old = itemInWindow("Files");
  old->showTitle();
  const auto incoming = std::make_shared<OrbelItem>(old->image(), "Files");
  tree.contentView().addSubview(incoming);
  incoming->replace(*old);
  old->removeFromSuperview();
  EXPECT_EQ(incoming->presentedFrame(), Rect(10, 20, 100, 100));
  ASSERT_EQ(platform.windows.shownBubbles.size(), 1u);
  EXPECT_EQ(incoming->titlePopover(), platform.windows.shownBubbles[0]);
}

TEST_F(OrbelItemTest, AReplacementWithAnotherTitleDoesNotTakeTheBubble) {
  const auto old = itemInWindow("Files");
  old->showTitle();
  const auto incoming = std::make_shared<OrbelItem>(old->image(), "Music");
  tree.contentView().addSubview(incoming);
  incoming->replace(*old);
  EXPECT_TRUE(old->titlePopover()->isShown());
  EXPECT_FALSE(incoming->titlePopover()->isShown());
}

} // namespace
} // namespace orbel
