// Icons dragged along the circle: to another place, and into a collection.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/support/x11/WindowManagers.h"

using namespace orbel::test;

namespace {

class ReorderingTest : public EditingUnderManagersFixture {};

TEST_P(ReorderingTest, TheThirdIconDraggedBetweenTheFirstAndTheSecondIsStoredThere) {
  const auto& red = install("Red", kRed);
  const auto& green = install("Green", kGreen);
  const auto& blue = install("Blue", kBlue);
  const auto& orange = install("Orange", kOrange);
  const auto& violet = install("Violet", kViolet);
  openWorkWindow();
  startAgent({red.item(), green.item(), blue.item(), orange.item(), violet.item()});
  constexpr int kItems = 6; // the program of the work window comes last
  ASSERT_TRUE(summonAt(kPlace));
  const ScreenRect menu = menuFrame().value();

  const ScreenPoint goal = inFrontOfItem(menu, 1, kItems);
  m_input.beginDrag(itemCenter(menu, 2, kItems), goal);
  EXPECT_TRUE(waitForIconAt(goal, kBlue));
  saveSettledPicture("gap");
  // Nothing is stored before the icon is released.
  EXPECT_EQ(m_session.preferences().menuItems()->at(1), green.item());
  m_input.release(PointerButton::left);
  ASSERT_TRUE(waitForItems({red.item(), blue.item(), green.item(), orange.item(), violet.item()}));
  EXPECT_TRUE(isMenuShown(kPlace));

  // In the middle of the circle nothing is grown, and the icons stand in their new order.
  m_input.movePointer(kPlace);
  const Rgb order[] = {kRed, kBlue, kGreen, kOrange, kViolet};
  for (int index = 0; index < 5; ++index)
    EXPECT_TRUE(waitForIcon(index, kItems, order[index])) << index;
  saveSettledPicture("moved");
  EXPECT_EQ(blue.startCount(), 0);
}

TEST_P(ReorderingTest, AnIconDraggedOntoACollectionIsFoundInside) {
  const auto& red = install("Red", kRed);
  const auto& green = install("Green", kGreen);
  const auto& blue = install("Blue", kBlue);
  const auto& orange = install("Orange", kOrange);
  const auto& violet = install("Violet", kViolet);
  startAgent(
      {red.item(), green.item(), StoredItem::collection("Box", {blue.item()}), orange.item(), violet.item()});
  constexpr int kItems = 5;
  ASSERT_TRUE(summonAt(kPlace));
  const ScreenRect menu = menuFrame().value();

  // Onto an icon that holds nothing: refused, and nothing is marked or moved.
  const ScreenPoint box = targetDuringDrag(menu, 0, 2, kItems);
  m_input.beginDrag(itemCenter(menu, 0, kItems), box, {.steps = 24});
  EXPECT_TRUE(waitForIconAt(box, kRed));
  saveSettledPicture("marked");
  m_input.release(PointerButton::left);
  ASSERT_TRUE(waitForItems({green.item(), StoredItem::collection("Box", {blue.item(), red.item()}),
                            orange.item(), violet.item()}));
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(0, kItems - 1, kGreen));
  saveSettledPicture("dropped");

  ASSERT_TRUE(openCollection(1, kItems - 1));
  const ScreenRect collection = collectionFrame().value();
  m_input.movePointer(collection.center());
  EXPECT_TRUE(waitForIconAt(itemCenter(collection, 0, 2), kBlue));
  EXPECT_TRUE(waitForIconAt(itemCenter(collection, 1, 2), kRed));
  saveSettledPicture("opened");
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, ReorderingTest, editingWindowManagers(), nameOfInstance);

} // namespace
