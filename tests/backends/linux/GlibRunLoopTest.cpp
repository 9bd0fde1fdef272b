#include "backends/linux/GlibRunLoop.h"

#include "tests/support/glib/MainLoop.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orbel::linux {
namespace {

TEST(GlibRunLoop, TakesADelayThatNeverComesWithoutRunningIt) {
  GlibRunLoop loop;
  bool hasRun = false;
  loop.after(1e300, [&] { hasRun = true; });
  test::iterateWhatIsPending();
  EXPECT_FALSE(hasRun);
}

TEST(GlibRunLoop, DropsPendingBlocksWhenItEnds) {
  auto held = std::make_shared<int>(0);
  {
    GlibRunLoop loop;
    loop.after(0, [held] { ++*held; });
    EXPECT_EQ(held.use_count(), 2);
  }
  test::iterateWhatIsPending();
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
  EXPECT_TRUE(test::iterateUntil([&] { return ran; }));
}

TEST(GlibRunLoop, MayEndInsideABlock) {
  auto loop = std::make_unique<GlibRunLoop>();
  bool hasRunLater = false;
  loop->after(0, [&] { loop.reset(); });
  loop->after(0, [&] { hasRunLater = true; });
  test::iterateWhatIsPending();
  EXPECT_EQ(loop, nullptr);
  EXPECT_FALSE(hasRunLater);
}

TEST(GlibRunLoop, RunsFramesOnARasterOfASixtiethOfASecondWithoutDrift) {
  GlibRunLoop loop;
  std::vector<double> times;
  const double start = loop.clock().now();
  const auto frames = loop.onEveryFrame([&] { times.push_back(loop.clock().now() - start); });
  ASSERT_TRUE(test::iterateUntil([&] { return times.size() >= 30; }));
  // A loaded machine leaves frames out, but every one that runs has its own place and is never early.
  double earlier = 0;
  for (const double time : times) {
    const double place = std::floor(time * GlibRunLoop::kFramesPerSecond + 1e-3);
    EXPECT_GT(place, earlier) << "at " << time;
    earlier = place;
  }
}

TEST(GlibRunLoop, RunsDelaysInALoopThatABlockStarted) {
  GlibRunLoop loop;
  std::string order;
  loop.after(0, [&] {
    loop.after(0.01, [&] { order += "later "; });
    EXPECT_TRUE(test::iterateUntil([&] { return order == "waiting later "; }));
    order += "outer";
  });
  loop.after(0, [&] { order += "waiting "; });
  ASSERT_TRUE(test::iterateUntil([&] { return order.ends_with("outer"); }));
  EXPECT_EQ(order, "waiting later outer");
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
    sawOthers = test::iterateUntil([&] { return others >= before + 2; });
  });
  ASSERT_TRUE(test::iterateUntil([&] { return outer > 0; }));
  EXPECT_TRUE(sawOthers);
}

TEST(GlibRunLoop, LetsRegistrationsOutliveIt) {
  std::optional<GlibRunLoop> loop(std::in_place);
  auto frames = loop->onEveryFrame([] {});
  loop.reset();
  EXPECT_EQ(test::nextWakeUp(), -1);
  frames.reset();
}

} // namespace
} // namespace orbel::linux
