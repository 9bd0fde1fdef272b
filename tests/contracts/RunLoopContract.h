// What every RunLoop keeps to.
//
// Subject: a run loop with nothing pending.
//   RunLoop& loop();
//   bool runUntil(const std::function<bool()>& condition);  turns the loop until the condition holds; false
//                                                           when it never comes to
//   void runWhatIsDue();                                    turns the loop without waiting for anything
//   void holdUp(double seconds);                            time passes in which the loop gets no turn
//   bool wouldWake();                                       whether the loop would ever wake by itself
#pragma once

#include "foundation/RunLoop.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class RunLoopContract : public testing::Test {
protected:
  RunLoop& loop() { return subject.loop(); }
  double now() { return loop().clock().now(); }
  Subject subject;
};

TYPED_TEST_SUITE_P(RunLoopContract);

TYPED_TEST_P(RunLoopContract, ADelayedBlockRunsOnceAndNotBeforeItsTime) {
  const double start = this->now();
  std::vector<double> runs;
  this->loop().after(0.02, [&] { runs.push_back(this->now() - start); });
  this->subject.runWhatIsDue();
  EXPECT_TRUE(runs.empty());
  ASSERT_TRUE(this->subject.runUntil([&] { return !runs.empty(); }));
  EXPECT_GE(runs[0], 0.02 - 1e-9); // a sum of doubles
  EXPECT_FALSE(this->subject.wouldWake());
  EXPECT_EQ(runs.size(), 1u);
}

TYPED_TEST_P(RunLoopContract, ABlockWithoutDelayRunsInTheNextTurnAndNeverInsideTheCall) {
  for (const double delay : {0.0, -1.0}) {
    bool hasRun = false;
    this->loop().after(delay, [&] { hasRun = true; });
    EXPECT_FALSE(hasRun) << delay;
    this->subject.runWhatIsDue();
    EXPECT_TRUE(hasRun) << delay;
  }
}

TYPED_TEST_P(RunLoopContract, ABlockThatIsAskedForInsideAnotherRunsAfterIt) {
  std::string order;
  this->loop().after(0, [&] {
    this->loop().after(0, [&] { order += "inner "; });
    order += "outer ";
  });
  this->loop().after(0, [&] { order += "next "; });
  this->subject.runWhatIsDue();
  EXPECT_EQ(order, "outer next inner ");
}

TYPED_TEST_P(RunLoopContract, BlocksRunInTheOrderOfTheirTimeAndThenOfTheirAsking) {
  std::string order;
  this->loop().after(0.03, [&] { order += "d"; });
  this->loop().after(0.01, [&] { order += "b"; });
  this->loop().after(0.02, [&] { order += "c"; });
  this->loop().after(0, [&] { order += "1"; });
  this->loop().after(0, [&] { order += "2"; });
  ASSERT_TRUE(this->subject.runUntil([&] { return order.size() == 5; }));
  EXPECT_EQ(order, "12bcd");
}

TYPED_TEST_P(RunLoopContract, BlocksKeepTheirOrderWhenTheLoopWasHeldUpPastAllOfThem) {
  std::string order;
  this->loop().after(0.03, [&] { order += "c"; });
  this->loop().after(0.01, [&] { order += "a"; });
  this->loop().after(0.02, [&] { order += "b"; });
  this->subject.holdUp(0.05);
  this->subject.runWhatIsDue();
  EXPECT_EQ(order, "abc");
}

TYPED_TEST_P(RunLoopContract, TheClockNeverGoesBack) {
  double last = this->now();
  int runs = 0;
  const auto note = [&] {
    EXPECT_GE(this->now(), last);
    last = this->now();
    ++runs;
  };
  for (const double delay : {0.01, 0.0, -5.0})
    this->loop().after(delay, note);
  ASSERT_TRUE(this->subject.runUntil([&] { return runs == 3; }));
}

TYPED_TEST_P(RunLoopContract, WhatABlockHoldsIsLetGoWhenItHasRun) {
  auto held = std::make_shared<int>(0);
  this->loop().after(0, [held] { ++*held; });
  this->subject.runWhatIsDue();
  EXPECT_EQ(*held, 1);
  EXPECT_EQ(held.use_count(), 1);
}

