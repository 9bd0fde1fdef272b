#include "backends/evdev/TouchpadTap.h"

#include "tests/support/touchpad/TouchpadTest.h"

#include <linux/input.h>

namespace orbel::test {
namespace {

class TouchpadTapTest : public TouchpadTest {
protected:
  void SetUp() override {
    m_tap = std::make_unique<evdev::TouchpadTap>(TouchHandlers{
        [this](const std::vector<Touch>& touches) { m_frames.push_back(touches); }, [this] { ++m_pinches; }});
  }
  void TearDown() override { m_tap.reset(); }

  // The next frame that is reported.
  std::vector<Touch> told(TestTouchpad& pad) {
    const std::size_t before = m_frames.size();
    pad.frame();
    EXPECT_TRUE(iterateUntil([&] { return m_frames.size() > before; })) << "no frame is told";
    return m_frames.empty() ? std::vector<Touch>() : m_frames.back();
  }
  // A frame that changes nothing, by the time that the next one is reported.
  bool isUntold(TestTouchpad& pad, int slot) {
    const std::size_t before = m_frames.size();
    pad.frame();
    pad.put(slot, 900, 0.5, 0.5);
    return told(pad).size() == 1 && m_frames.size() == before + 1;
  }

  std::vector<std::vector<Touch>> m_frames;
  int m_pinches = 0;
  std::unique_ptr<evdev::TouchpadTap> m_tap;
};

void expectAt(const Touch& touch, double x, double y) {
  EXPECT_NEAR(touch.normalizedPosition.x, x, 0.001);
  EXPECT_NEAR(touch.normalizedPosition.y, y, 0.002);
}

TEST_F(TouchpadTapTest, FingersAreToldWithPositionsOfThePadAndTheYAxisUp) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 41, 0.25, 0.75);
  pad.put(3, 42, 1, 0);
  const auto touches = told(pad);
  ASSERT_EQ(touches.size(), 2u);
  expectAt(touches[0], 0.25, 0.75);
  expectAt(touches[1], 1, 0);
  EXPECT_NE(touches[0].identity, touches[1].identity);

  pad.move(0, 0.5, 0.5);
  const auto moved = told(pad);
  ASSERT_EQ(moved.size(), 2u);
  expectAt(moved[0], 0.5, 0.5);
  EXPECT_EQ(moved[0].identity, touches[0].identity);
  EXPECT_EQ(moved[1].identity, touches[1].identity);

  pad.lift(0);
  const auto left = told(pad);
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(left[0].identity, touches[1].identity);
  pad.lift(3);
  EXPECT_TRUE(told(pad).empty());
  EXPECT_TRUE(log().empty());
}

TEST_F(TouchpadTapTest, NothingIsOpenOrToldWhileTheTapIsDisabled) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  EXPECT_FALSE(m_tap->isEnabled());
  m_tap->setEnabled(true);
  EXPECT_TRUE(m_tap->isEnabled());
  pad.put(0, 1, 0.5, 0.5);
  EXPECT_EQ(told(pad).size(), 1u);
  m_tap->setEnabled(false);
  EXPECT_FALSE(m_tap->isEnabled());
  pad.move(0, 0.1, 0.1);
  pad.frame();
  iterateWhatIsPending();
  EXPECT_EQ(m_frames.size(), 1u);

  // Back again, it knows of the finger that stayed.
  m_tap->setEnabled(true);
  pad.put(1, 2, 0.7, 0.7);
  EXPECT_EQ(told(pad).size(), 2u);
}

TEST_F(TouchpadTapTest, PositionsOutOfRangeAreThoseOfTheEdge) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 1, 0.5, 0.5);
  pad.moveRaw(0, 99999, 99999);
  pad.put(1, 2, 0.5, 0.5);
  pad.moveRaw(1, -99999, -99999);
  const auto touches = told(pad);
  ASSERT_EQ(touches.size(), 2u);
  expectAt(touches[0], 1, 0);
  expectAt(touches[1], 0, 1);
}

TEST_F(TouchpadTapTest, PalmsOtherToolsAndHoveringFingersAreNoFingers) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  for (int slot = 0; slot < 4; ++slot)
    pad.put(slot, 10 + slot, 0.2 * slot, 0.5);
  pad.setTool(1, MT_TOOL_PALM);
  pad.setTool(2, MT_TOOL_PEN);
  pad.setDistance(3, 7);
  EXPECT_EQ(told(pad).size(), 1u);
  pad.setTool(1, MT_TOOL_FINGER);
  pad.setDistance(3, 0);
  EXPECT_EQ(told(pad).size(), 3u) << "what was a palm or above the pad has become a finger";
  pad.setTool(0, MT_TOOL_PALM);
  EXPECT_EQ(told(pad).size(), 2u);
}

