#include "backends/qt/icons/PictureReader.h"

#include "tests/backends/qt/TestPictures.h"
#include "tests/support/base/LogCapture.h"
#include "tests/support/base/TemporaryDirectory.h"

#include <QColor>
#include <QImage>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace orbel::qt {
namespace {

class PictureReaderTest : public testing::Test {
protected:
  Bitmap read(const std::string& name, int size) {
    return PictureReader::read(QString::fromStdString((m_folder.path() / name).string()), size);
  }
  std::uint32_t pixel(const Bitmap& bitmap, int x, int y) const {
    return bitmap.pixels.at(static_cast<std::size_t>(y * bitmap.width + x));
  }
  void expectRefused(const std::string& name) {
    EXPECT_TRUE(read(name, 64).isEmpty()) << name;
    EXPECT_TRUE(m_log.has(name)) << "the log does not name " << name;
  }

  test::TemporaryDirectory m_folder{"orbel-pictures"};
  test::LogCapture m_log;
};

TEST_F(PictureReaderTest, ShrinksABitmapToTheAskedSize) {
  writePicture(m_folder.path() / "large.png", 512, 512, QColor(200, 30, 40));
  const Bitmap bitmap = read("large.png", 64);
  ASSERT_EQ(bitmap.width, 64);
  ASSERT_EQ(bitmap.height, 64);
  EXPECT_EQ(pixel(bitmap, 32, 32), pixelOf(QColor(200, 30, 40)));
  EXPECT_TRUE(m_log.lines.empty());
}

TEST_F(PictureReaderTest, LeavesASmallBitmapAsItIs) {
  writePicture(m_folder.path() / "small.png", 16, 16, Qt::blue);
  EXPECT_EQ(read("small.png", 320).width, 16);
}

TEST_F(PictureReaderTest, CentresAnOblongBitmapInASquare) {
  writePicture(m_folder.path() / "oblong.png", 100, 50, Qt::green);
  const Bitmap bitmap = read("oblong.png", 40);
  ASSERT_EQ(bitmap.width, 40);
  ASSERT_EQ(bitmap.height, 40);
  EXPECT_EQ(pixel(bitmap, 20, 5), 0U);
  EXPECT_EQ(pixel(bitmap, 20, 20), pixelOf(Qt::green));
  EXPECT_EQ(pixel(bitmap, 20, 35), 0U);
}

TEST_F(PictureReaderTest, PremultipliesTranslucentPixels) {
  writePicture(m_folder.path() / "glass.png", 8, 8, QColor(255, 255, 255, 128));
  EXPECT_EQ(pixel(read("glass.png", 8), 4, 4), 0x80808080U);
}

TEST_F(PictureReaderTest, DrawsADrawingSharplyAtAnySizeInItsOwnProportions) {
  writeDrawing(m_folder.path() / "drawing.svg", Qt::red, 16, 8);
  const Bitmap bitmap = read("drawing.svg", 320);
  ASSERT_EQ(bitmap.width, 320);
  EXPECT_EQ(pixel(bitmap, 160, 160), pixelOf(Qt::red));
  EXPECT_EQ(pixel(bitmap, 160, 81), pixelOf(Qt::red));
  EXPECT_EQ(pixel(bitmap, 160, 78), 0U);
}

TEST_F(PictureReaderTest, GoesByTheContentWhereTheExtensionIsWrong) {
  writeDrawing(m_folder.path() / "drawing.svg", Qt::red);
  std::filesystem::rename(m_folder.path() / "drawing.svg", m_folder.path() / "drawing.png");
  writePicture(m_folder.path() / "bitmap.png", 8, 8, Qt::red);
  std::filesystem::rename(m_folder.path() / "bitmap.png", m_folder.path() / "bitmap");
  EXPECT_EQ(read("drawing.png", 64).width, 64);
  EXPECT_EQ(read("bitmap", 64).width, 8);
}

TEST_F(PictureReaderTest, RefusesBrokenFilesAndNamesThemInTheLog) {
  writeText(m_folder.path() / "noise.png", "this is no picture");
  writeText(m_folder.path() / "empty.png", "");
  writeText(m_folder.path() / "cut.svg", "<svg xmlns='http://www.w3.org/2000/svg'><rect wid");
  writeText(m_folder.path() / "bytes.svgz", "\x1f\x8b not really compressed");
  writePicture(m_folder.path() / "whole.png", 64, 64, Qt::red);
  for (const char* name : {"noise.png", "empty.png", "cut.svg", "bytes.svgz", "missing.png"})
    expectRefused(name);
}

TEST_F(PictureReaderTest, RefusesWhatIsNoFileWithoutWaitingForIt) {
  ASSERT_EQ(mkfifo((m_folder.path() / "pipe.png").c_str(), 0600), 0);
  std::filesystem::create_directory(m_folder.path() / "folder.png");
  expectRefused("pipe.png");
  expectRefused("folder.png");
}

TEST_F(PictureReaderTest, RefusesEnormousPicturesBeforeDecodingThem) {
  // A portable bitmap's size stands in its first line, so a few bytes can claim anything.
  writeText(m_folder.path() / "wide.ppm", "P6 2000000 10 255\n");
  writeText(m_folder.path() / "heavy.ppm", "P6 16000 16000 255\n");
  writeText(m_folder.path() / "huge.svg",
            "<svg xmlns='http://www.w3.org/2000/svg'>" + std::string(9 << 20, ' ') + "</svg>");
  for (const char* name : {"wide.ppm", "heavy.ppm", "huge.svg"})
    expectRefused(name);
}

TEST_F(PictureReaderTest, TakesAnySizeThatIsAskedFor) {
  writeDrawing(m_folder.path() / "drawing.svg", Qt::red);
  EXPECT_EQ(read("drawing.svg", 0).width, 1);
  EXPECT_EQ(read("drawing.svg", -5).width, 1);
}

} // namespace
} // namespace orbel::qt
