#include "scene/ViewTreeAdapter.h"

#include "tests/doubles/ManualRunLoop.h"

#include <gtest/gtest.h>

namespace orbel {
namespace {

class ViewTreeAdapterTest : public testing::Test {
protected:
  ViewTreeAdapter::Window window() {
    return {
        .frame = [this] { return frame; },
        .needsDisplay = [this](const Rect& rect) { damage = damage.unitedWith(rect); },
        .pointerLocation = [this] { return pointer; },
        .backingScale = [this] { return scale; },
    };
  }
  std::shared_ptr<View> addView(ViewTreeAdapter& adapter, const Rect& viewFrame) {
    auto view = std::make_shared<View>(viewFrame);
    adapter.contentView().addSubview(view);
    damage = {};
    return view;
  }

  Rect frame{100, 50, 400, 300};
  Rect damage;
  std::optional<Point> pointer = Point{30, 40};
  double scale = 2;
  ManualRunLoop runLoop;
};

TEST_F(ViewTreeAdapterTest, TheTreeHasTheWindowsSizeWhenItIsMade) {
  ViewTreeAdapter adapter(window(), runLoop, false);
  EXPECT_EQ(adapter.contentView().frame(), Rect(0, 0, 400, 300));
  EXPECT_EQ(&adapter.tree().contentView(), &adapter.contentView());
}

TEST_F(ViewTreeAdapterTest, WhatAViewDamagesIsDamageOfTheWindow) {
  ViewTreeAdapter adapter(window(), runLoop, false);
  addView(adapter, {10, 20, 30, 40})->setNeedsDisplay();
  EXPECT_EQ(damage, Rect(10, 20, 30, 40));
}

TEST_F(ViewTreeAdapterTest, ThePointerIsAskedOfTheWindowEachTime) {
  ViewTreeAdapter adapter(window(), runLoop, false);
  const auto view = addView(adapter, {10, 20, 30, 40});
  EXPECT_EQ(view->pointerLocation(), (Point{20, 20}));
  pointer = std::nullopt;
  EXPECT_EQ(view->pointerLocation(), std::nullopt);
}

TEST_F(ViewTreeAdapterTest, ThePlaceAndTheScaleAreThoseOfNow) {
  ViewTreeAdapter adapter(window(), runLoop, false);
  frame = {0, 0, 500, 300};
  scale = 1.5;
  EXPECT_EQ(adapter.tree().host().screenFrame(), frame);
  EXPECT_EQ(adapter.tree().host().backingScale(), 1.5);
}

TEST_F(ViewTreeAdapterTest, AWindowThatDoesNotTellItsScaleHasOnePixelAPoint) {
  auto withoutScale = window();
  withoutScale.backingScale = {};
  ViewTreeAdapter adapter(std::move(withoutScale), runLoop, false);
  EXPECT_EQ(adapter.tree().host().backingScale(), 1);
}

TEST_F(ViewTreeAdapterTest, WithReducedMotionNothingIsAnimated) {
  ViewTreeAdapter moving(window(), runLoop, false);
  addView(moving, {0, 0, 10, 10})->setFrame({50, 0, 10, 10}, Animated::yes);
  EXPECT_TRUE(moving.tree().isAnimating());
  ViewTreeAdapter still(window(), runLoop, true);
  const auto view = addView(still, {0, 0, 10, 10});
  view->setFrame({50, 0, 10, 10}, Animated::yes);
  EXPECT_FALSE(still.tree().isAnimating());
  EXPECT_EQ(view->presentedFrame(), Rect(50, 0, 10, 10));
}

} // namespace
} // namespace orbel
