// What a click on an item of each kind opens.
#include "tests/desktop/menu/FakeFileManager.h"
#include "tests/desktop/menu/MenuFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include "tests/support/base/TextFile.h"

#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr ScreenPoint kPlace{640, 500};
constexpr ScreenRect kCorner{20, 60, 200, 150}; // away from the menu
constexpr auto kStartOfAProgram = 500ms;
constexpr Rgb kOrange{230, 120, 20};

class ProgramItemTest : public MenuFixture, public testing::WithParamInterface<WindowManagerKind> {
protected:
  ProgramItemTest() : MenuFixture({.windowManager = GetParam()}) {}
};

TEST_P(ProgramItemTest, AClickStartsTheProgramAndASecondOneBringsItsWindowForward) {
  constexpr int kItems = 4;
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  startAgent({StoredItem::core("Mail"), letters.item(), StoredItem::core("Finder")});
  // It runs, too, and so is the fourth.
  const TestWindow cover(m_session, {.title = "Cover", .frame = {20, 60, 250, 250}, .color = {40, 80, 220}});
  ASSERT_TRUE(waitUntilActive(cover));

  ASSERT_TRUE(summonAt(kPlace));
  pointAtItem(1, kItems);
  EXPECT_TRUE(waitFor([&] { return hasColor(itemCenter(menuFrame().value(), 1, kItems), kOrange); },
                      "its icon is seen"));
  // The menu and the title.
  EXPECT_TRUE(waitFor([&] { return agent().menuWindows().size() == 2; }, "its title is seen"));
  savePicture("pointed at");
  m_input.click();
  EXPECT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  ASSERT_TRUE(waitUntilMenuHidden());
  const auto window = m_windows.findByClass("letters");
  ASSERT_TRUE(window);
  EXPECT_EQ(
      std::filesystem::read_symlink("/proc/" + std::to_string(m_windows.processOf(*window).value()) + "/exe"),
      letters.executable);
  // What the user has just asked for comes in front, not the window before it.
  EXPECT_TRUE(waitFor([&] { return isActive(*window); }, "its window is active"));
  EXPECT_TRUE(holdsFor([&] { return isActive(*window); }, 300ms, "it stays so"));

  m_windows.activate(cover.id());
  ASSERT_TRUE(waitUntilActive(cover));
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(1, kItems);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isActive(*window) && m_windows.isAbove(*window, cover.id()); },
                      "its window is in front"));
  EXPECT_TRUE(
      holdsFor([&] { return letters.startCount() == 1; }, kStartOfAProgram, "no second one is started"));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, ProgramItemTest, allWindowManagers(), nameOfInstance);

class OpeningTest : public MenuFixture {};

TEST_F(OpeningTest, AStartedProgramLeadsASessionOfItsOwnAndInheritsNothingPrivate) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  startAgent({letters.item()});
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 1);
  ASSERT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  const pid_t process = m_windows.processOf(m_windows.findByClass("letters").value()).value();
  EXPECT_EQ(::getsid(process), process);
  const std::string environment = readFile("/proc/" + std::to_string(process) + "/environ");
  EXPECT_EQ(environment.find("QT_QPA_PLATFORM"), std::string::npos);
  EXPECT_NE(environment.find("DESKTOP_STARTUP_ID="), std::string::npos);
  // It outlives the menu's program.
  quitAgent();
  EXPECT_TRUE(
      holdsFor([&] { return m_windows.findByClass("letters").has_value(); }, 200ms, "the program stays"));
}

