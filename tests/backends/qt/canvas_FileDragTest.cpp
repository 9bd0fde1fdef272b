#include "backends/qt/windows/FileDrag.h"

#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <QSysInfo>

namespace orbel::qt {
namespace {

using Paths = std::optional<std::vector<std::string>>;

Paths pathsOf(const QByteArray& uriList) {
  QMimeData data;
  data.setData(QStringLiteral("text/uri-list"), uriList);
  return FileDrag(data).filePaths();
}

TEST(FileDragTest, LocalFilesComeInTheOrderOfTheDrag) {
  EXPECT_EQ(pathsOf("file:///b\r\nfile:///a/c\r\n"), (Paths{{"/b", "/a/c"}}));
}

TEST(FileDragTest, EscapedBytesAreDecoded) {
  EXPECT_EQ(pathsOf("file:///with%20space/%C3%A4%23%25.txt\r\n"), (Paths{{"/with space/\xC3\xA4#%.txt"}}));
}

TEST(FileDragTest, ANameThatIsNoTextKeepsItsBytes) {
  EXPECT_EQ(pathsOf("file:///%FF%FE\r\n"), (Paths{{"/\xFF\xFE"}}));
}

TEST(FileDragTest, ThisMachineMayBeNamed) {
  const QByteArray host = QSysInfo::machineHostName().toUtf8();
  EXPECT_EQ(pathsOf("file://localhost/a\r\nfile://" + host + "/b\r\nfile:/c\r\nFILE:///d\r\n"),
            (Paths{{"/a", "/b", "/c", "/d"}}));
}

TEST(FileDragTest, WhatIsNotOnThisMachineIsLeftOutAndLogged) {
  test::LogCapture log;
  EXPECT_EQ(pathsOf("https://example.org/x\r\nfile://elsewhere.example/a\r\nfile:///here\r\nnonsense\r\n"),
            (Paths{{"/here"}}));
  EXPECT_TRUE(log.has("https://example.org/x"));
  EXPECT_TRUE(log.has("elsewhere.example"));
  EXPECT_TRUE(log.has("nonsense"));
}

TEST(FileDragTest, AZeroByteInAPathIsRefused) {
  test::LogCapture log;
  EXPECT_EQ(pathsOf("file:///etc%00/passwd\r\nfile:///a\r\n"), (Paths{{"/a"}}));
}

TEST(FileDragTest, AListWithoutALocalFileIsNoneAndIsLogged) {
  test::LogCapture log;
  EXPECT_EQ(pathsOf("https://example.org/x\r\n"), Paths());
  EXPECT_TRUE(log.has("https://example.org/x"));
  EXPECT_EQ(pathsOf(""), Paths());
}

TEST(FileDragTest, CommentsAndEmptyLinesAreNoFiles) {
  test::LogCapture log;
  EXPECT_EQ(pathsOf("# from somewhere\r\n\r\nfile:///a\n"), (Paths{{"/a"}}));
  EXPECT_TRUE(log.lines.empty());
}

TEST(FileDragTest, ADragWithoutAListOfFilesHasNone) {
  QMimeData data;
  data.setText(QStringLiteral("file:///a"));
  EXPECT_FALSE(FileDrag(data).filePaths().has_value());
}

TEST(FileDragTest, OnlyAnOfferedActionIsAnsweredAndNeverAMove) {
  const Qt::DropActions all = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  EXPECT_EQ(FileDrag::answer(DragOperation::copy, all), Qt::CopyAction);
  EXPECT_EQ(FileDrag::answer(DragOperation::link, all), Qt::LinkAction);
  EXPECT_EQ(FileDrag::answer(DragOperation::none, all), Qt::IgnoreAction);
  EXPECT_EQ(FileDrag::answer(DragOperation::copy, Qt::MoveAction | Qt::LinkAction), Qt::LinkAction);
  EXPECT_EQ(FileDrag::answer(DragOperation::link, Qt::CopyAction), Qt::CopyAction);
  EXPECT_EQ(FileDrag::answer(DragOperation::copy, Qt::MoveAction), Qt::IgnoreAction);
}

} // namespace
} // namespace orbel::qt
