// Entries that ask for more: another application for a file, and the panel in which a program is kept; and
// the ways to open and to close a context menu.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include "tests/support/base/TextFile.h"

#include <X11/keysym.h>
#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr auto kSomeFades = 400ms;

class EntriesTest : public EditingUnderManagersFixture {
protected:
  // Presses the key until the menu shows it: before it has the keyboard, the program in front gets the key.
  testing::AssertionResult pressUntilSeen(xcb_keysym_t key, int workWindowKeys) {
    const Picture before = m_session.screen().capture();
    m_input.typeKey(key);
    return waitFor(
        [&] {
          if (workWindow().log().count("key-release") > workWindowKeys) {
            workWindowKeys = workWindow().log().count("key-release");
            m_input.typeKey(key);
          }
          return m_session.screen().capture() != before;
        },
        "the key is seen");
  }
};

TEST_P(EntriesTest, AFileOpensWithAnotherApplicationChosenByKeyboard) {
  installDefaultApplication("viewer", "text/plain", "%F");
  const InstalledProgram editor = installDefaultApplication("editor", "text/plain", "%F");
  const InstalledProgram writer = installDefaultApplication("writer", "text/plain", "%F");
  m_session.entries().setDefault("text/plain", "viewer");
  const auto letter = m_session.home() / "letter.txt";
  writeFile(letter, "text");
  openWorkWindow();
  m_session.preferences().setBoolean("showRunningApps", false);
  startAgent({StoredItem::file("letter.txt", letter.string()), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openContextMenu(0, 2));
  // Into the submenu, past the default application that stands alone, to the last of the others.
  ASSERT_TRUE(pressUntilSeen(XK_Down, workWindow().log().count("key-release")));
  m_input.typeKey(XK_Right);
  ASSERT_TRUE(waitFor([&] { return contextMenus().size() == 2; }, "the applications are listed"));
  m_input.typeKey(XK_Down);
  m_input.typeKey(XK_Down);
  saveSettledPicture("applications");
  m_input.typeKey(XK_Return);
  EXPECT_TRUE(waitFor([&] { return writer.log.contains("open"); }, "the chosen application opens it"));
  EXPECT_EQ(writer.log.linesOf("open"), std::vector{"open " + letter.string()});
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_EQ(editor.startCount(), 0);
}

TEST_P(EntriesTest, ARunningProgramIsKeptThroughThePanelThatOffersItAlone) {
  const auto& red = install("Red", kRed);
  const auto& green = install("Green", kGreen);
  const auto& blue = install("Blue", kBlue);
  TestWindowOptions window{.title = "Green", .frame = kCorner, .color = kGreen};
  window.className = green.id;
  const auto process =
      m_session.start("green-errors", TestWindow::command(window, green.log.path(), green.executable));
  ASSERT_TRUE(waitFor([&] { return m_windows.findByClass("green").has_value(); }, "the program is open"));
  startAgent({red.item(), blue.item()});
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openContextMenu(2, 3));
  chooseEntry(0, 1);
  ASSERT_TRUE(waitUntilDialogShown());
  saveSettledPicture("panel");
  // A cancelled panel changes nothing.
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilDialogGone());
  EXPECT_TRUE(waitUntilMenuShown(kPlace));
  EXPECT_EQ(m_session.preferences().menuItems(), (std::vector{red.item(), blue.item()}));

  ASSERT_TRUE(reopenContextMenuAt(itemCenter(menuFrame().value(), 2, 3)));
  chooseEntry(0, 1);
  ASSERT_TRUE(waitUntilDialogShown());
  // It is chosen already.
  m_input.typeKey(XK_Return);
  ASSERT_TRUE(waitForItems({red.item(), blue.item(), green.item()}));
  ASSERT_TRUE(waitUntilDialogGone());
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(2, 3, kGreen)); // and no longer grey
  saveSettledPicture("kept");
}

TEST_P(EntriesTest, AControlClickOpensTheContextMenuAndEscapeAndASecondClickCloseItAlone) {
  const auto& red = install("Red", kRed);
  const auto& green = install("Green", kGreen);
  m_session.preferences().setBoolean("showRunningApps", false);
  openWorkWindow();
  startAgent({StoredItem::core("Finder"), red.item(), green.item()});
  constexpr int kItems = 3;
  ASSERT_TRUE(summonAt(kPlace));
  pointAtItem(1, kItems);
  m_input.pressKey(XK_Control_L);
  m_input.click();
  m_input.releaseKey(XK_Control_L);
  ASSERT_TRUE(waitFor([&] { return !contextMenus().empty(); }, "the context menu is open"));
  EXPECT_EQ(red.startCount(), 0);
  const auto stays = [&] {
    return holdsFor([&] { return isMenuShown(kPlace) && contextMenus().empty(); }, kSomeFades,
                    "the menu stays alone");
  };
  ASSERT_TRUE(pressUntilSeen(XK_Down, workWindow().log().count("key-release")));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilContextMenuGone());
  EXPECT_TRUE(stays());

  // A press beside it closes it and is no click on the icon under it.
  ASSERT_TRUE(reopenContextMenuAt(itemCenter(menuFrame().value(), 1, kItems)));
  m_input.clickAt(itemCenter(menuFrame().value(), 2, kItems));
  ASSERT_TRUE(waitUntilContextMenuGone());
  EXPECT_TRUE(stays());
  EXPECT_EQ(green.startCount(), 0);

  // The Finder's item has none.
  m_input.clickAt(itemCenter(menuFrame().value(), 0, kItems), PointerButton::right);
  EXPECT_TRUE(stays());
}

TEST_P(EntriesTest, AControlPressThatIsHeldUntilItsMenuIsOpenLeavesTheMenuAsAnyOtherDoes) {
  const auto& red = install("Red", kRed);
  const auto& green = install("Green", kGreen);
  m_session.preferences().setBoolean("showRunningApps", false);
  openWorkWindow();
  startAgent({StoredItem::core("Finder"), red.item(), green.item()});
  constexpr int kItems = 3;
  ASSERT_TRUE(summonAt(kPlace));
  pointAtItem(1, kItems);
  m_input.pressKey(XK_Control_L);
  m_input.press(PointerButton::left);
  ASSERT_TRUE(waitFor([&] { return !contextMenus().empty(); }, "the context menu is open"));
  // Qt's menu has grabbed the pointer by the time it receives the keys, and gets the release.
  m_input.releaseKey(XK_Control_L);
  ASSERT_TRUE(pressUntilSeen(XK_Down, workWindow().log().count("key-release")));
  m_input.release(PointerButton::left);
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilContextMenuGone());

  // Another item grows under the pointer as ever, and beside the menu all is at rest and without a title.
  const auto titles = [&] { return agent().menuWindows().size() - 1; };
  m_input.movePointer(itemCenter(menuFrame().value(), 2, kItems));
  EXPECT_TRUE(waitFor([&] { return titles() == 1; }, "the title of the item under the pointer is open"));
  const ScreenRect menu = menuFrame().value();
  m_input.movePointer({menu.x - 60, menu.y - 60});
  EXPECT_TRUE(waitFor([&] { return titles() == 0; }, "no title is left"));
  EXPECT_TRUE(isMenuShown(kPlace));
  EXPECT_EQ(red.startCount() + green.startCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, EntriesTest, editingWindowManagers(), nameOfInstance);

} // namespace
