// Summoning by a circle of the pointer. What does not summon is proved by a circle drawn afterwards at
// another place: the program handles the movements in order, so by the time the menu is there, it has handled
// the others, and the server has reported every place at which a menu was.
#include "tests/desktop/menu/MenuFixture.h"

#include "tests/desktop/harness/Appearances.h"
#include "tests/support/x11/XcbReply.h"

#include <X11/keysym.h>
#include <cmath>

using namespace orbel::test;
using namespace std::chrono_literals;

namespace {

constexpr int kPointerCircle = 5; // of the setting "gestureSettings"
constexpr int kSmallestMenu = 300;
constexpr ScreenPoint kPlace{360, 380};
constexpr ScreenPoint kOtherPlace{900, 620};

double distance(ScreenPoint from, ScreenPoint to) {
  return std::hypot(to.x - from.x, to.y - from.y);
}

// Another program that holds the pointer for itself.
class PointerGrab {
public:
  explicit PointerGrab(const std::string& displayName) : m_display(displayName) {
    const auto cookie =
        xcb_grab_pointer(m_display.get(), 0, m_display.root(), XCB_EVENT_MASK_BUTTON_PRESS,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const XcbReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(m_display.get(), cookie, nullptr));
    m_isGranted = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
  }
  bool isGranted() const { return m_isGranted; }

private:
  DisplayConnection m_display;
  bool m_isGranted = false;
};

class PointerCircleTest : public MenuFixture {
protected:
  void startAgentWithCircle() {
    m_session.preferences().setInteger("gestureSettings", kPointerCircle);
    startAgent();
  }

  // Draws it again as long as the machine is too busy to draw it in its time.
  void draw(const CircularWay& way) {
    const auto isDrawnInTime = [&] { return m_input.circlePointer(way) < way.duration + 50ms; };
    ASSERT_TRUE(waitFor(isDrawnInTime, 4 * kPatience, "a circle is drawn in its time"));
  }

  testing::AssertionResult isMenuOnCircle(const CircularWay& way) {
    const auto frame = menuFrame();
    if (!frame) return testing::AssertionFailure() << "there is no menu";
    if (std::abs(distance(frame->center(), way.center) - way.radius) > 2)
      return testing::AssertionFailure() << "the menu is " << *frame;
    return isMenuShown(frame->center());
  }
  testing::AssertionResult waitUntilMenuOnCircle(const CircularWay& way) {
    return waitForResult([&] { return isMenuOnCircle(way); }, kPatience, "the menu is on the circle");
  }

  // A person circles until the menu comes.
  testing::AssertionResult circleUntilMenuShown(const CircularWay& way) {
    const auto circleOnce = [&] {
      m_input.circlePointer(way);
      return menuWindow().has_value();
    };
    if (auto result = waitFor(circleOnce, "a circle has summoned the menu"); !result) return result;
    return waitUntilMenuOnCircle(way);
  }

  // Nothing of what was done so far has shown a menu, not even for a moment.
  void expectNothingWasSummoned() {
    const CircularWay afterwards{.center = kOtherPlace};
    ASSERT_TRUE(circleUntilMenuShown(afterwards));
    const auto places = m_appearances.ofSquares(kSmallestMenu);
    EXPECT_FALSE(places.empty());
    for (const ScreenRect& place : places)
      EXPECT_NEAR(distance(place.center(), kOtherPlace), afterwards.radius, 2) << place;
  }

  const std::string& displayName() { return m_session.environment().at("DISPLAY"); }

