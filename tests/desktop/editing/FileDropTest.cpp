// Files dragged out of another program onto the open menu.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/desktop/editing/FileDragSource.h"
#include "tests/support/x11/WindowManagers.h"

#include "tests/support/base/TextFile.h"

#include <X11/keysym.h>
#include <chrono>
#include <csignal>
#include <unistd.h>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr ScreenPoint kShelf{60, 700}; // where the files lie
constexpr int kKept = 3;
constexpr int kRedIndex = 0;
constexpr int kBoxIndex = 1;

class FileDropTest : public EditingUnderManagersFixture {
protected:
  // Red opens documents; Box holds Green; Orange.
  void SetUp() override {
    m_red = installDefaultApplication("red-viewer", "text/plain", "%F");
    m_green = install("Green", kGreen).item();
    m_orange = install("Orange", kOrange).item();
    m_session.preferences().setBoolean("showRunningApps", false);
    startAgent({m_red->item(), StoredItem::collection("Box", {m_green}), m_orange});
  }

  StoredItem box(std::vector<StoredItem> more = {}) const {
    more.insert(more.begin(), m_green);
    return StoredItem::collection("Box", more);
  }
  // A text file in the home folder.
  std::filesystem::path makeFile(const std::string& name) {
    const auto file = m_session.home() / name;
    writeFile(file, "text");
    return file;
  }
  static StoredItem itemOf(const std::filesystem::path& file) {
    return StoredItem::file(file.filename().string(), file.string());
  }
  // Drags to the place, rests there until the badge is as expected, and releases the button.
  void drop(const FileDragSource& source, ScreenPoint place, const std::string& action,
            const std::string& picture = {}) {
    m_input.beginDrag(source.grip(), place);
    EXPECT_TRUE(source.waitForStatus(action));
    if (!picture.empty()) saveSettledPicture(picture);
    m_input.release(PointerButton::left);
  }
  ScreenPoint item(int index, int count) { return itemCenter(menuFrame().value(), index, count); }
  ScreenPoint inFrontOf(int index, int count) { return inFrontOfItem(menuFrame().value(), index, count); }

  std::optional<InstalledProgram> m_red; // set from SetUp() on
  StoredItem m_green;
  StoredItem m_orange;
};

TEST_P(FileDropTest, FilesLandBetweenIconsInsideACollectionAndAtTheFront) {
  const auto first = makeFile("first letter.txt");
  const auto second = makeFile("100% sure.txt");
  const auto third = makeFile("Übergrößenträger ホーム.txt");
  const auto fourth = makeFile("fourth.txt");
  ASSERT_TRUE(summonAt(kPlace));

  const FileDragSource two(m_session, {FileDragSource::uriOf(first), FileDragSource::uriOf(second)}, kShelf);
  drop(two, inFrontOf(1, kKept), "copy", "gap");
  ASSERT_TRUE(waitForItems({m_red->item(), itemOf(first), itemOf(second), box(), m_orange}));
  EXPECT_TRUE(two.waitUntilFinished("copy"));
  EXPECT_TRUE(isMenuShown(kPlace));

  // The files that came in stand in front of the collection now.
  const FileDragSource intoBox(m_session, {FileDragSource::uriOf(third)}, {220, 700});
  drop(intoBox, item(3, kKept + 2), "link", "marked");
  ASSERT_TRUE(waitForItems({m_red->item(), itemOf(first), itemOf(second), box({itemOf(third)}), m_orange}));
  EXPECT_TRUE(intoBox.waitUntilFinished("link"));

  const FileDragSource toFront(m_session, {FileDragSource::uriOf(fourth)}, {60, 860});
  drop(toFront, kPlace, "copy");
  ASSERT_TRUE(waitForItems(
      {itemOf(fourth), m_red->item(), itemOf(first), itemOf(second), box({itemOf(third)}), m_orange}));
  EXPECT_TRUE(isMenuShown(kPlace));
  m_input.movePointer(kPlace);
  saveSettledPicture("all");
  EXPECT_EQ(m_red->startCount(), 0);
}

