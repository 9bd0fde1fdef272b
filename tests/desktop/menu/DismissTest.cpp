// The ways to get rid of the menu without opening anything, and which window is in front afterwards.
#include "tests/desktop/menu/MenuFixture.h"
#include "tests/support/x11/WindowManagers.h"

#include <X11/keysym.h>
#include <chrono>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

// Within this after the menu is there the close button does nothing.
constexpr auto kCloseButtonGuard = 750ms;
constexpr auto kSomeFades = 400ms;

class DismissTest : public MenuFixture, public testing::WithParamInterface<WindowManagerKind> {
protected:
  DismissTest() : MenuFixture({.windowManager = GetParam()}) {}

  void SetUp() override {
    startAgent();
    m_other.emplace(m_session,
                    TestWindowOptions{.title = "Other", .frame = {60, 90, 240, 800}, .color = {40, 80, 220}});
    m_earlier.emplace(m_session, TestWindowOptions{.title = "Earlier", .frame = {200, 120, 900, 800}});
    ASSERT_TRUE(waitUntilActive(*m_earlier));
    m_center = m_earlier->frame().center();
  }

  ScreenPoint besideTheMenu() const { return {m_other->frame().x + 30, m_other->frame().y + 300}; }

  std::optional<TestWindow> m_other;
  std::optional<TestWindow> m_earlier;
  ScreenPoint m_center;
};

TEST_P(DismissTest, AClickElsewhereHidesTheMenuAndTheClickedWindowKeepsTheFocus) {
  ASSERT_TRUE(summonAt(m_center));
  EXPECT_EQ(m_windows.focusWindow(), m_earlier->id());
  m_input.clickAt(besideTheMenu());
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isInFront(*m_other); }, "the clicked window is in front"));
  EXPECT_TRUE(holdsFor([&] { return isInFront(*m_other); }, kSomeFades, "the clicked window stays in front"));
}

TEST_P(DismissTest, EscapeGoesBackToTheEarlierWindow) {
  ASSERT_TRUE(summonAt(m_center));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(isInFront(*m_earlier));
  EXPECT_FALSE(m_earlier->log().contains("key-press 0xff1b"));
  // Hidden, the menu leaves the key to the programs.
  m_input.typeKey(XK_Escape);
  EXPECT_TRUE(
      waitFor([&] { return m_earlier->log().contains("key-press 0xff1b"); }, "the window gets Escape"));
}

TEST_P(DismissTest, EscapeGoesBackToTheEarlierWindowAlsoWhenAnotherHasRaisedItself) {
  ASSERT_TRUE(summonAt(m_center));
  m_other->raiseItself();
  ASSERT_TRUE(waitUntilActive(*m_other));
  m_input.typeKey(XK_Escape);
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isInFront(*m_earlier); }, "the earlier window is in front"));
  EXPECT_TRUE(holdsFor([&] { return isInFront(*m_earlier); }, kSomeFades, "it stays in front"));
}

TEST_P(DismissTest, TheShortcutOverTheMenuGoesBackToTheEarlierWindowToo) {
  ASSERT_TRUE(summonAt(m_center));
  m_other->raiseItself();
  ASSERT_TRUE(waitUntilActive(*m_other));
  pressShortcut();
  ASSERT_TRUE(waitUntilMenuHidden());
  EXPECT_TRUE(waitFor([&] { return isInFront(*m_earlier); }, "the earlier window is in front"));
}

TEST_P(DismissTest, TheCloseButtonGoesBackToTheEarlierWindowAlsoWhenAnotherHasRaisedItself) {
  ASSERT_TRUE(summonAt(m_center));
  m_other->raiseItself();
  ASSERT_TRUE(waitUntilActive(*m_other));
  const auto clickUntilHidden = [&] {
    if (isMenuShown(m_center)) m_input.click(); // and not while it fades away
    return !menuWindow();
  };
  ASSERT_TRUE(waitFor(clickUntilHidden, "the close button has hidden the menu"));
  EXPECT_TRUE(waitFor([&] { return isInFront(*m_earlier); }, "the earlier window is in front"));
  EXPECT_TRUE(holdsFor([&] { return isInFront(*m_earlier); }, kSomeFades, "it stays in front"));
}

// Whoever summons with a double press of something must not close what has just opened.
TEST_P(DismissTest, TheCloseButtonDoesNothingRightAfterTheMenuHasOpened) {
  const auto guardHolds = [&]() -> std::optional<bool> {
    const auto start = std::chrono::steady_clock::now();
    m_input.movePointer(m_center);
    pressShortcut();
    if (!waitFor([&] { return menuWindow().has_value(); }, "the menu is there")) return false;
    m_input.click();
    // Once the program has answered twice it has been around its event loop, and the click is behind it.
    for (int answer = 0; answer < 2; ++answer) {
      if (!m_session.bus().answers(OrbelAgent::kBusName, OrbelAgent::kObjectPath)) return false;
    }
    if (std::chrono::steady_clock::now() - start > kCloseButtonGuard) return std::nullopt; // a busy machine
    if (!waitUntilMenuShown(m_center)) return false;
    return static_cast<bool>(holdsFor([&] { return isMenuShown(m_center); }, kSomeFades, "the menu stays"));
  };
  std::optional<bool> result;
  const auto isDecided = [&] {
    result = guardHolds();
    if (result) return true;
    m_input.typeKey(XK_Escape);
    EXPECT_TRUE(waitUntilMenuHidden());
    return false;
  };
  ASSERT_TRUE(waitFor(isDecided, "the machine is quick enough to click within the guard"));
  EXPECT_TRUE(result.value());
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, DismissTest, allWindowManagers(), nameOfInstance);

} // namespace
