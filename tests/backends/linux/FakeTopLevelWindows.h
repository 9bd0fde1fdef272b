// Windows that the test opens and closes.
#pragma once

#include "backends/common/TopLevelWindows.h"
#include "foundation/Observers.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orbel::linux {

class FakeTopLevelWindows : public common::TopLevelWindows {
public:
  std::vector<common::TopLevelWindow> windows() const override { return list; }
  Registration observeChanges(std::function<void()> block) override {
    return m_observers.add(std::move(block));
  }
  std::optional<std::uint64_t> activeWindow() const override { return active; }
  bool activate(std::uint64_t window) override {
    activated.push_back(window);
    return makeActive(window);
  }
  bool restore(std::uint64_t window, std::uint64_t summon) override {
    restored.emplace_back(window, summon);
    return makeActive(window);
  }
  std::uint64_t summonMark() override { return ++mark; }
  Bitmap icon(std::uint64_t window, int pixelSize) const override {
    iconsAsked.push_back(window);
    return icons.contains(window) ? Bitmap(pixelSize, pixelSize) : Bitmap();
  }
  std::string makeStartupId(const std::string& entryName) override {
    if (!givesStartupIds) return {};
    startupIds.push_back("start-" + std::to_string(startupIds.size() + 1) + "-" + entryName);
    return startupIds.back();
  }

  void open(common::TopLevelWindow window) {
    window.isNormal = true;
    list.push_back(std::move(window));
    changed();
  }
  void close(std::uint64_t id) {
    std::erase_if(list, [id](const common::TopLevelWindow& window) { return window.id == id; });
    changed();
  }
  void changed() { m_observers.notify(); }

  std::vector<common::TopLevelWindow> list;
  std::optional<std::uint64_t> active;
  std::map<std::uint64_t, bool> icons;
  mutable std::vector<std::uint64_t> iconsAsked;
  bool givesStartupIds = true;
  std::vector<std::string> startupIds;
  std::vector<std::uint64_t> activated;
  std::vector<std::pair<std::uint64_t, std::uint64_t>> restored;
  std::uint64_t mark = 100;

private:
  // False when there is no such window.
  bool makeActive(std::uint64_t id) {
    const auto isMeant = [id](const common::TopLevelWindow& window) { return window.id == id; };
    if (std::none_of(list.begin(), list.end(), isMeant)) return false;
    active = id;
    return true;
  }

  Observers<> m_observers;
};

} // namespace orbel::linux
