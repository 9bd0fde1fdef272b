// The help's video through the real video program, and through programs that are none.
#include "backends/qt/video/QtVideoPlayerFactory.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace orbel::qt {
namespace {

constexpr int kPatience = 20000; // milliseconds

class QtVideoPlayerFactoryTest : public testing::Test {
protected:
  VideoPlayerHandlers handlers() {
    return {.frameReady =
                [this](ImagePointer frame) {
                  ++frames;
                  lastFrame = std::move(frame);
                },
            .didPlayToEnd = [this] { ++ends; }};
  }
  std::unique_ptr<VideoPlayer> load(QtVideoPlayerFactory& players, const std::string& resource) {
    auto player = players.load(resource, "mp4", handlers());
    EXPECT_TRUE(player) << player.cause();
    return std::move(player).valueOr(nullptr);
  }
  static bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatience);
  }
  // Which media libraries this very process has loaded.
  static bool hasMediaLibraries() {
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libQt6Multimedia");
  }

  int frames = 0;
  int ends = 0;
  ImagePointer lastFrame;
  test::LogCapture log;
};

TEST_F(QtVideoPlayerFactoryTest, TheHelpsVideoPlaysToItsEndAndAgainFromItsStart) {
  QtVideoPlayerFactory players(QStringLiteral(ORBEL_VIDEO_PROGRAM));
  const auto player = load(players, "ThreeFingerRest");
  ASSERT_NE(player, nullptr);
  player->seekToStart();
  player->play();
  ASSERT_TRUE(waitFor([&] { return frames > 3; }));
  EXPECT_EQ(lastFrame->size(), Size(282, 360));
  ASSERT_TRUE(waitFor([&] { return ends == 1; }));
  const int framesOfTheFirstTime = frames;
  player->seekToStart();
  player->play();
  EXPECT_TRUE(waitFor([&] { return frames > framesOfTheFirstTime + 3; }));
  EXPECT_TRUE(log.lines.empty());
  EXPECT_FALSE(hasMediaLibraries());
}

TEST_F(QtVideoPlayerFactoryTest, NothingComesBeforeItPlays) {
  QtVideoPlayerFactory players(QStringLiteral(ORBEL_VIDEO_PROGRAM));
  const auto quiet = load(players, "ThreeFingerRest");
  int others = 0;
  const auto playing = players.load("ThreeFingerRest", "mp4", {[&](ImagePointer) { ++others; }, {}});
  ASSERT_TRUE(playing) << playing.cause();
  (*playing)->play();
  ASSERT_TRUE(waitFor([&] { return others > 5; }));
  EXPECT_EQ(ends, 0);
  EXPECT_LE(frames, 1); // a player may show where it stands
}

TEST_F(QtVideoPlayerFactoryTest, WithoutTheProgramThereIsNoPlayer) {
  QtVideoPlayerFactory players(QStringLiteral("/nowhere/orbelmenu-video"));
  EXPECT_EQ(players.load("ThreeFingerRest", "mp4", handlers()).cause(),
            "the video ThreeFingerRest.mp4 is shown as a still picture: there is no program "
            "/nowhere/orbelmenu-video");
  EXPECT_TRUE(log.lines.empty()) << "whoever asked logs it";
}

TEST_F(QtVideoPlayerFactoryTest, AVideoThatTheProgramCannotPlayIsLoggedOnce) {
  QtVideoPlayerFactory players(QStringLiteral(ORBEL_VIDEO_PROGRAM));
  const auto player = load(players, "Missing");
  ASSERT_NE(player, nullptr);
  ASSERT_TRUE(waitFor([&] { return !log.lines.empty(); }));
  EXPECT_EQ(log.lines.size(), 1u);
  EXPECT_TRUE(log.has("there is no video \"Missing.mp4\""));
  EXPECT_EQ(frames, 0);
  // Harmless afterwards.
  player->play();
}

TEST_F(QtVideoPlayerFactoryTest, WithoutAMediaPluginThereIsALineInTheLogAndNoFrame) {
  const test::TemporaryDirectory folder("orbel-video");
  const auto program = folder.path() / "without-plugin";
  std::ofstream(program) << "#!/bin/sh\nQT_MEDIA_BACKEND=none exec " << ORBEL_VIDEO_PROGRAM << " \"$@\"\n";
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  QtVideoPlayerFactory players(QString::fromStdString(program.string()));
  const auto player = load(players, "ThreeFingerRest");
  ASSERT_NE(player, nullptr);
  player->play();
  ASSERT_TRUE(waitFor([&] { return !log.lines.empty(); }));
  EXPECT_EQ(log.lines.size(), 1u);
  EXPECT_TRUE(log.has("ThreeFingerRest.mp4 is shown as a still picture: QtMultimedia is not"));
  EXPECT_EQ(frames, 0);
}

TEST_F(QtVideoPlayerFactoryTest, AProgramThatTalksNonsenseIsEndedAndLogged) {
  QtVideoPlayerFactory players(QStringLiteral("/bin/echo"));
  const auto player = load(players, "ThreeFingerRest");
  ASSERT_TRUE(waitFor([&] { return !log.lines.empty(); }));
  EXPECT_TRUE(log.has("does not speak our language"));
  EXPECT_EQ(frames, 0);
  EXPECT_EQ(ends, 0);
}

TEST_F(QtVideoPlayerFactoryTest, AStillPictureStandsInAtAnyScale) {
  QtVideoPlayerFactory players(QString{});
  const auto still = players.still("ThreeFingerRest", {282, 360});
  ASSERT_NE(still, nullptr);
  EXPECT_EQ(still->size(), Size(282, 360));
  const Bitmap& large = still->representation(564, 720);
  EXPECT_EQ(large.width, 564);
  EXPECT_EQ(large.height, 720);
  EXPECT_EQ(large.pixels.front() >> 24, 255u);
  EXPECT_NE(large.pixels.front(), large.pixels.back());
  EXPECT_EQ(players.still("Missing", {282, 360}), nullptr);
}

} // namespace
} // namespace orbel::qt
