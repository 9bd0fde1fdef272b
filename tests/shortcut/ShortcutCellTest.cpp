#include "shortcut/ShortcutCell.h"

#include "tests/doubles/RecordingCanvas.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

constexpr Rect kRect(10, 20, 100, 24);

TEST(ShortcutCellTest, DrawsABezelWithinTheRectangleAndTheTitleOnIt) {
  RecordingCanvas canvas;
  ShortcutCell().drawInRect(canvas, kRect, "Title", TextAlignment::center, ButtonState::off);
  ASSERT_EQ(canvas.calls.size(), 3u);
  EXPECT_EQ(canvas.calls[0].name, "fillRoundedRect");
  EXPECT_EQ(canvas.calls[1].name, "strokeRoundedRect");
  const Rect border = canvas.calls[1].rect;
  const double half = canvas.calls[1].lineWidth / 2;
  EXPECT_EQ(border.insetBy(-half, -half), kRect);
  EXPECT_EQ(canvas.calls[2].name, "drawText");
  EXPECT_EQ(canvas.calls[2].text, "Title");
  EXPECT_EQ(canvas.calls[2].rect.center(), kRect.center());
}

TEST(ShortcutCellTest, APushedCellIsDarkerThanOneThatIsNot) {
  RecordingCanvas off;
  RecordingCanvas on;
  ShortcutCell().drawInRect(off, kRect, "", TextAlignment::center, ButtonState::off);
  ShortcutCell().drawInRect(on, kRect, "", TextAlignment::center, ButtonState::on);
  EXPECT_LT(on.calls[0].color.whiteComponent(), off.calls[0].color.whiteComponent());
}

TEST(ShortcutCellTest, ADisabledCellHasAPalerTitle) {
  RecordingCanvas enabled;
  RecordingCanvas disabled;
  ShortcutCell cell;
  cell.drawInRect(enabled, kRect, "A", TextAlignment::center, ButtonState::off);
  cell.setEnabled(false);
  cell.drawInRect(disabled, kRect, "A", TextAlignment::center, ButtonState::off);
  EXPECT_GT(disabled.calls[2].color.whiteComponent(), enabled.calls[2].color.whiteComponent());
}

TEST(ShortcutCellTest, TheRoundRectBezelIsRoundAtItsEndsAndTheOthersOnlyAtTheirCorners) {
  ShortcutCell cell;
  const auto radius = [&](BezelStyle style) {
    RecordingCanvas canvas;
    cell.setBezelStyle(style);
    cell.drawInRect(canvas, kRect, "", TextAlignment::center, ButtonState::off);
    return canvas.calls[0].radius;
  };
  EXPECT_EQ(radius(BezelStyle::roundRect), 11.5);
  EXPECT_GT(radius(BezelStyle::texturedRounded), 0);
  EXPECT_LT(radius(BezelStyle::texturedRounded), 11.5);
  EXPECT_GT(radius(BezelStyle::rounded), radius(BezelStyle::texturedRounded));
  EXPECT_LT(radius(BezelStyle::rounded), 11.5);
}

} // namespace
} // namespace orbel
