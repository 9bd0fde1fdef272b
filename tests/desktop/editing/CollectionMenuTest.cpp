// A collection's menu over the main one: what its members and its button do, and what hides which of the two.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include <X11/keysym.h>
#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr auto kSomeFades = 400ms;

class CollectionMenuTest : public EditingUnderManagersFixture {
protected:
  // Red, a box of Green and Blue, Orange, and the program of the work window.
  static constexpr int kItems = 4;
  static constexpr int kBox = 1;

  void SetUp() override {
    const auto& red = install("Red", kRed);
    m_green = &install("Green", kGreen);
    m_blue = &install("Blue", kBlue);
    const auto& orange = install("Orange", kOrange);
    m_red = &red;
    m_orange = &orange;
    openWorkWindow();
    startAgent({red.item(), StoredItem::collection("Box", {m_green->item(), m_blue->item()}), orange.item()});
    ASSERT_TRUE(summonAt(kPlace));
    ASSERT_TRUE(openCollection(kBox, kItems));
  }

  testing::AssertionResult collectionStays() {
    return holdsFor([this] { return areBothMenusShown(); }, kSomeFades, "both menus stay");
  }

  const InstalledProgram* m_red = nullptr;
  const InstalledProgram* m_green = nullptr;
  const InstalledProgram* m_blue = nullptr;
  const InstalledProgram* m_orange = nullptr;
};

TEST_P(CollectionMenuTest, OpensASmallerMenuAtThePointerAndAMemberStartsAndHidesBoth) {
  const ScreenRect frame = collectionFrame().value();
  EXPECT_EQ(frame.width, 300);
  EXPECT_EQ(frame.center(), itemCenter(menuFrame().value(), kBox, kItems));
  EXPECT_TRUE(m_windows.isAbove(*collectionWindow(), *menuWindow()));
  EXPECT_EQ(m_windows.focusWindow(), workWindow().id());

  m_input.clickAt(itemCenter(frame, 1, 2));
  EXPECT_TRUE(waitFor([&] { return m_blue->startCount() == 1; }, "the member has started"));
  EXPECT_TRUE(waitFor([&] { return agent().menuWindows().empty(); }, "both menus are gone"));
  EXPECT_TRUE(waitFor([&] { return isActive(m_windows.findByClass("blue").value()); }, "it is in front"));
  saveSettledPicture("started");
  EXPECT_EQ(m_green->startCount(), 0);
}

TEST_P(CollectionMenuTest, ItsButtonClosesItAtOnceAndTheMainMenuGoesOn) {
  // Without the guard of the main menu's button, in whose place this one need not be.
  m_input.clickAt(collectionFrame().value().center());
  ASSERT_TRUE(waitUntilCollectionHidden());
  EXPECT_TRUE(isMenuShown(kPlace));
  clickItem(0, kItems);
  EXPECT_TRUE(waitFor([&] { return m_red->startCount() == 1; }, "the main menu takes clicks again"));
  EXPECT_TRUE(waitUntilMenuHidden());
}

TEST_P(CollectionMenuTest, TheMainMenuTakesNoClicksAndTheShortcutHidesNothingMeanwhile) {
  const ScreenRect menu = menuFrame().value();
  const ScreenPoint orange = itemCenter(menu, 2, kItems);
  ASSERT_FALSE(collectionFrame()->contains(orange));
  m_input.clickAt(orange);
  EXPECT_TRUE(collectionStays());
  EXPECT_EQ(m_orange->startCount(), 0);
  m_input.click(PointerButton::right);
  EXPECT_TRUE(collectionStays());
  EXPECT_TRUE(contextMenus().empty());
  pressShortcut();
  EXPECT_TRUE(collectionStays());
  saveSettledPicture("both");

  // Escape takes one menu away at a time.
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilCollectionHidden());
  EXPECT_TRUE(isMenuShown(kPlace));
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());
}

TEST_P(CollectionMenuTest, AClickBesideBothHidesBothAndGivesTheFocusBack) {
  const ScreenPoint beside{workWindow().frame().x + 40, workWindow().frame().y + 40};
  m_input.clickAt(beside);
  EXPECT_TRUE(waitFor([&] { return agent().menuWindows().empty(); }, "both menus are gone"));
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());
}

