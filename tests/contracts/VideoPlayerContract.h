// What every VideoPlayerFactory and its players keep to.
//
// Subject: the players of a program that has one video of a few seconds, "ThreeFingerRest.mp4", with a still
// picture, and neither for the resource "Missing".
//   VideoPlayerFactory& players();
//   bool runUntil(std::function<bool()> condition);  lets the program run, and with it what plays; false when
//                                                    it does not come to hold
#pragma once

#include "platform/VideoPlayer.h"
#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orbel::contracts {

template <class Subject>
class VideoPlayerContract : public testing::Test {
protected:
  // Whether there is a player.
  bool load(const std::string& resource) {
    auto loaded = subject.players().load(resource, "mp4",
                                         {.frameReady =
                                              [this](ImagePointer frame) {
                                                EXPECT_FALSE(isCalling);
                                                ++frames;
                                                lastFrame = std::move(frame);
                                                if (endsAtFrame) player.reset();
                                              },
                                          .didPlayToEnd =
                                              [this] {
                                                EXPECT_FALSE(isCalling);
                                                ++ends;
                                                if (endsAtEnd) player.reset();
                                              }});
    EXPECT_EQ(loaded.cause().empty(), loaded.succeeded());
    player = std::move(loaded).valueOr(nullptr);
    return player != nullptr;
  }
  void playFromStart() {
    isCalling = true;
    player->seekToStart();
    player->play();
    isCalling = false;
  }
  Subject subject;
  test::LogCapture log;
  std::unique_ptr<VideoPlayer> player;
  bool isCalling = false;
  int frames = 0;
  int ends = 0;
  ImagePointer lastFrame;
  bool endsAtFrame = false;
  bool endsAtEnd = false;
};

TYPED_TEST_SUITE_P(VideoPlayerContract);

TYPED_TEST_P(VideoPlayerContract, AVideoPlaysToItsEndAndAgainFromItsStart) {
  ASSERT_TRUE(this->load("ThreeFingerRest"));
  for (int time = 1; time <= 2; ++time) {
    this->frames = 0;
    this->playFromStart();
    ASSERT_TRUE(this->subject.runUntil([&] { return this->ends == time; }));
    EXPECT_GT(this->frames, 1);
    ASSERT_TRUE(this->lastFrame);
    EXPECT_GT(this->lastFrame->size().width, 0);
  }
}

TYPED_TEST_P(VideoPlayerContract, APlayerMayEndAtAFrameAndNothingComesAfterIt) {
  this->endsAtFrame = true;
  ASSERT_TRUE(this->load("ThreeFingerRest"));
  this->playFromStart();
  ASSERT_TRUE(this->subject.runUntil([&] { return this->frames > 0; }));
  EXPECT_FALSE(this->player);
  EXPECT_EQ(this->frames, 1);
  EXPECT_EQ(this->ends, 0);
}

TYPED_TEST_P(VideoPlayerContract, APlayerMayEndAtItsEnd) {
  this->endsAtEnd = true;
  ASSERT_TRUE(this->load("ThreeFingerRest"));
  this->playFromStart();
  ASSERT_TRUE(this->subject.runUntil([&] { return this->ends > 0; }));
  EXPECT_FALSE(this->player);
  EXPECT_EQ(this->ends, 1);
}

TYPED_TEST_P(VideoPlayerContract, WhatCannotBePlayedBringsNoFrame) {
  // It may show at once or only later, and then in the log.
  if (this->load("Missing")) {
    this->playFromStart();
    EXPECT_TRUE(this->subject.runUntil([&] { return !this->log.lines.empty(); }));
    EXPECT_EQ(this->log.lines.size(), 1u);
  }
  EXPECT_EQ(this->frames, 0);
  EXPECT_EQ(this->ends, 0);
}

TYPED_TEST_P(VideoPlayerContract, TheStillPictureHasTheSizeThatIsAskedForAndMayBeMissing) {
  const ImagePointer still = this->subject.players().still("ThreeFingerRest", {282, 360});
  ASSERT_TRUE(still);
  EXPECT_EQ(still->size(), Size(282, 360));
  EXPECT_FALSE(this->subject.players().still("Missing", {282, 360}));
}

REGISTER_TYPED_TEST_SUITE_P(VideoPlayerContract, AVideoPlaysToItsEndAndAgainFromItsStart,
                            APlayerMayEndAtAFrameAndNothingComesAfterIt, APlayerMayEndAtItsEnd,
                            WhatCannotBePlayedBringsNoFrame,
                            TheStillPictureHasTheSizeThatIsAskedForAndMayBeMissing);

} // namespace orbel::contracts
