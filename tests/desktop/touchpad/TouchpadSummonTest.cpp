// Summoning the real program with fingers on a touchpad that umockdev makes: from the kernel's events to the
// menu on the screen. This test and the program run with umockdev's library between them and the kernel.
#include "tests/desktop/menu/MenuFixture.h"

#include "tests/desktop/harness/Appearances.h"
#include "tests/support/touchpad/TestTouchpad.h"

#include <X11/keysym.h>
#include <array>
#include <chrono>
#include <umockdev.h>

using namespace orbel::test;
using orbel::test::TestTouchpad;

namespace {

constexpr int kThreeFingersResting = 1; // of the setting "gestureSettings"
constexpr int kThreeFingersSpreading = 2;
constexpr int kSmallestMenu = 300;
constexpr std::chrono::milliseconds kTwoRests{600};
constexpr ScreenPoint kPlace{640, 500};
constexpr ScreenPoint kOtherPlace{420, 420};

class TouchpadSummonTest : public MenuFixture {
protected:
  void SetUp() override {
    m_testbed = umockdev_testbed_new();
    m_pad = std::make_unique<TestTouchpad>(m_testbed);
    m_pad->plugIn();
  }
  void TearDown() override {
    MenuFixture::TearDown();
    m_pad.reset();
    g_object_unref(m_testbed);
  }

  void startAgentWithGesture(int gesture) {
    m_session.preferences().setInteger("gestureSettings", gesture);
    m_session.preferences().setMenuItems(builtInItems());
    char* root = umockdev_testbed_get_root_dir(m_testbed);
    startAgentAlone({.changes = {{"LD_PRELOAD", "libumockdev-preload.so.0"}, {"UMOCKDEV_DIR", root}}});
    g_free(root);
    // The finger that moved the pointer to where it is.
    putDown(1, 0);
    liftAll();
  }

  void putDown(int count, double spread) {
    for (int finger = 0; finger < count; ++finger) {
      m_pad->put(finger, ++m_trackingId, 0.5, 0.5);
      place(finger, spread);
      m_pad->frame();
    }
  }
  void spreadTo(int count, double spread) {
    for (int finger = 0; finger < count; ++finger)
      place(finger, spread);
    m_pad->frame();
  }
  void liftAll() {
    for (int slot = 0; slot < 4; ++slot)
      m_pad->lift(slot);
    m_pad->frame();
  }
  testing::AssertionResult dismiss() {
    m_input.typeKey(XK_Escape);
    return waitUntilMenuHidden();
  }
  // Where menus have been, each once.
  std::vector<ScreenPoint> placesOfMenus() {
    std::vector<ScreenPoint> places;
    for (const ScreenRect& frame : m_appearances.ofSquares(kSmallestMenu))
      places.push_back(frame.center());
    return places;
  }

  _UMockdevTestbed* m_testbed = nullptr;
  std::unique_ptr<TestTouchpad> m_pad;

private:
  void place(int finger, double spread) {
    // On the corners of a square around the middle.
    constexpr std::array<std::array<double, 2>, 4> kCorners = {{{-1, -1}, {1, -1}, {0, 1}, {1, 1}}};
    const auto& corner = kCorners.at(static_cast<std::size_t>(finger));
    m_pad->move(finger, 0.5 + spread * corner[0], 0.5 + spread * corner[1]);
  }

  Appearances m_appearances{m_session.environment().at("DISPLAY")};
  int m_trackingId = 0;
};

TEST_F(TouchpadSummonTest, ThreeFingersRestingOpenTheMenuAtThePointerOnce) {
  startAgentWithGesture(kThreeFingersResting);
  m_input.movePointer(kPlace);
  putDown(3, 0.1);
  ASSERT_TRUE(waitUntilMenuShown(kPlace));
  savePicture("after the rest");
  ASSERT_TRUE(dismiss());

  // The same fingers, still there and trembling, open nothing; lifted and put down again they do.
  spreadTo(3, 0.105);
  liftAll();
  m_input.movePointer(kOtherPlace);
  putDown(3, 0.1);
  ASSERT_TRUE(waitUntilMenuShown(kOtherPlace));
  EXPECT_EQ(placesOfMenus(), (std::vector<ScreenPoint>{kPlace, kOtherPlace}));
}

TEST_F(TouchpadSummonTest, FourFingersOfWhichOneIsLiftedOpenNothing) {
  startAgentWithGesture(kThreeFingersResting);
  m_input.movePointer(kPlace);
  putDown(4, 0.1);
  m_pad->lift(3);
  m_pad->frame();
  EXPECT_TRUE(holdsFor([this] { return !menuWindow(); }, kTwoRests, "three of the four rest, and no menu"));
  // And a rest of three after all have been lifted shows that the program was listening.
  liftAll();
  m_input.movePointer(kOtherPlace);
  putDown(3, 0.1);
  ASSERT_TRUE(waitUntilMenuShown(kOtherPlace));
  EXPECT_EQ(placesOfMenus(), (std::vector<ScreenPoint>{kOtherPlace}));
}

TEST_F(TouchpadSummonTest, ThreeFingersSpreadingOpenTheMenuAtThePointer) {
  startAgentWithGesture(kThreeFingersSpreading);
  m_input.movePointer(kPlace);
  putDown(3, 0.1);
  spreadTo(3, 0.14);
  spreadTo(3, 0.18);
  EXPECT_TRUE(waitUntilMenuShown(kPlace));
}

TEST_F(TouchpadSummonTest, UnpluggedInTheMiddleOfAGestureAndBackTheTouchpadSummonsAgain) {
  startAgentWithGesture(kThreeFingersResting);
  m_input.movePointer(kPlace);
  putDown(2, 0.1);
  m_pad->unplug();
  m_pad->plugIn();
  // When the program is notified of the new touchpad is not known.
  const auto restOnce = [&] {
    liftAll();
    putDown(3, 0.1);
    return waitFor([this] { return menuWindow().has_value(); }, std::chrono::seconds(1), "a menu");
  };
  ASSERT_TRUE(waitFor(restOnce, "a rest has summoned the menu"));
  EXPECT_TRUE(waitUntilMenuShown(kPlace));
}

} // namespace
