// The radial view with a thousand items: what a move of the pointer, a layout and a reload cost.
#include "tests/doubles/FakePlatform.h"
#include "tests/doubles/FakeViewTreeHost.h"
#include "view/OrbelView.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace orbel {
namespace {

class ManyItems : public OrbelViewDataSource {
public:
  explicit ManyItems(std::int64_t itemCount) : count(itemCount) {
    for (std::int64_t index = 0; index < count; ++index) {
      m_images.push_back(Image::withBitmap({320, 320}, Bitmap(150, 150)));
    }
  }
  std::int64_t numberOfSections() override { return 1; }
  std::int64_t numberOfItems(std::int64_t) override { return count; }
  std::shared_ptr<OrbelItem> item(ItemPath path) override {
    return std::make_shared<OrbelItem>(m_images[static_cast<std::size_t>(path.position)],
                                       std::to_string(path.position));
  }
  bool sectionSupportsDrop(std::int64_t) override { return true; }
  bool shouldDisplayTitle(ItemPath) override { return false; }

  std::int64_t count;

private:
  std::vector<ImagePointer> m_images;
};

class Menu {
public:
  explicit Menu(std::int64_t itemCount) : m_items(itemCount) {
    view->setDataSource(&m_items);
    view->setMagnifyItemsOnMouseOver(true);
    m_tree.contentView().addSubview(view);
    m_host.pointer = Point{300, 300};
    view->reloadData();
  }
  // To the middle of an even slot, on the circle.
  void point(std::int64_t slot) {
    const double angle = (static_cast<double>(slot) + 0.5) * kFullTurn / static_cast<double>(m_items.count);
    m_host.pointer = Point{300 + view->radius() * std::sin(angle), 300 + view->radius() * std::cos(angle)};
    m_tree.pointerMoved({*m_host.pointer});
  }

private:
  FakePlatform m_platform;
  FakeViewTreeHost m_host{Rect(0, 0, 600, 600)};
  ManyItems m_items;
  ViewTree m_tree{m_host, m_platform.runLoop, false};

public:
  std::shared_ptr<OrbelView> view = std::make_shared<OrbelView>(Rect(0, 0, 600, 600));
};

// Titles, sizes, turn and layout of all items.
void pointerReachesAnotherSlot(benchmark::State& state) {
  Menu menu(state.range(0));
  std::int64_t slot = 0;
  for (auto _ : state)
    menu.point(slot = (slot + 1) % state.range(0));
  state.SetComplexityN(state.range(0));
}
BENCHMARK(pointerReachesAnotherSlot)
    ->Arg(10)
    ->Arg(40)
    ->Arg(200)
    ->Arg(1000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

// The titles alone.
void pointerMovesWithinASlot(benchmark::State& state) {
  Menu menu(state.range(0));
  for (auto _ : state)
    menu.point(7);
}
BENCHMARK(pointerMovesWithinASlot)->Arg(40)->Arg(1000)->Unit(benchmark::kMicrosecond);

void layout(benchmark::State& state) {
  Menu menu(state.range(0));
  for (auto _ : state)
    menu.view->layoutSubviews();
}
BENCHMARK(layout)->Arg(40)->Arg(1000)->Unit(benchmark::kMicrosecond);

void reload(benchmark::State& state) {
  Menu menu(state.range(0));
  for (auto _ : state)
    menu.view->reloadData();
}
BENCHMARK(reload)->Arg(40)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orbel

BENCHMARK_MAIN();
