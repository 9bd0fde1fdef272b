// What a move of the pointer may cost: nothing of the heap.
#include "tests/view/OrbelViewFixture.h"

#include "tests/doubles/FakeDrag.h"
#include "tests/view/AllocationCount.h"

namespace orbel {
namespace {

// A controller that writes nothing down.
class SilentController : public RecordingController {
public:
  bool shouldDisplayTitle(ItemPath) override { return false; }
  bool canDropItem(ItemPath, ItemPath) override { return false; }
  bool canDrop(const DragInfo&, ItemPath) override { return false; }
};

class OrbelViewAllocationTest : public OrbelViewFixture {
protected:
  OrbelViewAllocationTest() {
    view->setMagnifyItemsOnMouseOver(true);
    silent.serve({20, 20});
    view->setDataSource(&silent);
    view->setDelegate(&silent);
    view->reloadData();
    platform.runLoop.advance(1);
  }
  // Of a whole turn of the pointer in small steps, after one that sets the animation going.
  std::size_t allocationsOfATurn() {
    movePointer(onCircle(0.01));
    const std::size_t before = allocationCount();
    for (int step = 0; step < 360; ++step)
      movePointer(onCircle(degrees(step)));
    return allocationCount() - before;
  }

  SilentController silent;
};

TEST_F(OrbelViewAllocationTest, TheCounterCounts) {
  const std::size_t before = allocationCount();
  const auto item = std::make_unique<OrbelItem>(Rect());
  EXPECT_GT(allocationCount(), before);
}

TEST_F(OrbelViewAllocationTest, MovingThePointerAllocatesNothing) {
  EXPECT_EQ(allocationsOfATurn(), 0u);
}

TEST_F(OrbelViewAllocationTest, MovingThePointerAfterAMoveIntoAnotherSectionAllocatesNothing) {
  press(centerOf(0, 0));
  movePointer(onCircle(2 * kPi - 0.02)); // behind the last item
  ASSERT_EQ(gap(), (ItemPath{1, 20}));
  release();
  ASSERT_EQ(view->numberOfItemsInSection(1), 21);
  EXPECT_EQ(allocationsOfATurn(), 0u);
}

TEST_F(OrbelViewAllocationTest, DraggingAnItemAllocatesNothing) {
  press(centerOf(0, 0));
  ASSERT_NE(view->draggedItem(), nullptr);
  EXPECT_EQ(allocationsOfATurn(), 0u);
}

TEST_F(OrbelViewAllocationTest, HoveringWithADragFromOutsideAllocatesNothing) {
  FakeDrag drag(inWindow(onCircle(0.01)));
  tree.dragMoved(drag);
  const std::size_t before = allocationCount();
  for (int step = 0; step < 360; ++step) {
    drag.location = inWindow(onCircle(degrees(step)));
    tree.dragMoved(drag);
  }
  EXPECT_EQ(allocationCount() - before, 0u);
}

} // namespace
} // namespace orbel
