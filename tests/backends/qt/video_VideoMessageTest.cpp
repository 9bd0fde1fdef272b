#include "protocols/video/VideoMessage.h"

#include <gtest/gtest.h>

namespace orbel::qt {
namespace {

QByteArray frameBytes(std::uint32_t width, std::uint32_t height, char pixelByte) {
  return VideoMessage::frameHeader(width, height) +
         QByteArray(static_cast<qsizetype>(width) * height * 4, pixelByte);
}

TEST(VideoMessageTest, AFrameComesOutAsItWentIn) {
  VideoMessageReader reader;
  reader.add(frameBytes(3, 2, '\x7f'));
  const auto message = reader.next();
  ASSERT_TRUE(message);
  EXPECT_EQ(message->kind, VideoMessage::Kind::frame);
  EXPECT_EQ(message->frame.width, 3);
  EXPECT_EQ(message->frame.height, 2);
  EXPECT_EQ(message->frame.pixels, std::vector<std::uint32_t>(6, 0x7f7f7f7f));
  EXPECT_FALSE(reader.next());
}

TEST(VideoMessageTest, BytesMayComeOneByOne) {
  const QByteArray all = frameBytes(2, 2, 'a') + VideoMessage::playedToEndBytes() + frameBytes(1, 1, 'b');
  VideoMessageReader reader;
  std::vector<VideoMessage::Kind> kinds;
  for (const char byte : all) {
    reader.add(QByteArray(1, byte));
    while (const auto message = reader.next())
      kinds.push_back(message->kind);
  }
  EXPECT_EQ(kinds, (std::vector{VideoMessage::Kind::frame, VideoMessage::Kind::playedToEnd,
                                VideoMessage::Kind::frame}));
  EXPECT_FALSE(reader.isBroken());
}

TEST(VideoMessageTest, WhatIsNoMessageBreaksTheReaderForGood) {
  const std::vector<QByteArray> nonsense{QByteArray("twelve bytes"), VideoMessage::frameHeader(0, 5),
                                         VideoMessage::frameHeader(5, 0),
                                         VideoMessage::frameHeader(0xffffffff, 0xffffffff),
                                         VideoMessage::frameHeader(VideoMessage::kLargestSide + 1, 1)};
  for (const QByteArray& bytes : nonsense) {
    VideoMessageReader reader;
    reader.add(bytes);
    EXPECT_FALSE(reader.next());
    EXPECT_TRUE(reader.isBroken());
    reader.add(VideoMessage::playedToEndBytes());
    EXPECT_FALSE(reader.next());
  }
}

TEST(VideoMessageTest, AShortBeginningIsNotBrokenYet) {
  VideoMessageReader reader;
  reader.add(VideoMessage::frameHeader(10, 10).left(11));
  EXPECT_FALSE(reader.next());
  EXPECT_FALSE(reader.isBroken());
}

} // namespace
} // namespace orbel::qt
