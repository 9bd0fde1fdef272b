#include "model/CollectionIcon.h"

#include "model/CollectionMenuItem.h"
#include "model/CoreMenuItem.h"
#include "tests/model/ModelFixture.h"

#include <cmath>
#include <numbers>

namespace orbel {
namespace {

constexpr Rect kDestination = {0, 0, 320, 320};
constexpr double kClose = 1e-9;

class CollectionIconTest : public ModelFixture {
protected:
  CollectionIconTest() { platform.workspace.namedImages = {"Finder", "Safari", "Mail"}; }

  static MenuItemList members(const Strings& names) {
    MenuItemList list;
    for (const auto& name : names)
      list.push_back(CoreMenuItem::withName(name));
    return list;
  }
  static RecordingCanvas drawn(const MenuItemList& list, const Rect& destination = kDestination,
                               double scale = 1) {
    RecordingCanvas canvas;
    canvas.backingScale = scale;
    CollectionIcon::draw(canvas, destination, list);
    return canvas;
  }
  static void expectSquare(const Rect& frame, Point center, double side) {
    EXPECT_NEAR(frame.midX(), center.x, kClose);
    EXPECT_NEAR(frame.midY(), center.y, kClose);
    EXPECT_NEAR(frame.size.width, side, kClose);
    EXPECT_NEAR(frame.size.height, side, kClose);
  }
};

TEST_F(CollectionIconTest, IsABareDiscWithoutMembers) {
  const auto canvas = drawn({});
  ASSERT_EQ(canvas.calls.size(), 2u);
  EXPECT_EQ(canvas.calls[0].name, "fillEllipse");
  EXPECT_EQ(canvas.calls[0].rect, Rect(1, 1, 318, 318));
  EXPECT_EQ(canvas.calls[0].color, (Color{0, 0, 0, 0.2}));
  EXPECT_EQ(canvas.calls[1].name, "strokeEllipse");
  EXPECT_EQ(canvas.calls[1].rect, Rect(1, 1, 318, 318));
  EXPECT_EQ(canvas.calls[1].color, (Color{1, 1, 1, 0.5}));
  EXPECT_EQ(canvas.calls[1].lineWidth, 1);
}

TEST_F(CollectionIconTest, OneMemberSitsStraightBelowTheCentreAtAQuarterOfTheWidth) {
  expectSquare(CollectionIcon::memberFrame(kDestination, 0, 1), {160, 160 - 96}, 80);
}

TEST_F(CollectionIconTest, TwoMembersSitRightAndLeftOfTheCentre) {
  expectSquare(CollectionIcon::memberFrame(kDestination, 0, 2), {160 + 96, 160}, 80);
  expectSquare(CollectionIcon::memberFrame(kDestination, 1, 2), {160 - 96, 160}, 80);
}

TEST_F(CollectionIconTest, TwelveMembersShareTheCircleBelowTheCap) {
  const double side = 96 * (std::numbers::pi / 6) / 1.41;
  EXPECT_NEAR(side, 35.6, 0.1);
  const double angle = std::numbers::pi / 12; // half a step clockwise from the top
  expectSquare(CollectionIcon::memberFrame(kDestination, 0, 12),
               {160 + 96 * std::sin(angle), 160 + 96 * std::cos(angle)}, side);
  expectSquare(CollectionIcon::memberFrame(kDestination, 11, 12),
               {160 - 96 * std::sin(angle), 160 + 96 * std::cos(angle)}, side);
}

TEST_F(CollectionIconTest, TheCapHoldsUpToFiveMembers) {
  EXPECT_EQ(CollectionIcon::memberFrame(kDestination, 0, 5).size.width, 80);
  EXPECT_LT(CollectionIcon::memberFrame(kDestination, 0, 6).size.width, 80);
}

TEST_F(CollectionIconTest, DrawsTheMembersImagesInTheirOrder) {
  const auto list = members({"Finder", "Safari", "Mail"});
  const auto images = drawn(list).named("drawImage");
  ASSERT_EQ(images.size(), 3u);
  for (std::size_t index = 0; index < 3; ++index) {
    EXPECT_EQ(images[index].image, list[index]->image().get());
    EXPECT_EQ(images[index].rect, CollectionIcon::memberFrame(kDestination, index, 3));
  }
}

TEST_F(CollectionIconTest, AMemberWithoutAnImageLeavesItsPlaceEmpty) {
  const auto images = drawn(members({"Finder", "Nothing", "Mail"})).named("drawImage");
  ASSERT_EQ(images.size(), 2u);
  EXPECT_EQ(images[1].rect, CollectionIcon::memberFrame(kDestination, 2, 3));
}

TEST_F(CollectionIconTest, FollowsTheDestination) {
  const Rect destination(100, 50, 160, 160);
  expectSquare(CollectionIcon::memberFrame(destination, 0, 1), {180, 130 - 48}, 40);
  EXPECT_EQ(drawn({}, destination).calls[0].rect, Rect(101, 51, 158, 158));
}

TEST_F(CollectionIconTest, DoesNotFetchIconsThatAreTooSmallToBeSeen) {
  List stored;
  for (int index = 0; index < 10'000; ++index)
    stored.push_back(storedFile("/f" + std::to_string(index), "f"));
  const auto list = readList(stored);
  EXPECT_TRUE(drawn(list).named("drawImage").empty());
  EXPECT_EQ(platform.workspace.iconsAsked, 0);
  EXPECT_EQ(drawn(MenuItemList(list.begin(), list.begin() + 500)).named("drawImage").size(), 500u);
}

TEST_F(CollectionIconTest, WhatIsTooSmallDependsOnTheScale) {
  const auto list = members({"Mail"});
  EXPECT_EQ(drawn(list, kDestination, 1.0 / 160).named("drawImage").size(), 1u); // half a pixel
  EXPECT_TRUE(drawn(list, kDestination, 1.0 / 161).named("drawImage").empty());
}

} // namespace
} // namespace orbel