TEST_P(FileDropTest, ADocumentDroppedOntoAProgramOpensInItAndHidesTheMenu) {
  const auto letter = makeFile("a letter & 1% more.txt");
  ASSERT_TRUE(summonAt(kPlace));
  const FileDragSource source(m_session, {FileDragSource::uriOf(letter)}, kShelf);
  drop(source, item(kRedIndex, kKept), "link", "marked");
  EXPECT_TRUE(waitFor([&] { return m_red->log.contains("open"); }, "the program has opened it"));
  EXPECT_EQ(m_red->log.linesOf("open"), std::vector{"open " + letter.string()});
  EXPECT_TRUE(waitUntilMenuHidden());
  EXPECT_EQ(m_session.preferences().menuItems(), (std::vector{m_red->item(), box(), m_orange}));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, FileDropTest, editingWindowManagers(), nameOfInstance);

// What does not depend on the window manager.
class FileDropCasesTest : public FileDropTest {};

TEST_P(FileDropCasesTest, ProgramsBecomeApplicationItems) {
  const auto entry = m_session.entries().pathOf("orange");
  const auto image = makeFile("Tool.AppImage");
  std::filesystem::permissions(image, std::filesystem::perms::owner_exec, std::filesystem::perm_options::add);
  const auto bundle = m_session.home() / "Notes.app";
  std::filesystem::create_directory(bundle);
  const auto inside = m_session.home() / "notes.apps";
  std::filesystem::create_directory(inside);
  writeFile(inside / "plain.txt", "text");
  ASSERT_TRUE(summonAt(kPlace));
  const FileDragSource source(m_session,
                              {FileDragSource::uriOf(entry), FileDragSource::uriOf(image),
                               FileDragSource::uriOf(bundle), FileDragSource::uriOf(inside / "plain.txt")},
                              kShelf);
  drop(source, kPlace, "copy");
  EXPECT_TRUE(source.waitUntilFinished("copy"));
  ASSERT_TRUE(waitFor([&] { return m_session.preferences().menuItems()->size() == 7; }, "they are stored"));
  const auto stored = m_session.preferences().menuItems().value();
  const std::filesystem::path paths[] = {entry, image, bundle, inside / "plain.txt"};
  for (std::size_t index = 0; index < 4; ++index) {
    EXPECT_EQ(stored[index].kind, "AppMenuItem") << index;
    EXPECT_EQ(stored[index].path, paths[index]) << index;
  }
  EXPECT_EQ(stored[0].name, "Orange");
}

TEST_P(FileDropCasesTest, UrisOfThisMachineAreFilesAndOthersAreLeftOutWithALineInTheLog) {
  char host[256] = {};
  ASSERT_EQ(::gethostname(host, sizeof host - 1), 0);
  const auto mine = makeFile("mine.txt");
  const auto local = makeFile("local.txt");
  ASSERT_TRUE(summonAt(kPlace));
  const FileDragSource source(m_session,
                              {"# a comment", "file://" + std::string(host) + mine.string(),
                               "file://elsewhere.example/tmp/far.txt", "https://example.org/page.html",
                               "file://localhost" + local.string()},
                              kShelf);
  drop(source, kPlace, "copy");
  ASSERT_TRUE(waitForItems({itemOf(mine), itemOf(local), m_red->item(), box(), m_orange}));
  EXPECT_TRUE(agent().logContains("https://example.org/page.html")) << agent().logText();
  EXPECT_TRUE(agent().logContains("file://elsewhere.example/tmp/far.txt"));

  // With nothing left it is no drag of files: it is refused where it is dropped.
  const FileDragSource remote(m_session, {"https://example.org/other.html"}, {220, 700});
  drop(remote, inFrontOf(1, 5), "none");
  EXPECT_TRUE(waitFor([&] { return remote.log().contains("released-outside"); }, "nobody took it"));
  EXPECT_TRUE(agent().logContains("https://example.org/other.html")) << agent().logText();
  EXPECT_TRUE(holdsFor([&] { return m_session.preferences().menuItems()->size() == 5; }, 300ms, "all stays"));
}