  Appearances m_appearances{displayName()};
};

TEST_F(PointerCircleTest, AClockwiseCircleOpensTheMenuAtThePointer) {
  startAgentWithCircle();
  const CircularWay way{.center = kPlace, .radius = 60, .duration = 800ms};
  draw(way);
  ASSERT_TRUE(waitUntilMenuOnCircle(way));
  // Where the pointer was when four fifths of the circle were behind it, not where it began.
  EXPECT_LT(distance(menuFrame()->center(), way.at(0.8)), 30);
  EXPECT_EQ(m_appearances.ofSquares(kSmallestMenu).size(), 1U) << "and stays there";
  savePicture("after the circle");
}

TEST_F(PointerCircleTest, ACounterClockwiseCircleOpensNothing) {
  startAgentWithCircle();
  draw({.center = kPlace, .sweepDegrees = -720, .duration = 1600ms});
  expectNothingWasSummoned();
}

TEST_F(PointerCircleTest, ACircleTooSmallOpensNothing) {
  startAgentWithCircle();
  draw({.center = kPlace, .radius = 18, .sweepDegrees = 720, .duration = 1600ms});
  expectNothingWasSummoned();
}

TEST_F(PointerCircleTest, ACircleTooSlowOpensNothing) {
  startAgentWithCircle();
  draw({.center = kPlace, .sweepDegrees = 720, .duration = 4000ms});
  expectNothingWasSummoned();
}

TEST_F(PointerCircleTest, AStraightLineOpensNothing) {
  startAgentWithCircle();
  m_input.movePointer({100, 380});
  m_input.glidePointer({700, 440}, 120, 10ms);
  m_input.glidePointer({100, 380}, 120, 10ms);
  expectNothingWasSummoned();
}

TEST_F(PointerCircleTest, ACircleWithAButtonHeldIsADragAndOpensNothing) {
  startAgentWithCircle();
  m_input.movePointer(kPlace);
  for (const PointerButton button : {PointerButton::left, PointerButton::right}) {
    m_input.press(button);
    draw({.center = kPlace, .sweepDegrees = 720, .duration = 1600ms});
    m_input.release(button);
  }
  expectNothingWasSummoned();
}

TEST_F(PointerCircleTest, ACircleOpensTheMenuWhileAnotherProgramHoldsThePointer) {
  startAgentWithCircle();
  const PointerGrab grab(displayName());
  ASSERT_TRUE(grab.isGranted());
  const CircularWay way{.center = kPlace};
  draw(way);
  EXPECT_TRUE(waitUntilMenuOnCircle(way));
}

TEST_F(PointerCircleTest, ACircleOpensTheMenuOverAWindowThatListensToThePointer) {
  const TestWindow below(m_session, {.frame = {100, 100, 600, 600}});
  startAgentWithCircle();
  const CircularWay way{.center = below.frame().center()};
  draw(way);
  EXPECT_TRUE(waitUntilMenuOnCircle(way));
}

// What counts is the way on the screen: the same movement of a mouse becomes a larger one with acceleration.
TEST_F(PointerCircleTest, ACircleOpensTheMenuAtAnyPointerSpeed) {
  m_session.markSpent();
  startAgentWithCircle();
  const CircularWay byHand{.center = {0, 0}, .radius = 30};
  for (const std::uint16_t acceleration : {std::uint16_t{1}, std::uint16_t{4}}) {
    xcb_change_pointer_control(m_session.display().get(), acceleration, 1, 0, 1, 1);
    const auto circleOnce = [&] {
      m_input.movePointer(kPlace);
      m_input.circlePointerRelatively(byHand);
      return menuWindow().has_value();
    };
    ASSERT_TRUE(waitFor(circleOnce, "a circle has summoned the menu")) << acceleration;
    m_input.typeKey(XK_Escape);
    ASSERT_TRUE(waitUntilMenuHidden());
  }
}

TEST_F(PointerCircleTest, ACircleAcrossTwoMonitorsOpensTheMenuAtThePointer) {
  m_session.markSpent();
  ASSERT_EQ(m_session.run({"xrandr", "--setmonitor", "left", "640/169x1024/271+0+0", "screen"}).exitStatus,
            0);
  ASSERT_EQ(m_session.run({"xrandr", "--setmonitor", "right", "640/169x1024/271+640+0", "none"}).exitStatus,
            0);
  startAgentWithCircle();
  for (const double start : {90.0, 270.0}) {
    const CircularWay way{.center = {640, 500}, .startDegrees = start};
    draw(way);
    ASSERT_TRUE(waitUntilMenuOnCircle(way));
    m_input.typeKey(XK_Escape);
    ASSERT_TRUE(waitUntilMenuHidden());
  }
}

TEST_F(PointerCircleTest, WithAnotherGestureACircleOpensNothing) {
  startAgent();
  draw({.center = kPlace, .sweepDegrees = 720, .duration = 1600ms});
  ASSERT_TRUE(summonAt(kOtherPlace));
  for (const ScreenRect& place : m_appearances.ofSquares(kSmallestMenu))
    EXPECT_EQ(place.center(), kOtherPlace);
}

} // namespace