TYPED_TEST_P(RunLoopContract, FramesComeOneByOneWhileTheRegistrationLives) {
  std::vector<double> times;
  const double start = this->now();
  auto frames = this->loop().onEveryFrame([&] { times.push_back(this->now() - start); });
  EXPECT_TRUE(times.empty());
  ASSERT_TRUE(this->subject.runUntil([&] { return times.size() >= 4; }));
  for (std::size_t i = 1; i < times.size(); ++i)
    EXPECT_GT(times[i], times[i - 1]);
  const std::size_t count = times.size();
  frames.reset();
  this->subject.holdUp(0.05);
  this->subject.runWhatIsDue();
  EXPECT_EQ(times.size(), count);
}

TYPED_TEST_P(RunLoopContract, NothingWakesTheLoopWhenNobodyWantsFrames) {
  EXPECT_FALSE(this->subject.wouldWake());
  auto frames = this->loop().onEveryFrame([] {});
  auto others = this->loop().onEveryFrame([] {});
  EXPECT_TRUE(this->subject.wouldWake());
  frames.reset();
  EXPECT_TRUE(this->subject.wouldWake());
  others.reset();
  EXPECT_FALSE(this->subject.wouldWake());
}

TYPED_TEST_P(RunLoopContract, AFrameBlockMayEndItselfAndOthersAndBeginNewOnes) {
  int own = 0;
  int other = 0;
  int later = 0;
  Registration first;
  Registration second;
  Registration third;
  first = this->loop().onEveryFrame([&] {
    ++own;
    first.reset();
    second.reset();
    third = this->loop().onEveryFrame([&] { ++later; });
  });
  second = this->loop().onEveryFrame([&] { ++other; });
  ASSERT_TRUE(this->subject.runUntil([&] { return later >= 2; }));
  EXPECT_EQ(own, 1);
  EXPECT_EQ(other, 0);
}

TYPED_TEST_P(RunLoopContract, FramesBeginAgainAfterTheLastOneEndedInsideAFrame) {
  int first = 0;
  int second = 0;
  Registration frames;
  frames = this->loop().onEveryFrame([&] {
    ++first;
    frames.reset();
  });
  ASSERT_TRUE(this->subject.runUntil([&] { return first == 1; }));
  EXPECT_FALSE(this->subject.wouldWake());
  frames = this->loop().onEveryFrame([&] { ++second; });
  ASSERT_TRUE(this->subject.runUntil([&] { return second >= 2; }));
  EXPECT_EQ(first, 1);
}

TYPED_TEST_P(RunLoopContract, FramesAreLeftOutWhileTheLoopIsHeldUp) {
  int count = 0;
  const auto frames = this->loop().onEveryFrame([&] { ++count; });
  this->subject.holdUp(0.1);
  this->subject.runWhatIsDue();
  EXPECT_GE(count, 1);
  EXPECT_LE(count, 2) << "no catching up";
}

REGISTER_TYPED_TEST_SUITE_P(
    RunLoopContract, ADelayedBlockRunsOnceAndNotBeforeItsTime,
    ABlockWithoutDelayRunsInTheNextTurnAndNeverInsideTheCall, ABlockThatIsAskedForInsideAnotherRunsAfterIt,
    BlocksRunInTheOrderOfTheirTimeAndThenOfTheirAsking, BlocksKeepTheirOrderWhenTheLoopWasHeldUpPastAllOfThem,
    TheClockNeverGoesBack, WhatABlockHoldsIsLetGoWhenItHasRun, FramesComeOneByOneWhileTheRegistrationLives,
    NothingWakesTheLoopWhenNobodyWantsFrames, AFrameBlockMayEndItselfAndOthersAndBeginNewOnes,
    FramesBeginAgainAfterTheLastOneEndedInsideAFrame, FramesAreLeftOutWhileTheLoopIsHeldUp);

} // namespace orbel::contracts