TEST_P(FileDropCasesTest, FiveHundredFilesComeInTheirOrder) {
  std::vector<std::string> uris;
  std::vector<StoredItem> expected{m_red->item()};
  for (int number = 0; number < 500; ++number) {
    const auto file = makeFile("file " + std::to_string(number) + ".txt");
    uris.push_back(FileDragSource::uriOf(file));
    expected.push_back(itemOf(file));
  }
  expected.insert(expected.end(), {box(), m_orange});
  ASSERT_TRUE(summonAt(kPlace));
  const FileDragSource source(m_session, uris, kShelf);
  drop(source, inFrontOf(1, kKept), "copy");
  ASSERT_TRUE(waitForItems(expected));
  EXPECT_TRUE(isMenuShown(kPlace));
  saveSettledPicture("five hundred");
}

TEST_P(FileDropCasesTest, AFileThatVanishesBeforeTheDropEndsLosesNothingElse) {
  const auto stays = makeFile("stays.txt");
  const auto goes = makeFile("goes.txt");
  ASSERT_TRUE(summonAt(kPlace));
  const FileDragSource source(m_session, {FileDragSource::uriOf(goes), FileDragSource::uriOf(stays)}, kShelf);
  m_input.beginDrag(source.grip(), inFrontOf(1, kKept));
  EXPECT_TRUE(source.waitForStatus("copy"));
  std::filesystem::remove(goes);
  m_input.release(PointerButton::left);
  EXPECT_TRUE(source.waitUntilFinished("copy"));
  EXPECT_TRUE(isMenuShown(kPlace));
  EXPECT_TRUE(waitForItems({m_red->item(), itemOf(stays), box(), m_orange}));
}

TEST_P(FileDropCasesTest, ADragWhoseProgramDiesLeavesTheMenuAsItWas) {
  const auto file = makeFile("letter.txt");
  ASSERT_TRUE(summonAt(kPlace));
  FileDragSource source(m_session, {FileDragSource::uriOf(file)}, kShelf);
  m_input.beginDrag(source.grip(), item(kBoxIndex, kKept));
  EXPECT_TRUE(source.waitForStatus("link"));
  source.process().sendSignal(SIGKILL);
  ASSERT_TRUE(source.process().waitForExit(kPatience));
  m_input.release(PointerButton::left);
  EXPECT_TRUE(holdsFor([&] { return isMenuShown(kPlace); }, 200ms, "the menu stays"));
  m_input.movePointer(kPlace);
  // The member in the collection's icon is as bright as it was.
  const ScreenPoint icon = item(kBoxIndex, kKept);
  const int down = static_cast<int>(0.3 * itemSideAtRest(menuFrame().value(), kKept));
  EXPECT_TRUE(waitForIconAt({icon.x, icon.y + down}, kGreen));
  saveSettledPicture("after the death");
  EXPECT_EQ(m_session.preferences().menuItems(), (std::vector{m_red->item(), box(), m_orange}));
  // The next one is taken as if nothing had been.
  const FileDragSource next(m_session, {FileDragSource::uriOf(file)}, {220, 700});
  drop(next, kPlace, "copy");
  EXPECT_TRUE(waitForItems({itemOf(file), m_red->item(), box(), m_orange}));
}

TEST_P(FileDropCasesTest, FilesAreDroppedIntoAnOpenCollectionAndNotIntoTheMenuBelow) {
  const auto file = makeFile("letter.txt");
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openCollection(kBoxIndex, kKept));
  const FileDragSource source(m_session, {FileDragSource::uriOf(file)}, kShelf);
  drop(source, collectionFrame()->center(), "copy");
  ASSERT_TRUE(
      waitForItems({m_red->item(), StoredItem::collection("Box", {itemOf(file), m_green}), m_orange}));
  EXPECT_TRUE(areBothMenusShown());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, FileDropCasesTest,
                         testing::Values(WindowManagerKind::openboxWithPicom), nameOfInstance);

} // namespace
