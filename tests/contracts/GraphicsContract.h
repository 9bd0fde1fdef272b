// What every Graphics keeps to, apart from the pixels that a drawing makes: those are the canvas's own tests.
//
// Subject:
//   Graphics& graphics();
#pragma once

#include "platform/Graphics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace orbel::contracts {

template <class Subject>
class GraphicsContract : public testing::Test {
protected:
  Graphics& graphics() { return subject.graphics(); }
  Subject subject;
  int drawings = 0;
};

TYPED_TEST_SUITE_P(GraphicsContract);

TYPED_TEST_P(GraphicsContract, ADrawingRunsOnceWithinTheCallOnAClearBitmapOfThatSize) {
  const Bitmap bitmap = this->graphics().render(40, 20, {20, 10}, [&](Canvas&) { ++this->drawings; });
  EXPECT_EQ(this->drawings, 1);
  EXPECT_EQ(bitmap.width, 40);
  EXPECT_EQ(bitmap.height, 20);
  ASSERT_EQ(bitmap.pixels.size(), 800u);
  EXPECT_TRUE(std::all_of(bitmap.pixels.begin(), bitmap.pixels.end(), [](auto pixel) { return pixel == 0; }));
}

TYPED_TEST_P(GraphicsContract, TheCanvasSpansTheSizeInPoints) {
  double scale = 0;
  this->graphics().render(40, 40, {20, 20}, [&](Canvas& canvas) { scale = canvas.scale(); });
  EXPECT_DOUBLE_EQ(scale, 2);
  this->graphics().render(30, 30, {30, 30}, [&](Canvas& canvas) { scale = canvas.scale(); });
  EXPECT_DOUBLE_EQ(scale, 1);
}

TYPED_TEST_P(GraphicsContract, ABitmapWithoutPixelsIsEmptyAndNothingIsDrawn) {
  EXPECT_TRUE(this->graphics().render(0, 10, {10, 10}, [&](Canvas&) { ++this->drawings; }).isEmpty());
  EXPECT_TRUE(this->graphics().render(10, 0, {10, 10}, [&](Canvas&) { ++this->drawings; }).isEmpty());
  EXPECT_EQ(this->drawings, 0);
}

TYPED_TEST_P(GraphicsContract, ADrawnImageIsDrawnWhenPixelsOfANewSizeAreNeeded) {
  const auto image = this->graphics().drawnImage({20, 20}, [&](Canvas&) { ++this->drawings; });
  EXPECT_EQ(image->size(), (Size{20, 20}));
  EXPECT_EQ(this->drawings, 0);
  EXPECT_GE(image->representation(20, 20).width, 20);
  EXPECT_EQ(this->drawings, 1);
  image->representation(20, 20);
  EXPECT_EQ(this->drawings, 1);
  EXPECT_GE(image->representation(80, 80).width, 80);
  EXPECT_EQ(this->drawings, 2);
}

TYPED_TEST_P(GraphicsContract, DrawingsMayNest) {
  const auto inner = this->graphics().drawnImage({10, 10}, [&](Canvas&) { ++this->drawings; });
  double scaleAfterwards = 0;
  this->graphics().render(40, 40, {20, 20}, [&](Canvas& canvas) {
    canvas.save();
    canvas.translate({5, 5});
    canvas.drawImage(*inner, {0, 0, 10, 10});
    inner->prepare(20, 20);
    canvas.restore();
    scaleAfterwards = canvas.scale();
  });
  EXPECT_EQ(this->drawings, 1);
  EXPECT_DOUBLE_EQ(scaleAfterwards, 2);
}

TYPED_TEST_P(GraphicsContract, AKeptImageIsMadeOnceForAKeyWhileItIsAmongTheLatest) {
  const auto kept = [this](const std::string& key) {
    return this->graphics().keptImage(key, {10, 10}, [](Canvas&) {});
  };
  const auto first = kept("first");
  EXPECT_EQ(kept("first"), first);
  const auto second = kept("second");
  EXPECT_NE(second, first);
  EXPECT_EQ(kept("first"), first);
  kept("third");
  kept("fourth");
  EXPECT_EQ(kept("first"), first);
  kept("fifth");
  EXPECT_EQ(kept("second"), second);
  EXPECT_NE(kept("first"), first) << "the few that were made last are kept";
}

REGISTER_TYPED_TEST_SUITE_P(GraphicsContract, ADrawingRunsOnceWithinTheCallOnAClearBitmapOfThatSize,
                            TheCanvasSpansTheSizeInPoints, ABitmapWithoutPixelsIsEmptyAndNothingIsDrawn,
                            ADrawnImageIsDrawnWhenPixelsOfANewSizeAreNeeded, DrawingsMayNest,
                            AKeptImageIsMadeOnceForAKeyWhileItIsAmongTheLatest);

} // namespace orbel::contracts
