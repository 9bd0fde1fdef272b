// A menu of coloured programs that a person rearranges: what the hand does on the circle and in the menus and
// prompts that come up, and what the preferences file holds afterwards.
//
// Places are pixels of the screen, y down. "Icon i of n" counts clockwise from twelve o'clock.
#pragma once

#include "tests/desktop/menu/MenuFixture.h"

#include <string>
#include <vector>

namespace orbel::test {

inline constexpr ScreenPoint kPlace{640, 500};
// Beside the menu, where the windows of started programs do not cover it.
inline constexpr ScreenRect kCorner{20, 60, 200, 150};

inline constexpr Rgb kRed{200, 40, 40};
inline constexpr Rgb kGreen{40, 160, 60};
inline constexpr Rgb kBlue{40, 80, 220};
inline constexpr Rgb kOrange{240, 140, 20};
inline constexpr Rgb kViolet{140, 60, 190};

// The direction `turns` of the way around the circle, on which the icons' centres lie.
ScreenPoint onCircle(const ScreenRect& menu, double turns, int count);
// Between icon `index - 1` and icon `index`.
ScreenPoint inFrontOfItem(const ScreenRect& menu, int index, int count);
// Icon `target` as it stands while icon `dragged` is out of the circle, which closes up meanwhile.
ScreenPoint targetDuringDrag(const ScreenRect& menu, int dragged, int target, int count);

class EditingFixture : public MenuFixture {
protected:
  explicit EditingFixture(WindowManagerKind windowManager = WindowManagerKind::openboxWithPicom);

  // "Red", "Green", ...: each an icon of that colour, each with a log of its starts.
  const InstalledProgram& install(const std::string& name, Rgb color);
  // A plain window under the pointer's place that has the focus, as a person works in one.
  void openWorkWindow();
  const TestWindow& workWindow() const { return *m_workWindow; }

  // The menus' windows: squares. The collection's lies over the other.
  std::optional<xcb_window_t> collectionWindow();
  std::optional<ScreenRect> collectionFrame();
  testing::AssertionResult waitUntilCollectionShown();
  testing::AssertionResult waitUntilCollectionHidden();
  testing::AssertionResult areBothMenusShown();
  // Opens the collection by a click on its icon and waits for its menu.
  testing::AssertionResult openCollection(int index, int count);

  // Pop-up menus of the program, the first one opened first.
  std::vector<xcb_window_t> contextMenus();
  // A right-click on icon `index`; waits for the menu.
  testing::AssertionResult openContextMenu(int index, int count);
  testing::AssertionResult openContextMenuAt(ScreenPoint place);
  // Soon after another one, when a right-click may still be taken for closing that one.
  testing::AssertionResult reopenContextMenuAt(ScreenPoint place);
  testing::AssertionResult waitUntilContextMenuGone();
  // Clicks the entry `index` of the `count` visible ones of equal height in the latest context menu.
  void chooseEntry(int index, int count);
  ScreenPoint entryPlace(xcb_window_t menu, int index, int count);

  // A prompt or a panel of the program that stands above the menu and has the focus.
  testing::AssertionResult waitUntilDialogShown();
  testing::AssertionResult waitUntilDialogGone();
  std::optional<xcb_window_t> dialogWindow();
  testing::AssertionResult waitUntilWorkWindowHasFocus();

  // Once nothing moves any more: fades and animations have ended.
  void saveSettledPicture(const std::string& name);

  testing::AssertionResult waitForItems(const std::vector<StoredItem>& expected);
  testing::AssertionResult waitForIcon(int index, int count, Rgb color);
  testing::AssertionResult waitForIconAt(ScreenPoint place, Rgb color);

private:
  std::vector<std::unique_ptr<InstalledProgram>> m_programs;
  std::unique_ptr<TestWindow> m_workWindow;
};

class EditingUnderManagersFixture : public EditingFixture,
                                    public testing::WithParamInterface<WindowManagerKind> {
protected:
  EditingUnderManagersFixture() : EditingFixture(GetParam()) {}
};

// The two whose stacking of dialogs differs; the third is tested where it matters.
inline auto editingWindowManagers() {
  return testing::Values(WindowManagerKind::openboxWithPicom, WindowManagerKind::xfwm4Compositing);
}

} // namespace orbel::test