TEST_F(OpeningTest, AFileOpensInTheDefaultApplicationOfItsType) {
  installDefaultApplication("first-viewer", "text/plain", "%F");
  const InstalledProgram viewer = installDefaultApplication("second-viewer", "text/plain", "%F");
  const auto letter = m_session.home() / "a letter.txt";
  writeFile(letter, "Dear reader,\n");
  startAgent({StoredItem::file("a letter.txt", letter.string()), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 2);
  EXPECT_TRUE(waitFor([&] { return viewer.startCount() == 1; }, "the viewer has started"));
  EXPECT_EQ(viewer.log.linesOf("open"), std::vector{"open " + letter.string()});
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_FALSE(m_windows.findByClass("first-viewer"));
}

TEST_F(OpeningTest, AFolderShowsInTheFileManagerThatTheBusNames) {
  const InstalledProgram handler = installDefaultApplication("folder-window", "inode/directory", "%F");
  FakeFileManager fileManager(m_session.bus());
  const auto folder = m_session.home() / "Papers and more";
  std::filesystem::create_directory(folder);
  startAgent({StoredItem::file("Papers", folder.string())});
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 1);
  EXPECT_TRUE(waitFor([&] { return !fileManager.requests().empty(); }, "the file manager is asked"));
  EXPECT_EQ(
      fileManager.requests(),
      std::vector<std::string>{"ShowFolders file://" + m_session.home().string() + "/Papers%20and%20more"});
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_FALSE(handler.log.contains("open"));
}

TEST_F(OpeningTest, AFolderOpensWithTheFolderHandlerWhereTheBusKnowsNoFileManager) {
  const InstalledProgram handler = installDefaultApplication("folder-window", "inode/directory", "%F");
  const auto folder = m_session.home() / "Papers";
  std::filesystem::create_directory(folder);
  startAgent({StoredItem::file("Papers", folder.string())});
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 1);
  EXPECT_TRUE(waitFor([&] { return handler.startCount() == 1; }, "the folder handler has started"));
  EXPECT_EQ(handler.log.linesOf("open"), std::vector{"open " + folder.string()});
}

TEST_F(OpeningTest, BuiltInNamesOpenWhatPlaysTheirRole) {
  const InstalledProgram browser = installDefaultApplication("browser", "x-scheme-handler/http", "%U");
  const InstalledProgram post = installDefaultApplication("post", "x-scheme-handler/mailto", "%u");
  startAgent({StoredItem::core("Safari"), StoredItem::core("Mail")});
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 2);
  EXPECT_TRUE(waitFor([&] { return browser.startCount() == 1; }, "the browser has started"));
  ASSERT_TRUE(waitUntilMenuHidden());
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(1, 2);
  EXPECT_TRUE(waitFor([&] { return post.startCount() == 1; }, "the mail program has started"));
  ASSERT_TRUE(waitUntilMenuHidden());
  // Both run now, each as the item of its role and not once more as a running program.
  ASSERT_TRUE(summonAt(kPlace));
  clickItem(0, 2);
  EXPECT_TRUE(
      waitFor([&] { return isActive(m_windows.findByClass("browser").value()); }, "the browser is active"));
  EXPECT_TRUE(
      holdsFor([&] { return browser.startCount() == 1; }, kStartOfAProgram, "no second one is started"));
}

TEST_F(OpeningTest, SwiftModeOpensAnItemAsSoonAsThePointerReachesItsIcon) {
  const InstalledProgram letters = installProgram("letters", {.title = "Letters", .frame = kCorner}, kOrange);
  m_session.preferences().setBoolean("swiftMode", true);
  startAgent(
      {letters.item(), StoredItem::core("Mail"), StoredItem::core("Safari"), StoredItem::core("Finder")});
  ASSERT_TRUE(summonAt(kPlace));
  // In its direction, but short of the icon, nothing opens.
  m_input.glidePointer({kPlace.x + 20, kPlace.y - 20}, 4);
  EXPECT_TRUE(holdsFor([&] { return isMenuShown(kPlace); }, 200ms, "the menu stays"));
  m_input.glidePointer(itemCenter(menuFrame().value(), 0, 4), 6);
  EXPECT_TRUE(waitFor([&] { return letters.startCount() == 1; }, "the program has started"));
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(holdsFor([&] { return letters.startCount() == 1; }, kStartOfAProgram, "it is started once"));
}

} // namespace
