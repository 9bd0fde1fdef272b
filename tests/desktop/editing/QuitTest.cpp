// "Quit Application", from the context menu through the companion to the program.
#include "tests/desktop/editing/EditingFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr auto kSomeFades = 400ms;

class QuitTest : public EditingUnderManagersFixture {
protected:
  void installCompanion() {
    m_session.entries().install({.id = "org.orbelmenu.Toolkit",
                                 .name = "Orbel Menu Toolkit",
                                 .command = {ORBELMENU_TOOLKIT, "%u"},
                                 .mimeTypes = {"x-scheme-handler/orbelmenu-toolkit"},
                                 .further = {{"NoDisplay", "true"}}});
  }
  // The menu of an unpinned running program, which is the last of two.
  testing::AssertionResult openMenuOfRunningProgram() { return openContextMenu(1, 2); }
  int entryHeight() {
    const auto frame = m_windows.geometry(contextMenus().back());
    return frame ? frame->height : 0;
  }
};

TEST_P(QuitTest, APlainProgramIsClosedAndTheMenuStaysWithoutIt) {
  installCompanion();
  const auto& red = install("Red", kRed);
  startAgent({red.item()});
  openWorkWindow();
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openMenuOfRunningProgram());
  saveSettledPicture("menu");
  chooseEntry(0, 2);
  EXPECT_TRUE(waitFor([&] { return !m_windows.findByTitle("Work"); }, "the program has closed"));
  EXPECT_TRUE(workWindow().log().contains("delete-window"));
  m_input.movePointer(kPlace);
  EXPECT_TRUE(waitForIcon(0, 1, kRed));
  EXPECT_TRUE(isMenuShown(kPlace));
}

TEST_P(QuitTest, AProgramWithAnUnsavedDocumentGetsToAsk) {
  installCompanion();
  const auto& red = install("Red", kRed);
  startAgent({red.item()});
  TestWindow editor(m_session, {.title = "Editor", .frame = {300, 150, 640, 700}, .asksBeforeClosing = true});
  ASSERT_TRUE(waitUntilActive(editor));
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openMenuOfRunningProgram());
  chooseEntry(0, 2);
  EXPECT_TRUE(waitFor([&] { return m_windows.findByTitle("Save the changes?").has_value(); }, "it asks"));
  EXPECT_TRUE(holdsFor([&] { return editor.process().isRunning(); }, kSomeFades, "it stays"));
  EXPECT_TRUE(m_windows.isViewable(editor.id()));
  saveSettledPicture("asks");
}

TEST_P(QuitTest, WithoutTheCompanionThereIsNoSuchEntry) {
  const auto& red = install("Red", kRed);
  startAgent({red.item()});
  openWorkWindow();
  ASSERT_TRUE(summonAt(kPlace));
  ASSERT_TRUE(openMenuOfRunningProgram());
  const int keepAlone = entryHeight();
  saveSettledPicture("without");
  m_input.typeKey(0xff1b); // Escape
  ASSERT_TRUE(waitUntilContextMenuGone());
  // It may be installed at any time.
  installCompanion();
  EXPECT_TRUE(waitFor(
      [&] {
        if (!reopenContextMenuAt(itemCenter(menuFrame().value(), 1, 2))) return false;
        const bool hasBoth = entryHeight() > keepAlone;
        m_input.typeKey(0xff1b);
        return hasBoth && waitUntilContextMenuGone();
      },
      "the entry is there"));
  EXPECT_TRUE(isMenuShown(kPlace));
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, QuitTest, editingWindowManagers(), nameOfInstance);

} // namespace
