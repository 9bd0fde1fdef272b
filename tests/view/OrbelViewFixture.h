// A radial view of 400 by 400 points at (20, 30) of a window whose events the test sends, filled by a
// recording controller. Points given to the helpers are the view's own.
#pragma once

#include "tests/doubles/FakePlatform.h"
#include "tests/doubles/FakeViewTreeHost.h"
#include "tests/view/RecordingController.h"
#include "view/OrbelView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace orbel {

class OrbelViewFixture : public testing::Test {
protected:
  static constexpr double kPi = std::numbers::pi;
  using Reports = std::vector<std::string>;

  OrbelViewFixture() {
    view->setDataSource(&controller);
    view->setDelegate(&controller);
    view->registerForFileDrags();
    tree.contentView().addSubview(view);
  }

  // Reloads with sections of that many items, the pointer outside.
  void fill(std::vector<int> counts) {
    controller.serve(std::move(counts));
    view->reloadData();
  }

  Point inWindow(Point inView) const {
    return {inView.x + view->frame().minX(), inView.y + view->frame().minY()};
  }
  Point at(double angle, double distance) const {
    return {view->frame().size.width / 2 + distance * std::sin(angle),
            view->frame().size.height / 2 + distance * std::cos(angle)};
  }
  Point onCircle(double angle) const { return at(angle, view->radius()); }
  static double degrees(double angle) { return angle * kPi / 180; }

  void placePointer(Point inView) { host.pointer = inWindow(inView); }
  void movePointer(Point inView) {
    placePointer(inView);
    tree.pointerMoved({*host.pointer, 0, primaryButtonIsDown});
  }
  void press(Point inView, std::uint64_t modifierFlags = 0) {
    placePointer(inView);
    primaryButtonIsDown = true;
    tree.pointerPressed(PointerButton::primary, {*host.pointer, modifierFlags});
  }
  void release() {
    primaryButtonIsDown = false;
    tree.pointerReleased(PointerButton::primary, {*host.pointer});
  }
  // To another window.
  void loseRelease() { primaryButtonIsDown = false; }
  void rightClick(Point inView) {
    placePointer(inView);
    tree.pointerPressed(PointerButton::secondary, {*host.pointer});
  }

  OrbelItem& item(std::int64_t section, std::int64_t position) const {
    return *view->sections().item({section, position});
  }
  // The direction in which an item's centre lies, from 0 to 2 pi.
  double directionOf(const OrbelItem& shown) const {
    return RadialGeometry(view->frame().size, view->totalNumberOfItems()).polar(shown.frame().center()).angle;
  }
  Point centerOf(std::int64_t section, std::int64_t position) const {
    return item(section, position).frame().center();
  }
  std::vector<double> sizes(std::int64_t section = 0) const {
    std::vector<double> result;
    for (std::int64_t position = 0; position < view->numberOfItemsInSection(section); ++position) {
      result.push_back(view->relativeSize({section, position}));
    }
    return result;
  }
  std::vector<std::string> titlesShown() const {
    std::vector<std::string> titles;
    for (const FakeBubble* bubble : platform.windows.shownBubbles)
      titles.push_back(bubble->text);
    return titles;
  }
  std::vector<std::string> titlesInSection(std::int64_t section) const {
    std::vector<std::string> titles;
    for (std::int64_t position = 0; position < view->numberOfItemsInSection(section); ++position) {
      titles.push_back(item(section, position).title().value_or(""));
    }
    return titles;
  }
  ItemPath gap() const { return {view->draggedItemSection(), view->draggedItemPosition()}; }
  std::vector<std::string> selectedTitles() const {
    std::vector<std::string> titles;
    view->sections().forEach([&](const OrbelItem& shown, ItemPath) {
      if (shown.selected()) titles.push_back(shown.title().value_or(""));
    });
    return titles;
  }

  // Before the view, which is destroyed first: closing its titles asks the platform's bubbles.
  FakePlatform platform;
  FakeViewTreeHost host{Rect(1000, 700, 450, 460), platform.windows};
  RecordingController controller;
  bool primaryButtonIsDown = false;
  ViewTree tree{host, platform.runLoop, false};
  std::shared_ptr<OrbelView> view = std::make_shared<OrbelView>(Rect(20, 30, 400, 400));
};

} // namespace orbel
