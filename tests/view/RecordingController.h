// A controller of the radial view for tests: serves sections of named entries, answers as the test asks, and
// writes down what the view asks and reports, each as one line such as "click 0-2" or "move 0-0 to 1-0".
#pragma once

#include "view/OrbelItem.h"
#include "view/OrbelViewDataSource.h"
#include "view/OrbelViewDelegate.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orbel {

class RecordingController : public OrbelViewDataSource, public OrbelViewDelegate {
public:
  struct Entry {
    std::string title;
    ImagePointer image;
  };

  // Entries named "0-0", "0-1", ... with an image each.
  void serve(std::vector<int> counts) {
    entries.clear();
    for (std::size_t section = 0; section < counts.size(); ++section) {
      entries.emplace_back();
      for (int position = 0; position < counts[section]; ++position) {
        entries.back().push_back({std::to_string(section) + "-" + std::to_string(position),
                                  Image::withBitmap({320, 320}, Bitmap(16, 16))});
      }
    }
  }

  std::int64_t numberOfSections() override {
    ++sectionQuestions;
    return static_cast<std::int64_t>(entries.size());
  }
  std::int64_t numberOfItems(std::int64_t section) override {
    ++countQuestions;
    return static_cast<std::int64_t>(entries[static_cast<std::size_t>(section)].size());
  }
  std::shared_ptr<OrbelItem> item(ItemPath path) override {
    const Entry& entry =
        entries[static_cast<std::size_t>(path.section)][static_cast<std::size_t>(path.position)];
    return std::make_shared<OrbelItem>(entry.image, entry.title);
  }
  bool sectionSupportsDrop(std::int64_t section) override {
    write("supports drop " + std::to_string(section));
    return supportsDrop(section);
  }
  bool shouldDisplayTitle(ItemPath path) override {
    titleQuestions.push_back(path);
    return displaysTitle(path);
  }

  void didClickItem(ItemPath item) override {
    write("click " + text(item));
    whenTold();
  }
  void didRightClickItem(ItemPath item) override {
    write("right-click " + text(item));
    whenTold();
  }
  void didRightClickOutsideOfItem(ItemPath item) override {
    write("right-click outside " + text(item));
    whenTold();
  }
  void didMoveItem(ItemPath from, ItemPath to) override {
    write("move " + text(from) + " to " + text(to));
    whenTold();
  }
  bool canDropItem(ItemPath dragged, ItemPath target) override {
    write("can drop " + text(dragged) + " on " + text(target));
    return acceptsItem(target);
  }
  void didDropItem(ItemPath dragged, ItemPath target) override {
    write("drop " + text(dragged) + " on " + text(target));
    whenTold();
  }
  bool didReceiveDrag(const DragInfo& drag, ItemPath inFrontOf) override {
    lastDrag = &drag;
    write("receive " + text(inFrontOf));
    whenTold();
    return takesDrop;
  }
  bool canDrop(const DragInfo& drag, ItemPath target) override {
    lastDrag = &drag;
    write("can take " + text(target));
    return acceptsDrag(target);
  }
  bool didDrop(const DragInfo& drag, ItemPath target) override {
    lastDrag = &drag;
    write("take " + text(target));
    whenTold();
    return takesDrop;
  }

  static std::string text(ItemPath path) {
    return std::to_string(path.section) + "-" + std::to_string(path.position);
  }
  std::vector<std::string> takeReports() { return std::exchange(reports, {}); }

  std::vector<std::vector<Entry>> entries;
  std::vector<std::string> reports;
  std::vector<ItemPath> titleQuestions;
  int sectionQuestions = 0;
  int countQuestions = 0;
  const DragInfo* lastDrag = nullptr;

  std::function<bool(ItemPath)> displaysTitle = [](ItemPath) { return true; };
  std::function<bool(std::int64_t)> supportsDrop = [](std::int64_t) { return true; };
  std::function<bool(ItemPath)> acceptsItem = [](ItemPath) { return false; };
  std::function<bool(ItemPath)> acceptsDrag = [](ItemPath) { return false; };
  std::function<void()> whenTold = [] {}; // inside every did... operation
  bool takesDrop = true;

private:
  void write(std::string line) { reports.push_back(std::move(line)); }
};

} // namespace orbel
