// Running programs in the menu: those that are no item of the user's come last, grey, and all have a dot.
#include "tests/desktop/menu/MenuFixture.h"

#include <algorithm>

using namespace orbel::test;

namespace {

constexpr ScreenPoint kPlace{640, 500};
constexpr Rgb kOrange{230, 120, 20};
constexpr Rgb kGreen{30, 160, 60};

bool isGrey(Rgb color) {
  constexpr int kTolerance = 4;
  return std::max({color.red, color.green, color.blue}) - std::min({color.red, color.green, color.blue}) <=
         kTolerance;
}

class RunningProgramsTest : public MenuFixture {
protected:
  // With the pointer in the middle of the menu nothing is grown.
  Rgb iconColor(int index, int count) {
    return m_session.screen().pixel(itemCenter(menuFrame().value(), index, count));
  }
  bool hasDot(int index, int count) { return MenuFixture::hasDot(menuFrame().value(), index, count); }
  testing::AssertionResult waitForIcon(int index, int count, Rgb color) {
    return waitForResult([&] { return hasColor(itemCenter(menuFrame().value(), index, count), color); },
                         kPatience, "the icon is there");
  }
  testing::AssertionResult waitForGreyIcon(int index, int count) {
    return waitForResult(
        [&]() -> testing::AssertionResult {
          const Rgb color = iconColor(index, count);
          if (isGrey(color) && hasDot(index, count)) return testing::AssertionSuccess();
          return testing::AssertionFailure()
                 << color << (hasDot(index, count) ? " with a dot" : " without a dot");
        },
        kPatience, "the icon is grey and has a dot");
  }
  // As if from a menu or a terminal of the desktop.
  std::unique_ptr<ChildProcess> run(const InstalledProgram& program, const TestWindowOptions& window) {
    TestWindowOptions options = window;
    options.className = program.id;
    auto process = m_session.start(program.id + "-errors",
                                   TestWindow::command(options, program.log.path(), program.executable));
    EXPECT_TRUE(
        waitFor([&] { return m_windows.findByClass(program.id).has_value(); }, "the program is open"));
    return process;
  }
};

const TestWindowOptions kLettersWindow{.title = "Letters", .frame = {20, 60, 200, 150}};
const TestWindowOptions kFilmsWindow{.title = "Films", .frame = {20, 300, 200, 150}};

TEST_F(RunningProgramsTest, APinnedProgramHasADotWhileItRunsAndIsListedOnce) {
  const InstalledProgram letters = installProgram("letters", kLettersWindow, kOrange);
  startAgent({StoredItem::core("Mail"), letters.item(), StoredItem::core("Safari")});
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForIcon(1, 3, kOrange));
  EXPECT_FALSE(hasDot(1, 3));
  pressShortcut();
  ASSERT_TRUE(waitUntilMenuHidden());

  const auto process = run(letters, kLettersWindow);
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitFor([&] { return hasDot(1, 3); }, "it has a dot"));
  EXPECT_TRUE(waitForIcon(1, 3, kOrange)); // three items as before, and in colour
  EXPECT_FALSE(hasDot(0, 3));
  savePicture("pinned");
}

TEST_F(RunningProgramsTest, AProgramThatIsNotPinnedComesAfterTheUsersItemsWithAGreyIconAndADot) {
  const InstalledProgram letters = installProgram("letters", kLettersWindow, kOrange);
  const InstalledProgram films = installProgram("films", kFilmsWindow, kGreen);
  const auto process = run(films, kFilmsWindow);
  startAgent({letters.item(), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForGreyIcon(2, 3));
  EXPECT_TRUE(waitForIcon(0, 3, kOrange));
  EXPECT_FALSE(hasDot(0, 3));
  savePicture("not pinned");

  clickItem(2, 3);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(
      waitFor([&] { return isActive(m_windows.findByClass("films").value()); }, "its window is active"));
  EXPECT_EQ(films.startCount(), 1);
  // It is shown, not stored.
  EXPECT_EQ(m_session.preferences().menuItems(), (std::vector{letters.item(), StoredItem::core("Mail")}));
}

TEST_F(RunningProgramsTest, EachOfTwoProcessesOfAProgramComesForwardByItsOwnIcon) {
  const InstalledProgram films = installProgram("films", kFilmsWindow, kGreen);
  const auto start = [&](const std::string& title, const ScreenRect& frame) {
    auto process = m_session.start(title + "-errors",
                                   TestWindow::command({.title = title, .className = "films", .frame = frame},
                                                       films.log.path(), films.executable));
    EXPECT_TRUE(waitFor([&] { return m_windows.findByTitle(title).has_value(); }, "the program is open"));
    return process;
  };
  const auto first = start("First", {20, 60, 200, 150});
  const auto second = start("Second", {20, 300, 200, 150});
  startAgent({StoredItem::core("Mail"), StoredItem::core("Safari")});
  for (const auto& [index, title] : {std::pair(2, "First"), std::pair(3, "Second"), std::pair(2, "First")}) {
    ASSERT_TRUE(summonAt(kPlace));
    EXPECT_TRUE(waitForGreyIcon(index, 4));
    clickItem(index, 4);
    ASSERT_TRUE(waitUntilMenuHidden());
    EXPECT_TRUE(waitForResult([&] { return isActive(m_windows.findByTitle(title).value()); }, kPatience,
                              std::string(title) + " is active"));
  }
  EXPECT_EQ(films.startCount(), 2);
}

TEST_F(RunningProgramsTest, StartingAndEndingAProgramUpdatesTheOpenMenu) {
  const InstalledProgram letters = installProgram("letters", kLettersWindow, kOrange);
  const InstalledProgram films = installProgram("films", kFilmsWindow, kGreen);
  startAgent({letters.item(), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForIcon(0, 2, kOrange));

  const auto process = run(films, kFilmsWindow);
  EXPECT_TRUE(waitForGreyIcon(2, 3));
  EXPECT_TRUE(waitForIcon(0, 3, kOrange));
  m_windows.close(m_windows.findByClass("films").value());
  EXPECT_TRUE(waitForIcon(0, 2, kOrange));
  EXPECT_TRUE(isMenuShown(kPlace));
}

TEST_F(RunningProgramsTest, TheSettingKeepsProgramsOutThatAreNotPinned) {
  const InstalledProgram letters = installProgram("letters", kLettersWindow, kOrange);
  const InstalledProgram films = installProgram("films", kFilmsWindow, kGreen);
  m_session.preferences().setBoolean("showRunningApps", false);
  const auto process = run(films, kFilmsWindow);
  startAgent({letters.item(), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForIcon(0, 2, kOrange));
}

TEST_F(RunningProgramsTest, AWindowThatNamesNoProcessIsAskedOfTheServer) {
  TestWindowOptions options = kFilmsWindow;
  options.hasProcessId = false;
  const InstalledProgram films = installProgram("films", options, kGreen);
  startAgent({StoredItem::core("Mail"), StoredItem::core("Safari")});
  const auto process = run(films, options);
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_TRUE(waitForGreyIcon(2, 3));
  clickItem(2, 3);
  EXPECT_TRUE(
      waitFor([&] { return isActive(m_windows.findByClass("films").value()); }, "its window is active"));
  EXPECT_EQ(films.startCount(), 1);
  ASSERT_TRUE(waitUntilMenuHidden());
  process->terminate();
  EXPECT_TRUE(waitFor([&] { return !m_windows.findByClass("films"); }, "the program has ended"));
  ASSERT_TRUE(summonAt(kPlace));
  EXPECT_FALSE(hasDot(2, 3));
}

} // namespace
