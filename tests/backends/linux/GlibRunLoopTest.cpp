#include "backends/linux/GlibRunLoop.h"

#include "Waiting.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel {
namespace {

// Milliseconds until the main context would wake by itself; -1 for never.
int nextWakeUp() {
  runReadySources();
  GMainContext* context = g_main_context_default();
  if (!g_main_context_acquire(context)) return -2;
  int priority = 0;
  int timeout = 0;
  GPollFD descriptors[64];
  g_main_context_prepare(context, &priority);
  g_main_context_query(context, G_MAXINT, &timeout, descriptors, 64);
  g_main_context_release(context);
  return timeout;
}

TEST(GlibRunLoop, RunsADelayedBlockOnceAndNotBeforeItsTime) {
  GlibRunLoop loop;
  const double start = loop.clock().now();
  std::vector<double> runs;
  loop.after(0.02, [&] { runs.push_back(loop.clock().now() - start); });
  EXPECT_TRUE(runs.empty());
  ASSERT_TRUE(waitUntil([&] { return !runs.empty(); }));
  EXPECT_GE(runs[0], 0.02);
  EXPECT_EQ(nextWakeUp(), -1);
  EXPECT_EQ(runs.size(), 1u);
}

TEST(GlibRunLoop, RunsABlockWithoutDelayInTheNextTurnAndNotInsideTheCall) {
  GlibRunLoop loop;
  bool hasRun = false;
  loop.after(0, [&] { hasRun = true; });
  EXPECT_FALSE(hasRun);
  runReadySources();
  EXPECT_TRUE(hasRun);
}

TEST(GlibRunLoop, RunsDelaysInTheOrderOfTheirTime) {
  GlibRunLoop loop;
  std::string order;
  loop.after(0.03, [&] { order += "c"; });
  loop.after(-1, [&] { order += "a"; });
  loop.after(0.01, [&] { order += "b"; });
  ASSERT_TRUE(waitUntil([&] { return order.size() == 3; }));
  EXPECT_EQ(order, "abc");
}

TEST(GlibRunLoop, TakesADelayThatNeverComesWithoutRunningIt) {
  GlibRunLoop loop;
  bool hasRun = false;
  loop.after(1e300, [&] { hasRun = true; });
  runReadySources();
  EXPECT_FALSE(hasRun);
}

TEST(GlibRunLoop, DropsPendingBlocksWhenItEnds) {
  auto held = std::make_shared<int>(0);
  {
    GlibRunLoop loop;
    loop.after(0, [held] { ++*held; });
    EXPECT_EQ(held.use_count(), 2);
  }
  runReadySources();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
}

TEST(GlibRunLoop, DropsPendingBlocksWhenToldToAndTakesNewOnes) {
  GlibRunLoop loop;
  auto held = std::make_shared<int>();
  const std::weak_ptr<int> watched = held;
  loop.after(0.01, [held = std::move(held)] { ADD_FAILURE() << "a dropped block runs"; });
  loop.dropPending();
  EXPECT_TRUE(watched.expired());
  bool ran = false;
  loop.after(0.02, [&] { ran = true; });
  EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(GlibRunLoop, MayEndInsideABlock) {
  auto loop = std::make_unique<GlibRunLoop>();
  bool hasRunLater = false;
  loop->after(0, [&] { loop.reset(); });
  loop->after(0, [&] { hasRunLater = true; });
  runReadySources();
  EXPECT_EQ(loop, nullptr);
  EXPECT_FALSE(hasRunLater);
}

TEST(GlibRunLoop, RunsFramesOnARasterOfASixtiethOfASecondWithoutDrift) {
  GlibRunLoop loop;
  std::vector<double> times;
  const double start = loop.clock().now();
  const auto frames = loop.onEveryFrame([&] { times.push_back(loop.clock().now() - start); });
  ASSERT_TRUE(waitUntil([&] { return times.size() >= 30; }));
  // A loaded machine leaves frames out, but every one that runs has its own place and is never early.
  double earlier = 0;
  for (const double time : times) {
    const double place = std::floor(time * GlibRunLoop::kFramesPerSecond + 1e-3);
    EXPECT_GT(place, earlier) << "at " << time;
    earlier = place;
  }
}

TEST(GlibRunLoop, LeavesFramesOutThatComeTooLateInsteadOfCatchingUp) {
  GlibRunLoop loop;
  int count = 0;
  const double start = loop.clock().now();
  const auto frames = loop.onEveryFrame([&] { ++count; });
  while (loop.clock().now() - start < 0.1) {
  }
  runReadySources();
  EXPECT_LE(count, 2);
  EXPECT_GE(count, 1);
}

TEST(GlibRunLoop, DoesNotWakeWhenNobodyWantsFrames) {
  GlibRunLoop loop;
  EXPECT_EQ(nextWakeUp(), -1);
  auto frames = loop.onEveryFrame([] {});
  auto others = loop.onEveryFrame([] {});
  EXPECT_GE(nextWakeUp(), 0);
  EXPECT_LE(nextWakeUp(), 17);
  frames.reset();
  EXPECT_GE(nextWakeUp(), 0);
  others.reset();
  EXPECT_EQ(nextWakeUp(), -1);
}

TEST(GlibRunLoop, LetsFrameBlocksEndThemselvesAndBeginOthers) {
  GlibRunLoop loop;
  int own = 0;
  int later = 0;
  int neverAgain = 0;
  Registration first;
  Registration second;
  Registration third;
  first = loop.onEveryFrame([&] {
    ++own;
    first.reset();
    second.reset();
    third = loop.onEveryFrame([&] { ++later; });
  });
  second = loop.onEveryFrame([&] { ++neverAgain; });
  ASSERT_TRUE(waitUntil([&] { return later >= 2; }));
  EXPECT_EQ(own, 1);
  EXPECT_EQ(neverAgain, 0);
}

TEST(GlibRunLoop, BeginsAgainAfterTheLastFrameBlockEndedInsideAFrame) {
  GlibRunLoop loop;
  int first = 0;
  int second = 0;
  Registration frames;
  frames = loop.onEveryFrame([&] {
    ++first;
    frames.reset();
  });
  ASSERT_TRUE(waitUntil([&] { return first == 1; }));
  EXPECT_EQ(nextWakeUp(), -1);
  frames = loop.onEveryFrame([&] { ++second; });
  ASSERT_TRUE(waitUntil([&] { return second >= 2; }));
  EXPECT_EQ(first, 1);
}

TEST(GlibRunLoop, KeepsFramesRunningInALoopThatAFrameStarted) {
  GlibRunLoop loop;
  int outer = 0;
  int others = 0;
  bool sawOthers = false;
  const auto counting = loop.onEveryFrame([&] { ++others; });
  const auto nesting = loop.onEveryFrame([&] {
    if (outer++ > 0) return;
    const int before = others;
    sawOthers = waitUntil([&] { return others >= before + 2; });
  });
  ASSERT_TRUE(waitUntil([&] { return outer > 0; }));
  EXPECT_TRUE(sawOthers);
}

TEST(GlibRunLoop, LetsRegistrationsOutliveIt) {
  std::optional<GlibRunLoop> loop(std::in_place);
  auto frames = loop->onEveryFrame([] {});
  loop.reset();
  EXPECT_EQ(nextWakeUp(), -1);
  frames.reset();
}

} // namespace
} // namespace orbel
