#include "tests/support/x11/Picture.h"

#include "tests/support/base/TemporaryDirectory.h"
#include "tests/support/base/TextFile.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace orbel::test;

namespace {

Picture striped() {
  Picture picture(4, 2);
  for (int x = 0; x < 4; ++x) {
    picture.set({x, 0}, {200, 100, 0});
    picture.set({x, 1}, {100, 0, 50});
  }
  return picture;
}

TEST(PictureTest, AveragesARectangle) {
  EXPECT_EQ(striped().meanColor({0, 0, 4, 1}), (Rgb{200, 100, 0}));
  EXPECT_EQ(striped().meanColor({1, 0, 2, 2}), (Rgb{150, 50, 25}));
}

TEST(PictureTest, MeasuresHowFarTwoPicturesDiffer) {
  Picture other = striped();
  EXPECT_EQ(difference(striped(), other).largest, 0);
  other.set({3, 1}, {124, 0, 50});
  EXPECT_EQ(difference(striped(), other).largest, 24);
  EXPECT_DOUBLE_EQ(difference(striped(), other).mean, 1);
  EXPECT_THROW(difference(striped(), Picture(1, 1)), std::invalid_argument);
}

TEST(PictureTest, CutsOutAPartAndCountsPixels) {
  EXPECT_EQ(striped().part({0, 1, 1, 1}).at({0, 0}), (Rgb{100, 0, 50}));
  EXPECT_EQ(striped().count([](const Rgb& color) { return color.red == 200; }), 4);
  EXPECT_THROW(striped().at({4, 0}), std::out_of_range);
}

TEST(PictureTest, SavesAPng) {
  const TemporaryDirectory folder("orbel-picture");
  striped().savePng(folder.path() / "new/picture.png");
  EXPECT_TRUE(readFile(folder.path() / "new/picture.png").starts_with("\x89PNG"));
}

} // namespace
