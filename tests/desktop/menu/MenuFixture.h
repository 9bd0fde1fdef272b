// The real program on a private desktop: preferences with the shortcut Control+Alt+Space and items, programs
// that items stand for, and what a person does with the menu. After every
// test the program must still run, have caused no X error, and quit in order.
//
// Places are pixels of the screen, y down.
#pragma once

#include "tests/desktop/harness/ClientLog.h"
#include "tests/desktop/harness/OrbelAgent.h"
#include "tests/desktop/harness/SharedDesktop.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/Waiting.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::test {

inline constexpr StoredShortcut kControlAltSpace{kSpaceKeyCode, kControlFlag | kOptionFlag};
inline constexpr std::uint16_t kControlAltMask = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

// As six names that every desktop has an icon for; with no stored items the menu shows them, too.
std::vector<StoredItem> builtInItems();

// Where the pointer must be for item `index` of `count`: the middle of its slot, in which the item lies both
// at rest and grown under that pointer.
ScreenPoint itemCenter(const ScreenRect& menu, int index, int count);
// The side of every one of `count` items while the pointer is in the middle of the menu.
double itemSideAtRest(const ScreenRect& menu, int count);

// A program with a window that exists for the menu as a desktop entry with an icon of one colour.
struct InstalledProgram {
  std::string id; // of the entry; also the window's class
  std::string title;
  std::filesystem::path entry;
  std::filesystem::path executable;
  ClientLog log;

  StoredItem item() const { return StoredItem::application(title, entry.string()); }
  // A window manager that restarts maps a window anew; another start has another window.
  int startCount() const;
};

// The files in the same folder whose names begin so.
std::vector<std::filesystem::path> filesBeside(const std::filesystem::path& file, const std::string& prefix);

class MenuFixture : public testing::Test {
protected:
  explicit MenuFixture(const DesktopSessionOptions& options = {
                           .windowManager = WindowManagerKind::openboxWithPicom});
  ~MenuFixture() override;
  void TearDown() override;

  // Writes the shortcut and the items, then starts the program.
  void startAgent(const std::vector<StoredItem>& items = builtInItems());
  // With the preferences as they are.
  void startAgentAlone(const OrbelAgentOptions& options = {});
  OrbelAgent& agent() { return *m_agent; }
  // Quits it and expects that it does so in order.
  void quitAgent();
  // The user has quit it; expects that it ended in order.
  void expectAgentQuits();

  InstalledProgram installProgram(const std::string& id, const TestWindowOptions& window, Rgb icon);
  // One that writes down which documents it was given and is the default application for the type.
  InstalledProgram installDefaultApplication(const std::string& id, const std::string& mimeType,
                                             const std::string& fieldCode);

  void pressShortcut();
  // Points at the place, presses the shortcut and waits for the menu there.
  testing::AssertionResult summonAt(ScreenPoint place);
  // Until it is fully there, centred on the place.
  testing::AssertionResult waitUntilMenuShown(ScreenPoint center);
  testing::AssertionResult waitUntilMenuHidden();
  // Points at the item and clicks; the menu must be shown.
  void pointAtItem(int index, int count);
  void clickItem(int index, int count);

  // Nothing while it is hidden.
  std::optional<xcb_window_t> menuWindow();
  // The main menu comes last: a collection's is smaller. Not by the stacking, which changes while a menu
  // is shown.
  std::vector<xcb_window_t> menusBySize();
  std::optional<ScreenRect> menuFrame();
  testing::AssertionResult isMenuShown(ScreenPoint center);
  testing::AssertionResult isActive(xcb_window_t window);
  // In front of all others and with the keys.
  testing::AssertionResult isInFront(const TestWindow& window);
  testing::AssertionResult hasColor(ScreenPoint place, Rgb expected);
  // Whether icon `index` of `count` has the mark of a running program, with the pointer in the middle of that
  // menu, where nothing is grown.
  bool hasDot(const ScreenRect& menu, int index, int count);
  testing::AssertionResult waitUntilActive(const TestWindow& window);
  testing::AssertionResult waitForLog(const std::string& text);
  // The picture's name gets the test's name in front.
  void savePicture(const std::string& name);

private:
  SharedDesktop m_desktop;

protected:
  DesktopSession& m_session = m_desktop.session();
  Windows& m_windows = m_session.windows();
  Input& m_input = m_session.input();

private:
  std::unique_ptr<OrbelAgent> m_agent;
};

} // namespace orbel::test