// The release hides the menus, and the move counts all the same.
TEST_P(CollectionMenuTest, AMoveThatEndsBesideBothMenusIsStored) {
  const ScreenRect frame = collectionFrame().value();
  // Behind the other, but farther out.
  const ScreenPoint place = onCircle(frame, 0.6, 2);
  const ScreenPoint beside{frame.center().x + (place.x - frame.center().x) * 5 / 2,
                           frame.center().y + (place.y - frame.center().y) * 5 / 2};
  ASSERT_FALSE(frame.contains(beside) || menuFrame()->contains(beside));
  m_input.drag(itemCenter(frame, 0, 2), beside);
  EXPECT_TRUE(waitFor([&] { return agent().menuWindows().empty(); }, "both menus are gone"));
  EXPECT_TRUE(waitForItems(
      {m_red->item(), StoredItem::collection("Box", {m_blue->item(), m_green->item()}), m_orange->item()}));
}

TEST_P(CollectionMenuTest, ItsMembersAreRearrangedRemovedAndStoredAtOnce) {
  const ScreenRect frame = collectionFrame().value();
  // Around the circle to the place behind the other.
  m_input.drag(itemCenter(frame, 0, 2), onCircle(frame, 0.6, 2));
  ASSERT_TRUE(waitForItems(
      {m_red->item(), StoredItem::collection("Box", {m_blue->item(), m_green->item()}), m_orange->item()}));
  EXPECT_TRUE(waitForIconAt(itemCenter(frame, 0, 2), kBlue));

  // The menu of a member that does not run has one entry.
  ASSERT_TRUE(openContextMenuAt(itemCenter(frame, 0, 2)));
  saveSettledPicture("member's menu");
  chooseEntry(0, 1);
  ASSERT_TRUE(
      waitForItems({m_red->item(), StoredItem::collection("Box", {m_green->item()}), m_orange->item()}));
  ASSERT_TRUE(waitUntilContextMenuGone());
  EXPECT_TRUE(waitForIconAt(itemCenter(frame, 0, 1), kGreen));
  EXPECT_TRUE(collectionStays());

  ASSERT_TRUE(reopenContextMenuAt(itemCenter(frame, 0, 1)));
  chooseEntry(0, 1);
  ASSERT_TRUE(waitForItems({m_red->item(), StoredItem::collection("Box", {}), m_orange->item()}));
  EXPECT_TRUE(collectionStays());
  saveSettledPicture("empty");
  m_input.clickAt(frame.center());
  ASSERT_TRUE(waitUntilCollectionHidden());
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(0, kItems, kRed));
  saveSettledPicture("back");
}

TEST_P(CollectionMenuTest, AMemberHasADotWhileItRuns) {
  const ScreenRect frame = collectionFrame().value();
  EXPECT_FALSE(hasDot(frame, 0, 2));
  const auto process = m_session.start(
      "green-errors",
      TestWindow::command({.title = "Green", .className = m_green->id, .frame = kCorner, .color = kGreen},
                          m_green->log.path(), m_green->executable));
  EXPECT_TRUE(waitFor([&] { return hasDot(frame, 0, 2); }, "it has a dot"));
  EXPECT_FALSE(hasDot(frame, 1, 2));
  saveSettledPicture("running");
  m_windows.close(m_windows.findByClass(m_green->id).value());
  EXPECT_TRUE(waitFor([&] { return !hasDot(frame, 0, 2); }, "the dot is gone"));
  EXPECT_TRUE(collectionStays());
}

// A moment later the main menu is to reload, which must not outlive the desktop's connection.
TEST_P(CollectionMenuTest, QuittingRightAfterItWasClosedIsInOrder) {
  m_input.clickAt(collectionFrame().value().center());
  ASSERT_TRUE(waitUntilCollectionHidden());
  quitAgent();
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, CollectionMenuTest, editingWindowManagers(), nameOfInstance);

} // namespace
