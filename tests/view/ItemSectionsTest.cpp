#include "view/ItemSections.h"

#include "view/OrbelItem.h"

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

TEST(ItemSectionsTest, AnItemThatIsAppendedHasTheNormalSize) {
  const ItemSections sections = sectionsOf({2, 1});
  EXPECT_EQ(sections.relativeSize({0, 0}), 1);
  EXPECT_EQ(sections.relativeSize({1, 0}), 1);
  EXPECT_EQ(sections.sumOfRelativeSizes(), 3);
}

TEST(ItemSectionsTest, ASizeThatWasNeverSetReadsZero) {
  const ItemSections sections = sectionsOf({2});
  for (const ItemPath path : {ItemPath{0, 2}, ItemPath{1, 0}, ItemPath{-1, 0}, ItemPath{0, -1}, ItemPath{}}) {
    EXPECT_EQ(sections.relativeSize(path), 0);
  }
}

TEST(ItemSectionsTest, ASizeCanBeSetForAPlaceThatHasNoItem) {
  ItemSections sections = sectionsOf({1});
  sections.setRelativeSize(2.5, {7, 3});
  sections.setRelativeSize(3.5, {-1, 0});
  EXPECT_EQ(sections.relativeSize({7, 3}), 2.5);
  EXPECT_EQ(sections.relativeSize({-1, 0}), 3.5);
  sections.setRelativeSize(4, {7, 3});
  EXPECT_EQ(sections.relativeSize({7, 3}), 4);
  EXPECT_EQ(sections.sumOfRelativeSizes(), 1) << "only items count";
}

TEST(ItemSectionsTest, ASizeBelongsToThePlaceAndStaysWhenAnItemIsTakenOut) {
  ItemSections sections = sectionsOf({3});
  sections.setRelativeSize(2, {0, 1});
  sections.setRelativeSize(3, {0, 2});
  const auto first = sections.item({0, 0});
  sections.remove(*first);
  EXPECT_EQ(sections.numberOfItems(0), 2);
  EXPECT_EQ(sections.relativeSize({0, 0}), 1);
  EXPECT_EQ(sections.relativeSize({0, 1}), 2);
  EXPECT_EQ(sections.relativeSize({0, 2}), 3);
  EXPECT_EQ(sections.sumOfRelativeSizes(), 3);
}

TEST(ItemSectionsTest, AnItemMovedToTheEndOfASectionHasNoSizeUntilOneIsSet) {
  ItemSections sections = sectionsOf({1, 2});
  const auto moved = sections.item({0, 0});
  sections.remove(*moved);
  sections.insert(moved, {1, 2});
  EXPECT_EQ(sections.item({1, 2}), moved);
  EXPECT_EQ(sections.relativeSize({1, 2}), 0);
  sections.setAllRelativeSizes(1);
  EXPECT_EQ(sections.relativeSize({1, 2}), 1);
}

TEST(ItemSectionsTest, InsertingPutsAnItemInFrontOfTheOneAtThatPlace) {
  ItemSections sections = sectionsOf({3});
  const auto second = sections.item({0, 1});
  const auto item = std::make_shared<OrbelItem>(Rect());
  sections.insert(item, {0, 1});
  EXPECT_EQ(sections.item({0, 1}), item);
  EXPECT_EQ(sections.item({0, 2}), second);
  EXPECT_EQ(sections.numberOfItems(0), 4);
}

TEST(ItemSectionsTest, InsertingBeyondTheEndAppendsAndIntoNoSectionDoesNothing) {
  ItemSections sections = sectionsOf({1});
  const auto item = std::make_shared<OrbelItem>(Rect());
  sections.insert(item, {0, 9});
  EXPECT_EQ(sections.item({0, 1}), item);
  sections.insert(item, {1, 0});
  sections.insert(item, {kNotFound, kNotFound});
  EXPECT_EQ(sections.numberOfSections(), 1);
  EXPECT_EQ(sections.numberOfItems(0), 2);
}

TEST(ItemSectionsTest, ThereIsNoItemOutsideTheSections) {
  const ItemSections sections = sectionsOf({1});
  for (const ItemPath path : {ItemPath{0, 1}, ItemPath{1, 0}, ItemPath{0, -1}, ItemPath{-1, 0}, ItemPath{}}) {
    EXPECT_EQ(sections.item(path), nullptr);
  }
  EXPECT_EQ(sections.numberOfItems(1), 0);
  EXPECT_EQ(sections.numberOfItems(-1), 0);
}

TEST(ItemSectionsTest, EverythingIsVisitedInTheOrderOfTheGlobalIndex) {
  std::vector<ItemPath> visited;
  sectionsOf({2, 0, 1}).forEach([&](const OrbelItem&, ItemPath path) { visited.push_back(path); });
  EXPECT_EQ(visited, (std::vector<ItemPath>{{0, 0}, {0, 1}, {2, 0}}));
}

TEST(ItemSectionsTest, ClearingForgetsTheItemsAndEverySize) {
  ItemSections sections = sectionsOf({2});
  sections.setRelativeSize(2, {5, 5});
  sections.clear();
  EXPECT_TRUE(sections.isEmpty());
  EXPECT_EQ(sections.relativeSize({0, 0}), 0);
  EXPECT_EQ(sections.relativeSize({5, 5}), 0);
}

} // namespace
} // namespace orbel
