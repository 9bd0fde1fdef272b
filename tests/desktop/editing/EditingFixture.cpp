#include "tests/desktop/editing/EditingFixture.h"

#include "tests/support/x11/Picture.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iostream>
#include <numbers>

namespace orbel::test {

namespace {

constexpr int kSmallestMenu = 300; // pixels; a context menu is smaller or not square
constexpr int kMenuEntryMargin = 4;

} // namespace

ScreenPoint onCircle(const ScreenRect& menu, double turns, int count) {
  constexpr double kRadiusOfFew = 0.305; // of the menu's side
  constexpr double kRadiusOfMany = 0.34;
  constexpr int kFew = 10;
  const double distance = menu.width * (count > kFew ? kRadiusOfMany : kRadiusOfFew);
  const double angle = turns * 2 * std::numbers::pi;
  return {menu.center().x + static_cast<int>(std::lround(distance * std::sin(angle))),
          menu.center().y - static_cast<int>(std::lround(distance * std::cos(angle)))};
}

ScreenPoint inFrontOfItem(const ScreenRect& menu, int index, int count) {
  return onCircle(menu, static_cast<double>(index) / count, count);
}

ScreenPoint targetDuringDrag(const ScreenRect& menu, int dragged, int target, int count) {
  const int place = target > dragged ? target - 1 : target;
  // As soon as the drag has passed a slot the circle stands turned back by half the difference of the slots.
  const double turn = 0.5 / count - 0.5 / (count - 1);
  return onCircle(menu, turn + (place + 0.5) / (count - 1), count);
}

EditingFixture::EditingFixture(WindowManagerKind windowManager)
    : MenuFixture({.windowManager = windowManager}) {}

const InstalledProgram& EditingFixture::install(const std::string& name, Rgb color) {
  std::string id = name;
  std::transform(id.begin(), id.end(), id.begin(),
                 [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
  m_programs.push_back(std::make_unique<InstalledProgram>(
      installProgram(id, {.title = name, .frame = kCorner, .color = color}, color)));
  return *m_programs.back();
}

void EditingFixture::openWorkWindow() {
  m_workWindow = std::make_unique<TestWindow>(
      m_session, TestWindowOptions{.title = "Work", .frame = {300, 150, 640, 700}, .color = {225, 228, 235}});
  ASSERT_TRUE(waitUntilActive(*m_workWindow));
}

std::optional<xcb_window_t> EditingFixture::collectionWindow() {
  const auto menus = menusBySize();
  return menus.size() == 2 ? std::optional(menus.front()) : std::nullopt;
}

std::optional<ScreenRect> EditingFixture::collectionFrame() {
  const auto window = collectionWindow();
  return window ? m_windows.geometry(*window) : std::nullopt;
}

testing::AssertionResult EditingFixture::waitUntilCollectionShown() {
  return waitFor(
      [this] {
        const auto window = collectionWindow();
        return window && m_windows.opacity(*window) >= 1;
      },
      "the collection's menu is shown");
}

testing::AssertionResult EditingFixture::waitUntilCollectionHidden() {
  return waitFor([this] { return !collectionWindow(); }, "the collection's menu is gone");
}

testing::AssertionResult EditingFixture::areBothMenusShown() {
  const auto main = menuWindow();
  const auto collection = collectionWindow();
  if (!main || !collection) return testing::AssertionFailure() << "there are not two menus";
  const double opacity = m_windows.opacity(*main);
  const double collectionOpacity = m_windows.opacity(*collection);
  if (opacity < 1 || collectionOpacity < 1)
    return testing::AssertionFailure() << "their opacities are " << opacity << " and " << collectionOpacity;
  return testing::AssertionSuccess();
}

testing::AssertionResult EditingFixture::openCollection(int index, int count) {
  clickItem(index, count);
  return waitUntilCollectionShown();
}

std::vector<xcb_window_t> EditingFixture::contextMenus() {
  auto windows = agent().menuWindows();
  std::erase_if(windows, [this](xcb_window_t window) {
    const auto frame = m_windows.geometry(window);
    const bool isMenu = frame && frame->width == frame->height && frame->width >= kSmallestMenu;
    // The titles let every click through.
    return isMenu || m_windows.inputShape(window).empty();
  });
  return windows;
}

testing::AssertionResult EditingFixture::openContextMenu(int index, int count) {
  return openContextMenuAt(itemCenter(menuFrame().value(), index, count));
}

testing::AssertionResult EditingFixture::openContextMenuAt(ScreenPoint place) {
  m_input.clickAt(place, PointerButton::right);
  return waitFor([this] { return !contextMenus().empty(); }, "the context menu is open");
}

testing::AssertionResult EditingFixture::reopenContextMenuAt(ScreenPoint place) {
  // For half a second a right-click is taken for the one that closed the menu before; how late the program
  // has received that one cannot be seen.
  constexpr std::chrono::milliseconds kClosing{600};
  constexpr std::chrono::milliseconds kOpening{2000};
  const auto isClosed = [this] { return contextMenus().empty(); };
  const auto opens = [&] {
    if (!waitFor(isClosed, "it is closed") || !holdsFor(isClosed, kClosing, "it stays closed")) return false;
    m_input.clickAt(place, PointerButton::right);
    return static_cast<bool>(waitFor([&] { return !isClosed(); }, kOpening, "it is open"));
  };
  return waitFor(opens, "the context menu is open again");
}

testing::AssertionResult EditingFixture::waitUntilContextMenuGone() {
  return waitFor([this] { return contextMenus().empty(); }, "the context menu is gone");
}

ScreenPoint EditingFixture::entryPlace(xcb_window_t menu, int index, int count) {
  const ScreenRect frame = m_windows.geometry(menu).value();
  const double height = (frame.height - 2.0 * kMenuEntryMargin) / count;
  return {frame.center().x, frame.y + kMenuEntryMargin + static_cast<int>(height * (index + 0.5))};
}

void EditingFixture::chooseEntry(int index, int count) {
  m_input.clickAt(entryPlace(contextMenus().back(), index, count));
}

std::optional<xcb_window_t> EditingFixture::dialogWindow() {
  for (const xcb_window_t window : m_windows.stackingOrder()) {
    if (m_windows.processOf(window) == agent().pid() && m_windows.isViewable(window)) return window;
  }
  return std::nullopt;
}

testing::AssertionResult EditingFixture::waitUntilDialogShown() {
  return waitForResult(
      [this]() -> testing::AssertionResult {
        const auto dialog = dialogWindow();
        if (!dialog) return testing::AssertionFailure() << "there is no dialog";
        if (m_windows.focusWindow() != dialog) return testing::AssertionFailure() << "it lacks the focus";
        if (const auto menu = menuWindow(); menu && !m_windows.isAbove(*dialog, *menu))
          return testing::AssertionFailure() << "the menu covers it";
        return testing::AssertionSuccess();
      },
      kPatience, "the dialog is in front");
}

testing::AssertionResult EditingFixture::waitUntilDialogGone() {
  return waitFor([this] { return !dialogWindow(); }, "the dialog is gone");
}

testing::AssertionResult EditingFixture::waitUntilWorkWindowHasFocus() {
  return waitFor(
      [this] { return isActive(m_workWindow->id()) && m_windows.focusWindow() == m_workWindow->id(); },
      "the earlier window has the focus again");
}

void EditingFixture::saveSettledPicture(const std::string& name) {
  // A blinking caret is all that may still move, and it does so less often. On a busy machine the picture is
  // taken in the middle of something rather than not at all.
  constexpr std::chrono::milliseconds kQuiet{150};
  constexpr std::chrono::milliseconds kBusy{3000};
  constexpr ScreenRect kAround{kPlace.x - 350, kPlace.y - 350, 700, 700};
  const auto isQuiet = [&] {
    const Picture before = m_session.screen().capture(kAround);
    return static_cast<bool>(
        holdsFor([&] { return m_session.screen().capture(kAround) == before; }, kQuiet, "nothing moves"));
  };
  if (const auto result = waitFor(isQuiet, kBusy, "the screen is at rest"); !result)
    std::cerr << result.message() << '\n';
  savePicture(name);
}

testing::AssertionResult EditingFixture::waitForItems(const std::vector<StoredItem>& expected) {
  return waitForResult(
      [&]() -> testing::AssertionResult {
        const auto stored = m_session.preferences().menuItems();
        if (stored == expected) return testing::AssertionSuccess();
        auto failure = testing::AssertionFailure() << "stored is:";
        for (const StoredItem& item : stored.value_or(std::vector<StoredItem>{}))
          failure << "\n  " << item;
        failure << "\nexpected is:";
        for (const StoredItem& item : expected)
          failure << "\n  " << item;
        return failure;
      },
      kPatience, "the change is stored");
}

testing::AssertionResult EditingFixture::waitForIcon(int index, int count, Rgb color) {
  return waitForIconAt(itemCenter(menuFrame().value(), index, count), color);
}

testing::AssertionResult EditingFixture::waitForIconAt(ScreenPoint place, Rgb color) {
  return waitForResult([&] { return hasColor(place, color); }, kPatience, "the icon is there");
}

} // namespace orbel::test
