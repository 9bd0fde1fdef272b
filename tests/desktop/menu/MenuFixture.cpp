#include "tests/desktop/menu/MenuFixture.h"

#include "tests/support/x11/Picture.h"

#include <X11/keysym.h>
#include <algorithm>
#include <cmath>
#include <csignal>
#include <numbers>
#include <set>
#include <utility>

namespace orbel::test {

namespace {

constexpr double kRadiusOfFew = 0.305; // of the menu's side
constexpr double kRadiusOfMany = 0.34;
constexpr int kFew = 10;
constexpr double kArcToSide = 1.41;
constexpr double kLargestItem = 0.25;
constexpr int kSmallestMenu = 300; // title bubbles are smaller, or not square
constexpr int kIconSide = 320;
// The white rim is a point wide; its outer edge lies a point inside the window.
constexpr int kRimInset = 1;
constexpr int kNearlyWhite = 248;

double radius(const ScreenRect& menu, int count) {
  return menu.width * (count > kFew ? kRadiusOfMany : kRadiusOfFew);
}

bool isWhite(Rgb color) {
  return std::min({color.red, color.green, color.blue}) >= kNearlyWhite;
}

} // namespace

std::vector<StoredItem> builtInItems() {
  std::vector<StoredItem> items;
  for (const char* name : {"Finder", "Launchpad", "App Store", "iTunes", "Safari", "Mail"})
    items.push_back(StoredItem::core(name));
  return items;
}

ScreenPoint itemCenter(const ScreenRect& menu, int index, int count) {
  const double angle = (index + 0.5) * 2 * std::numbers::pi / count;
  const double distance = radius(menu, count);
  return {menu.center().x + static_cast<int>(std::lround(distance * std::sin(angle))),
          menu.center().y - static_cast<int>(std::lround(distance * std::cos(angle)))};
}

double itemSideAtRest(const ScreenRect& menu, int count) {
  return std::min(radius(menu, count) * 2 * std::numbers::pi / count / kArcToSide, menu.width * kLargestItem);
}

int InstalledProgram::startCount() const {
  const auto lines = log.linesOf("mapped");
  return static_cast<int>(std::set<std::string>(lines.begin(), lines.end()).size());
}

std::vector<std::filesystem::path> filesBeside(const std::filesystem::path& file, const std::string& prefix) {
  std::vector<std::filesystem::path> found;
  for (const auto& entry : std::filesystem::directory_iterator(file.parent_path())) {
    if (entry.path().filename().string().starts_with(prefix)) found.push_back(entry.path());
  }
  return found;
}

MenuFixture::MenuFixture(const DesktopSessionOptions& options) : m_desktop(options) {
  // The very first launch would show the settings.
  m_session.preferences().setBoolean("launchedBefore", true);
}

MenuFixture::~MenuFixture() = default;

void MenuFixture::TearDown() {
  if (m_agent) quitAgent();
}

void MenuFixture::startAgent(const std::vector<StoredItem>& items) {
  m_session.preferences().setShortcut(kControlAltSpace);
  m_session.preferences().setMenuItems(items);
  startAgentAlone();
}

void MenuFixture::startAgentAlone(const OrbelAgentOptions& options) {
  m_agent = std::make_unique<OrbelAgent>(m_session, options);
}

void MenuFixture::quitAgent() {
  EXPECT_TRUE(m_agent->isRunning()) << "the program has ended with "
                                    << m_agent->process().exitStatus().value_or(0);
  m_agent->process().sendSignal(SIGTERM);
  expectAgentQuits();
}

void MenuFixture::expectAgentQuits() {
  EXPECT_TRUE(m_agent->process().waitForExit(kPatience));
  EXPECT_EQ(m_agent->process().exitStatus(), 0);
  EXPECT_FALSE(m_agent->logContains("the X server refused")) << m_agent->logText();
  m_agent.reset();
}

InstalledProgram MenuFixture::installProgram(const std::string& id, const TestWindowOptions& window,
                                             Rgb icon) {
  Picture picture(kIconSide, kIconSide);
  for (int y = 0; y < kIconSide; ++y) {
    for (int x = 0; x < kIconSide; ++x)
      picture.set({x, y}, icon);
  }
  const auto iconFile = m_session.home() / (id + ".png");
  picture.savePng(iconFile);

  TestWindowOptions options = window;
  options.className = id;
  const auto executable = m_session.copyProgram(TestWindow::clientPath("test-window"), id);
  const auto log = m_session.logFile(id);
  const auto entry = m_session.entries().install({.id = id,
                                                  .name = options.title,
                                                  .command = TestWindow::command(options, log, executable),
                                                  .icon = iconFile.string(),
                                                  .windowClass = id});
  return {id, options.title, entry, executable, ClientLog(log)};
}

InstalledProgram MenuFixture::installDefaultApplication(const std::string& id, const std::string& mimeType,
                                                        const std::string& fieldCode) {
  const auto executable = m_session.copyProgram(TestWindow::clientPath("document-viewer"), id);
  const auto log = m_session.logFile(id);
  auto command = TestWindow::command({.title = id, .className = id}, log, executable);
  command.push_back(fieldCode);
  const auto entry = m_session.entries().install(
      {.id = id, .name = id, .command = command, .windowClass = id, .mimeTypes = {mimeType}});
  m_session.entries().setDefault(mimeType, id);
  return {id, id, entry, executable, ClientLog(log)};
}

void MenuFixture::pressShortcut() {
  m_input.typeCombination({XK_Control_L, XK_Alt_L, XK_space});
}

testing::AssertionResult MenuFixture::summonAt(ScreenPoint place) {
  m_input.movePointer(place);
  pressShortcut();
  return waitUntilMenuShown(place);
}

testing::AssertionResult MenuFixture::waitUntilMenuShown(ScreenPoint center) {
  return waitForResult([&] { return isMenuShown(center); }, kPatience, "the menu is shown");
}

testing::AssertionResult MenuFixture::waitUntilMenuHidden() {
  return waitFor([this] { return !menuWindow(); }, "the menu is hidden");
}

void MenuFixture::pointAtItem(int index, int count) {
  m_input.movePointer(itemCenter(menuFrame().value(), index, count));
}

void MenuFixture::clickItem(int index, int count) {
  pointAtItem(index, count);
  m_input.click();
}

std::optional<xcb_window_t> MenuFixture::menuWindow() {
  const auto menus = menusBySize();
  return menus.empty() ? std::nullopt : std::optional(menus.back());
}

std::vector<xcb_window_t> MenuFixture::menusBySize() {
  std::vector<std::pair<int, xcb_window_t>> menus;
  for (const xcb_window_t window : m_agent->menuWindows()) {
    const auto frame = m_windows.geometry(window);
    if (frame && frame->width == frame->height && frame->width >= kSmallestMenu)
      menus.emplace_back(frame->width, window);
  }
  std::sort(menus.begin(), menus.end());
  std::vector<xcb_window_t> windows;
  for (const auto& [width, window] : menus)
    windows.push_back(window);
  return windows;
}

std::optional<ScreenRect> MenuFixture::menuFrame() {
  const auto window = menuWindow();
  return window ? m_windows.geometry(*window) : std::nullopt;
}

testing::AssertionResult MenuFixture::isMenuShown(ScreenPoint center) {
  const auto window = menuWindow();
  if (!window) return testing::AssertionFailure() << "there is no menu";
  const auto frame = m_windows.geometry(*window);
  if (!frame) return testing::AssertionFailure() << "the menu has gone";
  if (std::abs(frame->center().x - center.x) > 1 || std::abs(frame->center().y - center.y) > 1)
    return testing::AssertionFailure() << "the menu is " << *frame;
  if (m_windows.opacity(*window) < 1)
    return testing::AssertionFailure() << "its opacity is " << m_windows.opacity(*window);
  const ScreenPoint middle = frame->center();
  for (const ScreenPoint rim : {ScreenPoint{middle.x, frame->y + kRimInset},
                                ScreenPoint{middle.x, frame->y + frame->height - 1 - kRimInset},
                                ScreenPoint{frame->x + kRimInset, middle.y},
                                ScreenPoint{frame->x + frame->width - 1 - kRimInset, middle.y}}) {
    if (!m_session.screen().bounds().contains(rim)) continue;
    const Rgb color = m_session.screen().pixel(rim);
    if (!isWhite(color)) return testing::AssertionFailure() << "its rim is " << color << " at " << rim;
  }
  return testing::AssertionSuccess();
}

testing::AssertionResult MenuFixture::isActive(xcb_window_t window) {
  const auto active = m_windows.activeWindow();
  if (active == window) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "active is \"" << (active ? m_windows.title(*active) : "") << '"';
}

testing::AssertionResult MenuFixture::isInFront(const TestWindow& window) {
  if (const auto result = isActive(window.id()); !result) return result;
  if (m_windows.focusWindow() != window.id()) return testing::AssertionFailure() << "it lacks the focus";
  const auto stacking = m_windows.stackingOrder();
  if (stacking.empty() || stacking.back() != window.id())
    return testing::AssertionFailure() << "it is not the topmost";
  return testing::AssertionSuccess();
}

testing::AssertionResult MenuFixture::hasColor(ScreenPoint place, Rgb expected) {
  constexpr int kTolerance = 6;
  const Rgb seen = m_session.screen().pixel(place);
  if (difference(seen, expected) <= kTolerance) return testing::AssertionSuccess();
  return testing::AssertionFailure() << seen << " at " << place << " instead of " << expected;
}

// The dot is 6 pixels wide and lies 3 pixels below the icon; black on the light frost.
bool MenuFixture::hasDot(const ScreenRect& menu, int index, int count) {
  constexpr int kDotDistance = 6;
  constexpr int kDark = 90;
  constexpr int kMostOfTheDot = 16;
  const ScreenPoint icon = itemCenter(menu, index, count);
  const int below = static_cast<int>(std::lround(itemSideAtRest(menu, count) / 2)) + kDotDistance;
  const Picture place = m_session.screen().capture({icon.x - 5, icon.y + below - 5, 10, 10});
  const int darkPixels = place.count([](const Rgb& color) {
    return std::max({color.red, color.green, color.blue}) < kDark;
  });
  return darkPixels >= kMostOfTheDot;
}

testing::AssertionResult MenuFixture::waitUntilActive(const TestWindow& window) {
  return waitForResult([&] { return isActive(window.id()); }, kPatience, "the window is active");
}

testing::AssertionResult MenuFixture::waitForLog(const std::string& text) {
  return waitForResult(
      [&] {
        if (m_agent->logContains(text)) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "the log is \"" << m_agent->logText() << '"';
      },
      kPatience, "the log has \"" + text + '"');
}

void MenuFixture::savePicture(const std::string& name) {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  std::string file = std::string(test->test_suite_name()) + '.' + test->name() + ' ' + name;
  std::replace(file.begin(), file.end(), '/', '_');
  m_session.screen().save(file);
}

} // namespace orbel::test
