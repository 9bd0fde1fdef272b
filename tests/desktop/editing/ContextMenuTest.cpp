// What the context menus do to the stored items, and how they and their prompts behave on a real desktop.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include <X11/keysym.h>
#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr auto kSomeFades = 400ms;
// The visible entries of a collection's menu.
constexpr int kCollectionEntries = 3;
constexpr int kRename = 0;
constexpr int kUngroup = 1;
constexpr int kRemove = 2;

class ContextMenuTest : public EditingUnderManagersFixture {
protected:
  // Red, a box of Green and Blue, Orange, and the program of the work window.
  static constexpr int kItems = 4;
  static constexpr int kBox = 1;

  void SetUp() override {
    m_red = install("Red", kRed).item();
    m_green = install("Green", kGreen).item();
    m_blue = install("Blue", kBlue).item();
    m_orange = install("Orange", kOrange).item();
    openWorkWindow();
    startAgent({m_red, StoredItem::collection("Box", {m_green, m_blue}), m_orange});
    ASSERT_TRUE(summonAt(kPlace));
  }

  StoredItem box(const std::string& name) const { return StoredItem::collection(name, {m_green, m_blue}); }

  StoredItem m_red;
  StoredItem m_green;
  StoredItem m_blue;
  StoredItem m_orange;
};

TEST_P(ContextMenuTest, ACollectionIsRenamedInAPromptThatStandsAboveTheMenuAndHasTheKeys) {
  ASSERT_TRUE(openContextMenu(kBox, kItems));
  saveSettledPicture("menu");
  EXPECT_EQ(m_windows.focusWindow(), workWindow().id());
  chooseEntry(kRename, kCollectionEntries);
  ASSERT_TRUE(waitUntilDialogShown());
  saveSettledPicture("prompt");
  // Neither a click beside everything nor the shortcut hides the menu under the prompt.
  m_input.clickAt({20, 1000});
  m_input.movePointer(itemCenter(menuFrame().value(), 0, kItems));
  pressShortcut();
  EXPECT_TRUE(holdsFor([&] { return menuWindow() && dialogWindow(); }, kSomeFades, "both stay"));
  ASSERT_TRUE(waitUntilDialogShown());
  m_input.typeText("Games & more");
  saveSettledPicture("typed");
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitUntilDialogGone());
  ASSERT_TRUE(waitForItems({m_red, box("Games & more"), m_orange}));
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());
  EXPECT_TRUE(isMenuShown(kPlace));
  EXPECT_FALSE(workWindow().log().contains("key-press 0x47")) << "a typed letter";
  saveSettledPicture("renamed");
}

TEST_P(ContextMenuTest, EscapeLeavesThePromptAloneAndGivesTheFocusBackToTheEarlierWindow) {
  ASSERT_TRUE(openContextMenu(kBox, kItems));
  chooseEntry(kRename, kCollectionEntries);
  ASSERT_TRUE(waitUntilDialogShown());
  m_input.typeText("Never");
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilDialogGone());
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());
  EXPECT_TRUE(holdsFor([&] { return isMenuShown(kPlace); }, kSomeFades, "the menu stays"));
  EXPECT_EQ(m_session.preferences().menuItems()->at(1).name, "Box");
  // The next one is the menu's own again.
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());
  EXPECT_FALSE(workWindow().log().contains("key-press 0xff1b"));
}

TEST_P(ContextMenuTest, ANewCollectionStandsWhereTheClickWasAndPastTheUsersItemsAtTheEnd) {
  const ScreenRect menu = menuFrame().value();
  // Between the icons, in Orange's direction.
  ASSERT_TRUE(openContextMenuAt(onCircle(menu, 2.02 / kItems, kItems)));
  saveSettledPicture("menu");
  chooseEntry(0, 1);
  ASSERT_TRUE(waitUntilDialogShown());
  saveSettledPicture("prompt");
  m_input.typeText("Second");
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForItems({m_red, box("Box"), StoredItem::collection("Second", {}), m_orange}));
  EXPECT_TRUE(waitUntilWorkWindowHasFocus());

  // In the direction of the program that runs and is not the user's item.
  ASSERT_TRUE(openContextMenuAt(onCircle(menu, 4.02 / (kItems + 1), kItems + 1)));
  chooseEntry(0, 1);
  ASSERT_TRUE(waitUntilDialogShown());
  m_input.typeText("Last");
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForItems({m_red, box("Box"), StoredItem::collection("Second", {}), m_orange,
                            StoredItem::collection("Last", {})}));
  ASSERT_TRUE(waitUntilDialogGone());
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(0, kItems + 2, kRed));
  saveSettledPicture("two more");
}

TEST_P(ContextMenuTest, UngroupingAndRemovingAreStoredAtOnce) {
  ASSERT_TRUE(openContextMenu(kBox, kItems));
  // The entry reaches out of the menu's square; a click on it there is no click elsewhere.
  const auto entries = m_windows.geometry(contextMenus().back()).value();
  constexpr int kInset = 8;
  const ScreenPoint ungroup{entries.x + entries.width - kInset,
                            entryPlace(contextMenus().back(), kUngroup, kCollectionEntries).y};
  ASSERT_FALSE(menuFrame()->contains(ungroup));
  m_input.clickAt(ungroup);
  ASSERT_TRUE(waitForItems({m_red, m_green, m_blue, m_orange}));
  ASSERT_TRUE(waitUntilContextMenuGone());
  EXPECT_TRUE(holdsFor([&] { return isMenuShown(kPlace); }, kSomeFades, "the menu stays"));
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(1, kItems + 1, kGreen));
  EXPECT_TRUE(waitForIcon(2, kItems + 1, kBlue));
  saveSettledPicture("ungrouped");

  ASSERT_TRUE(reopenContextMenuAt(itemCenter(menuFrame().value(), 0, kItems + 1)));
  chooseEntry(0, 1);
  ASSERT_TRUE(waitForItems({m_green, m_blue, m_orange}));
  EXPECT_TRUE(isMenuShown(kPlace));
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(0, kItems, kGreen));
  saveSettledPicture("removed");
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, ContextMenuTest, editingWindowManagers(), nameOfInstance);

} // namespace