TEST_F(TouchpadTapTest, MoreSlotsThanFingersAreNoFingers) {
  TestTouchpad pad(testbed(), {.slots = 16});
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(15, 7, 0.5, 0.5);
  EXPECT_EQ(told(pad).size(), 1u);
}

TEST_F(TouchpadTapTest, OneTrackingIdInTwoSlotsIsOneFinger) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 7, 0.25, 0.25);
  pad.put(1, 7, 0.75, 0.75);
  pad.put(2, 8, 0.5, 0.5);
  const auto touches = told(pad);
  ASSERT_EQ(touches.size(), 2u);
  expectAt(touches[0], 0.25, 0.25);
}

TEST_F(TouchpadTapTest, FramesThatChangeNoFingerAreNotTold) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.setDistance(2, 50); // of an unused slot
  EXPECT_TRUE(isUntold(pad, 0));
}

TEST_F(TouchpadTapTest, WhatWasLostInAnOverflowIsAskedOfTheKernel) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  for (int slot = 0; slot < 3; ++slot)
    pad.put(slot, 20 + slot, 0.3 * slot, 0.5);
  EXPECT_EQ(told(pad).size(), 3u);
  pad.lift(1);
  pad.move(0, 0.9, 0.1);
  pad.put(4, 30, 0.1, 0.9);
  pad.loseFrame();
  ASSERT_TRUE(iterateUntil([&] { return m_frames.back().size() == 3u && m_frames.size() > 1; }));
  expectAt(m_frames.back()[0], 0.9, 0.1);
  expectAt(m_frames.back()[1], 0.6, 0.5);
  expectAt(m_frames.back()[2], 0.1, 0.9);
  pad.lift(0);
  EXPECT_EQ(told(pad).size(), 2u) << "the reports go on afterwards";
}

TEST_F(TouchpadTapTest, AFingerExchangedForAnotherDuringAnOverflowHasAnotherIdentity) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 20, 0.5, 0.5);
  const auto before = told(pad);
  pad.put(0, 21, 0.5, 0.5);
  pad.loseFrame();
  ASSERT_TRUE(iterateUntil(
      [&] { return m_frames.back().size() == 1u && m_frames.back()[0].identity != before.at(0).identity; }));
}

TEST_F(TouchpadTapTest, ATouchpadThatIsPluggedInLaterIsHeard) {
  m_tap->setEnabled(true);
  TestTouchpad pad(testbed());
  pad.plugIn();
  // The announcement and the fingers come by different ways.
  int trackingId = 0;
  const auto isHeard = [&] {
    pad.put(0, ++trackingId, 0.5, 0.5);
    pad.frame();
    return !m_frames.empty();
  };
  EXPECT_TRUE(iterateUntil(isHeard));
}

TEST_F(TouchpadTapTest, UnpluggedInTheMiddleOfAGestureAllFingersAreLiftedAndBackItIsHeardAgain) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 1, 0.2, 0.5);
  pad.put(1, 2, 0.5, 0.5);
  const auto before = told(pad);
  EXPECT_EQ(before.size(), 2u);
  pad.unplug();
  EXPECT_TRUE(iterateUntil([&] { return m_frames.back().empty(); }));
  EXPECT_EQ(m_frames.size(), 2u);

  pad.plugIn();
  const auto isHeard = [&] {
    pad.put(0, 1, 0.2, 0.5); // the same numbers as before
    pad.emptyFrames(1);
    pad.frame();
    return !m_frames.back().empty();
  };
  ASSERT_TRUE(iterateUntil(isHeard));
  EXPECT_NE(m_frames.back()[0].identity, before[0].identity) << "it is another finger all the same";
}

TEST_F(TouchpadTapTest, ATouchpadThatBreaksOffUnannouncedHasAllFingersLifted) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 1, 0.2, 0.5);
  EXPECT_EQ(told(pad).size(), 1u);
  pad.breakOff();
  EXPECT_TRUE(iterateUntil([&] { return m_frames.back().empty(); }));
  EXPECT_EQ(m_frames.size(), 2u);
}

TEST_F(TouchpadTapTest, ATouchpadWithoutFingersGoesWithoutAWord) {
  TestTouchpad pad(testbed());
  TestTouchpad other(testbed(), {.number = 6});
  pad.plugIn();
  other.plugIn();
  m_tap->setEnabled(true);
  pad.unplug();
  other.put(0, 1, 0.5, 0.5);
  EXPECT_EQ(told(other).size(), 1u);
  EXPECT_EQ(m_frames.size(), 1u);
}

