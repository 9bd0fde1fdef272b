// Pictures of the screen, taken of a wallpaper with a colour of its own at each place.
#include "backends/x11/CompositorWatch.h"
#include "backends/x11/Connection.h"
#include "backends/x11/RootSnapshot.h"
#include "backends/x11/SharedPixels.h"
#include "tests/backends/qt/TestDisplay.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <optional>

namespace orbel::qt {
namespace {

using test::Rgb;
using test::Wallpaper;

class RootSnapshotOnDisplay : public testing::Test {
protected:
  void SetUp() override {
    if (!testDisplay()) FAIL() << "needs the round with a display";
    connection = x11::Connection::open();
    ASSERT_TRUE(connection);
    sharedPixels.emplace(*connection);
  }
  static Rgb at(const x11::RootSnapshot& snapshot, int x, int y) {
    const common::DeviceRect& rect = snapshot.rect();
    const std::uint32_t pixel = snapshot.pixels()[(y - rect.y) * rect.width + (x - rect.x)];
    EXPECT_EQ(pixel >> 24, 0xffu);
    return {static_cast<std::uint8_t>(pixel >> 16), static_cast<std::uint8_t>(pixel >> 8),
            static_cast<std::uint8_t>(pixel)};
  }

  std::unique_ptr<x11::Connection> connection;
  std::optional<x11::SharedPixelsStore> sharedPixels;
};

TEST_F(RootSnapshotOnDisplay, HoldsTheScreensPixels) {
  x11::RootSnapshot snapshot(*connection, *sharedPixels);
  EXPECT_TRUE(snapshot.isEmpty());
  ASSERT_TRUE(snapshot.capture({200, 300, 101, 57}));
  EXPECT_EQ(at(snapshot, 200, 300), Wallpaper::colorAt({200, 300}));
  EXPECT_EQ(at(snapshot, 300, 356), Wallpaper::colorAt({300, 356}));
}

TEST_F(RootSnapshotOnDisplay, BeyondTheScreenTheLastPixelsRepeat) {
  x11::RootSnapshot snapshot(*connection, *sharedPixels);
  ASSERT_TRUE(snapshot.capture({-50, 1000, 120, 60}));
  EXPECT_EQ(snapshot.rect(), (common::DeviceRect{-50, 1000, 120, 60}));
  EXPECT_EQ(at(snapshot, -50, 1000), Wallpaper::colorAt({0, 1000}));
  EXPECT_EQ(at(snapshot, 69, 1010), Wallpaper::colorAt({69, 1010}));
  EXPECT_EQ(at(snapshot, -20, 1059), Wallpaper::colorAt({0, 1023}));
  ASSERT_TRUE(snapshot.capture({1270, -30, 40, 50}));
  EXPECT_EQ(at(snapshot, 1309, -30), Wallpaper::colorAt({1279, 0}));
  EXPECT_EQ(at(snapshot, 1272, 10), Wallpaper::colorAt({1272, 10}));
}

TEST_F(RootSnapshotOnDisplay, WhollyOffTheScreenThereIsNothing) {
  x11::RootSnapshot snapshot(*connection, *sharedPixels);
  EXPECT_FALSE(snapshot.capture({-500, 10, 100, 100}));
  EXPECT_TRUE(snapshot.isEmpty());
}

TEST_F(RootSnapshotOnDisplay, APatchReplacesWhatBothCover) {
  x11::RootSnapshot older(*connection, *sharedPixels);
  ASSERT_TRUE(older.capture({100, 100, 50, 50}));
  std::fill_n(older.pixels(), 50 * 50, 0xff00ff00);
  x11::RootSnapshot newer(*connection, *sharedPixels);
  ASSERT_TRUE(newer.capture({120, 130, 60, 60}));
  newer.patchFrom(older);
  EXPECT_EQ(at(newer, 120, 130), (Rgb{0, 255, 0}));
  EXPECT_EQ(at(newer, 149, 149), (Rgb{0, 255, 0}));
  EXPECT_EQ(at(newer, 150, 149), Wallpaper::colorAt({150, 149}));
  EXPECT_EQ(at(newer, 149, 150), Wallpaper::colorAt({149, 150}));
}

TEST_F(RootSnapshotOnDisplay, APatchFromElsewhereOrFromNothingChangesNothing) {
  x11::RootSnapshot older(*connection, *sharedPixels);
  x11::RootSnapshot newer(*connection, *sharedPixels);
  ASSERT_TRUE(newer.capture({120, 130, 60, 60}));
  newer.patchFrom(older);
  ASSERT_TRUE(older.capture({500, 500, 10, 10}));
  newer.patchFrom(older);
  EXPECT_EQ(at(newer, 120, 130), Wallpaper::colorAt({120, 130}));
}

TEST_F(RootSnapshotOnDisplay, AReleasedOneIsEmptyAndCanBeUsedAgain) {
  x11::RootSnapshot snapshot(*connection, *sharedPixels);
  ASSERT_TRUE(snapshot.capture({0, 0, 10, 10}));
  snapshot.release();
  EXPECT_TRUE(snapshot.isEmpty());
  ASSERT_TRUE(snapshot.capture({600, 600, 10, 10}));
  EXPECT_EQ(at(snapshot, 600, 600), Wallpaper::colorAt({600, 600}));
}

TEST_F(RootSnapshotOnDisplay, MemoryOfAnEarlierOneShowsNothingOfIt) {
  x11::RootSnapshot larger(*connection, *sharedPixels);
  ASSERT_TRUE(larger.capture({0, 0, 100, 100}));
  std::fill_n(larger.pixels(), 100 * 100, 0xff00ff00);
  larger.release();
  x11::RootSnapshot smaller(*connection, *sharedPixels);
  ASSERT_TRUE(smaller.capture({-10, -10, 60, 60}));
  EXPECT_EQ(at(smaller, -10, -10), Wallpaper::colorAt({0, 0}));
  EXPECT_EQ(at(smaller, 49, 49), Wallpaper::colorAt({49, 49}));
}

class SharedPixelsOnDisplay : public RootSnapshotOnDisplay {};

TEST_F(SharedPixelsOnDisplay, APieceThatWasGivenBackServesTheNextReaderThatItIsLargeEnoughFor) {
  auto piece = sharedPixels->take(1000);
  ASSERT_TRUE(piece);
  const auto segment = piece->segment();
  sharedPixels->giveBack(std::move(piece));
  auto smaller = sharedPixels->take(500);
  ASSERT_TRUE(smaller);
  EXPECT_EQ(smaller->segment(), segment);
  auto second = sharedPixels->take(500);
  ASSERT_TRUE(second);
  EXPECT_NE(second->segment(), segment);
  sharedPixels->giveBack(std::move(smaller));
  EXPECT_GE(sharedPixels->take(1001)->pixelCount(), 1001u);
}

TEST_F(SharedPixelsOnDisplay, TheLargestOfTheUnusedPiecesIsKept) {
  auto large = sharedPixels->take(2000);
  auto small = sharedPixels->take(10);
  const auto segment = large->segment();
  sharedPixels->giveBack(std::move(large));
  sharedPixels->giveBack(std::move(small));
  EXPECT_EQ(sharedPixels->take(2000)->segment(), segment);
}

class CompositorWatchOnDisplay : public RootSnapshotOnDisplay {};

TEST_F(CompositorWatchOnDisplay, ACompositorIsSeenComingAndGoing) {
  int changes = 0;
  x11::CompositorWatch watch(*connection, [&] { ++changes; });
  EXPECT_FALSE(watch.isCompositing());
  {
    // Its selection falls free when its program ends.
    test::DisplayConnection compositor(testDisplay()->environment().at("DISPLAY"));
    const xcb_window_t window = xcb_generate_id(compositor.get());
    xcb_create_window(compositor.get(), 0, window, compositor.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(compositor.get(), window, compositor.atom("_NET_WM_CM_S0"), XCB_CURRENT_TIME);
    compositor.roundTrip();
    ASSERT_TRUE(becomesTrue([&] { return watch.isCompositing(); }, "it has come"));
    EXPECT_EQ(changes, 1);
    x11::CompositorWatch latecomer(*connection, {});
    EXPECT_TRUE(latecomer.isCompositing());
  }
  EXPECT_TRUE(becomesTrue([&] { return !watch.isCompositing(); }, "it has gone"));
  EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace orbel::qt
