#include "backends/common/DeviceEllipse.h"

#include <gtest/gtest.h>

namespace orbel::common {
namespace {

int areaOf(const std::vector<common::DeviceRect>& rectangles) {
  int area = 0;
  for (const auto& rect : rectangles)
    area += rect.width * rect.height;
  return area;
}

TEST(DeviceEllipseTest, AnEllipseHasTheAreaOfOne) {
  EXPECT_NEAR(areaOf(common::DeviceEllipse::rows(400, 400, 1)), 3.14159265 * 199 * 199, 150);
  EXPECT_NEAR(areaOf(common::DeviceEllipse::rows(400, 200, 0)), 3.14159265 * 200 * 100, 150);
}

TEST(DeviceEllipseTest, AnEllipseIsSymmetricAndKeepsItsInset) {
  const auto rows = common::DeviceEllipse::rows(101, 101, 2);
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows.front().y, 2);
  EXPECT_EQ(rows.back().bottom(), 99);
  int widest = 0;
  for (const auto& row : rows) {
    EXPECT_EQ(row.x, 101 - row.right());
    widest = std::max(widest, row.width);
  }
  EXPECT_EQ(widest, 97);
}

TEST(DeviceEllipseTest, EqualRowsAreJoined) {
  const auto rows = common::DeviceEllipse::rows(400, 400, 0);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].y, rows[i - 1].bottom());
    EXPECT_FALSE(rows[i].x == rows[i - 1].x && rows[i].width == rows[i - 1].width);
  }
  EXPECT_LT(rows.size(), 400u);
}

TEST(DeviceEllipseTest, AnInsetThatLeavesNothingGivesNothing) {
  EXPECT_TRUE(common::DeviceEllipse::rows(10, 10, 5).empty());
  EXPECT_TRUE(common::DeviceEllipse::rows(0, 0, 0).empty());
}

} // namespace
} // namespace orbel::common