TEST_F(TouchpadTapTest, EveryTouchpadTellsItsOwnFingers) {
  TestTouchpad first(testbed());
  TestTouchpad second(testbed(), {.name = "Other", .number = 6});
  first.plugIn();
  second.plugIn();
  m_tap->setEnabled(true);
  first.put(0, 1, 0.2, 0.5);
  first.put(1, 2, 0.4, 0.5);
  const auto ofFirst = told(first);
  second.put(0, 1, 0.2, 0.5);
  const auto ofSecond = told(second);
  EXPECT_EQ(ofFirst.size(), 2u);
  ASSERT_EQ(ofSecond.size(), 1u) << "fingers of two pads are no three fingers";
  EXPECT_NE(ofFirst[0].identity, ofSecond[0].identity);
}

TEST_F(TouchpadTapTest, TouchScreensAreNotOpened) {
  TestTouchpad screen(testbed(), {.isTouchpad = false});
  TestTouchpad pad(testbed(), {.number = 6});
  screen.plugIn();
  pad.plugIn();
  m_tap->setEnabled(true);
  screen.put(0, 1, 0.5, 0.5);
  screen.frame();
  pad.put(0, 1, 0.5, 0.5);
  EXPECT_EQ(told(pad).size(), 1u);
  EXPECT_EQ(m_frames.size(), 1u);
}

TEST_F(TouchpadTapTest, ATouchpadWithoutSlotsOrSizeIsLeftOutAndLogged) {
  TestTouchpad single(testbed(), {.name = "Single", .slots = 0});
  TestTouchpad sizeless(testbed(), {.name = "Sizeless", .number = 6, .x = {7, 7}});
  TestTouchpad two(testbed(), {.name = "Two", .number = 7, .slots = 2});
  single.plugIn();
  sizeless.plugIn();
  two.plugIn();
  m_tap->setEnabled(true);
  EXPECT_TRUE(hasLogged("\"Single\" (/dev/input/event5) gives no gestures: it does not tell where"));
  EXPECT_TRUE(hasLogged("\"Sizeless\" (/dev/input/event6) gives no gestures: it does not tell how large"));
  EXPECT_TRUE(hasLogged("\"Two\" (/dev/input/event7) tells only 2 fingers apart"));
  two.put(0, 1, 0.5, 0.5);
  EXPECT_EQ(told(two).size(), 1u);
}

// The device is a terminal underneath, which stalls for good now and then once it is full; so the flood rises
// with every turn of the loop by less than it holds.
TEST_F(TouchpadTapTest, AFloodOfFramesIsReadWhileOthersAreServed) {
  constexpr int kFramesATurn = 60;
  constexpr int kTurns = 1000;
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  struct Flood {
    TestTouchpad& pad;
    int turns = 0;
  } flood{pad};
  const auto rise = [](gpointer data) -> gboolean {
    auto* rising = static_cast<Flood*>(data);
    rising->pad.emptyFrames(kFramesATurn);
    return ++rising->turns < kTurns ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
  };
  g_idle_add_full(G_PRIORITY_DEFAULT, rise, &flood, nullptr);
  EXPECT_TRUE(iterateUntil([&] { return flood.turns == kTurns; }));
  EXPECT_TRUE(m_frames.empty());
  pad.put(0, 1, 0.5, 0.5);
  EXPECT_EQ(told(pad).size(), 1u);
}

TEST_F(TouchpadTapTest, APinchIsToldAfterEveryFrameOfIt) {
  TestTouchpad pad(testbed());
  pad.plugIn();
  m_tap->setEnabled(true);
  pad.put(0, 1, 0.4, 0.5);
  pad.put(1, 2, 0.6, 0.5);
  told(pad);
  pad.move(0, 0.39, 0.5);
  told(pad);
  EXPECT_EQ(m_pinches, 0);
  pad.move(0, 0.3, 0.5);
  told(pad);
  EXPECT_EQ(m_pinches, 1);
  pad.move(0, 0.4, 0.5);
  told(pad);
  EXPECT_EQ(m_pinches, 2) << "back where it was, it is still the same pinch";
  pad.lift(0);
  told(pad);
  EXPECT_EQ(m_pinches, 2);
}

TEST_F(TouchpadTapTest, TheTapMayBeDisabledFromItsOwnHandler) {
  int frames = 0;
  std::unique_ptr<evdev::TouchpadTap> tap;
  const auto disable = [&](const std::vector<Touch>&) {
    ++frames;
    tap->setEnabled(false);
  };
  tap = std::make_unique<evdev::TouchpadTap>(
      TouchHandlers{disable, [] { FAIL() << "nothing is told any more"; }});
  TestTouchpad pad(testbed());
  pad.plugIn();
  tap->setEnabled(true);
  pad.put(0, 1, 0.5, 0.5);
  pad.frame();
  pad.put(1, 2, 0.9, 0.5);
  pad.frame();
  EXPECT_TRUE(iterateUntil([&] { return frames > 0; }));
  iterateWhatIsPending();
  EXPECT_EQ(frames, 1);
}

} // namespace
} // namespace orbel::test
