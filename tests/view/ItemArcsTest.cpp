#include "view/ItemArcs.h"

#include "view/ItemSections.h"
#include "view/OrbelItem.h"
#include "view/RadialGeometry.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <vector>

namespace orbel {
namespace {

ItemSections sectionsOf(std::initializer_list<int> counts) {
  ItemSections sections;
  for (const int count : counts) {
    sections.addSection();
    for (int index = 0; index < count; ++index)
      sections.append(std::make_shared<OrbelItem>(Rect()));
  }
  return sections;
}

std::vector<ItemArc> walk(const ItemSections& sections, double startArc, ItemPath gap = {}) {
  std::vector<ItemArc> arcs;
  for (const ItemArc& arc : ItemArcs(sections, startArc, gap))
    arcs.push_back(arc);
  return arcs;
}

TEST(ItemArcsTest, SectionsFollowEachOtherWithoutSpace) {
  const auto arcs = walk(sectionsOf({3, 0, 2}), 0);
  ASSERT_EQ(arcs.size(), 5u);
  const ItemPath paths[] = {{0, 0}, {0, 1}, {0, 2}, {2, 0}, {2, 1}};
  for (std::size_t index = 0; index < arcs.size(); ++index) {
    EXPECT_EQ(arcs[index].path, paths[index]);
    EXPECT_EQ(arcs[index].globalIndex, static_cast<std::int64_t>(index));
    EXPECT_NEAR(arcs[index].start, static_cast<double>(index) * kFullTurn / 5, 1e-12);
    EXPECT_NEAR(arcs[index].extent, kFullTurn / 5, 1e-12);
  }
}

TEST(ItemArcsTest, TheFirstArcStartsWhereTheCircleIsTurnedTo) {
  const auto arcs = walk(sectionsOf({4}), -0.25);
  EXPECT_EQ(arcs.front().start, -0.25);
  EXPECT_NEAR(arcs.back().end(), kFullTurn - 0.25, 1e-12);
}

TEST(ItemArcsTest, ArcsAreAsWideAsTheirShareOfAllSizes) {
  ItemSections sections = sectionsOf({3});
  sections.setRelativeSize(2, {0, 1});
  const auto arcs = walk(sections, 0);
  EXPECT_NEAR(arcs[0].extent, kFullTurn / 4, 1e-12);
  EXPECT_NEAR(arcs[1].extent, kFullTurn / 2, 1e-12);
  EXPECT_NEAR(arcs[1].center(), kFullTurn / 2, 1e-12);
}

TEST(ItemArcsTest, AGapTakesOneNormalSlotInFrontOfItsItem) {
  const auto arcs = walk(sectionsOf({3}), 0, {0, 1});
  for (const ItemArc& arc : arcs)
    EXPECT_NEAR(arc.extent, kFullTurn / 4, 1e-12);
  EXPECT_NEAR(arcs[0].start, 0, 1e-12);
  EXPECT_NEAR(arcs[1].start, kFullTurn / 2, 1e-12);
  EXPECT_NEAR(arcs[2].start, 3 * kFullTurn / 4, 1e-12);
}

TEST(ItemArcsTest, AGapBehindASectionsLastItemLeavesItsRoomAtTheEndOfTheCircle) {
  const auto arcs = walk(sectionsOf({2, 1}), 0, {0, 2});
  for (std::size_t index = 0; index < arcs.size(); ++index) {
    EXPECT_NEAR(arcs[index].start, static_cast<double>(index) * kFullTurn / 4, 1e-12);
  }
  EXPECT_NEAR(arcs.back().end(), 3 * kFullTurn / 4, 1e-12);
}

TEST(ItemArcsTest, AnItemWithoutASizeCoversNothing) {
  ItemSections sections = sectionsOf({2});
  sections.setRelativeSize(0, {0, 0});
  const auto arcs = walk(sections, 0);
  EXPECT_EQ(arcs[0].extent, 0);
  EXPECT_NEAR(arcs[1].extent, kFullTurn, 1e-12);
}

TEST(ItemArcsTest, NothingIsWalkedWhereNothingStands) {
  EXPECT_TRUE(walk(sectionsOf({}), 0).empty());
  EXPECT_TRUE(walk(sectionsOf({0, 0}), 0, {0, 0}).empty());
}

TEST(ItemArcsTest, AWalkEndsEarlyWhenTheItemsGoAwayUnderIt) {
  ItemSections sections = sectionsOf({3, 3});
  int visited = 0;
  for ([[maybe_unused]] const ItemArc& arc : ItemArcs(sections, 0)) {
    if (++visited == 2) sections.clear();
  }
  EXPECT_EQ(visited, 2);
}

TEST(ItemArcTest, ZonesAreAQuarterAHalfAndAQuarterOfTheArc) {
  const ItemArc arc{{0, 0}, 0, 1, 4};
  EXPECT_EQ(arc.zoneAt(0.5), ArcZone::none);
  EXPECT_EQ(arc.zoneAt(1.5), ArcZone::firstQuarter);
  EXPECT_EQ(arc.zoneAt(2.001), ArcZone::middleHalf);
  EXPECT_EQ(arc.zoneAt(3), ArcZone::middleHalf);
  EXPECT_EQ(arc.zoneAt(3.999), ArcZone::middleHalf);
  EXPECT_EQ(arc.zoneAt(4.5), ArcZone::lastQuarter);
  EXPECT_EQ(arc.zoneAt(5.5), ArcZone::none);
}

TEST(ItemArcTest, ABoundaryBelongsToNoZone) {
  const ItemArc arc{{0, 0}, 0, 1, 4};
  for (const double boundary : {1.0, 2.0, 4.0, 5.0})
    EXPECT_EQ(arc.zoneAt(boundary), ArcZone::none) << boundary;
}

TEST(ItemArcTest, ItsEndsAreNotInside) {
  const ItemArc arc{{0, 0}, 0, 1, 4};
  EXPECT_FALSE(arc.strictlyContains(1));
  EXPECT_TRUE(arc.strictlyContains(1.001));
  EXPECT_TRUE(arc.strictlyContains(2));
  EXPECT_FALSE(arc.strictlyContains(5));
}

} // namespace
} // namespace orbel
