// A status area whose icons the test clicks.
#pragma once

#include "platform/StatusBar.h"

#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class FakeStatusBar : public StatusBar {
public:
  std::unique_ptr<StatusItem> makeStatusItem(StatusItemContents contents) override {
    items.push_back(std::make_shared<StatusItemContents>(std::move(contents)));
    return std::make_unique<Item>(*this, items.back());
  }

  // What the status area shows; nothing where there is none.
  std::vector<std::shared_ptr<StatusItemContents>> shown() const {
    return hasStatusArea ? items : decltype(items)();
  }
  // On the icon that came last; its item may end in there.
  void click() const {
    const auto icons = shown();
    if (!icons.empty() && icons.back()->clicked) icons.back()->clicked();
  }

  std::vector<std::shared_ptr<StatusItemContents>> items; // that are there now
  bool hasStatusArea = true;

private:
  class Item : public StatusItem {
  public:
    Item(FakeStatusBar& bar, std::shared_ptr<StatusItemContents> contents)
        : m_bar(bar), m_contents(std::move(contents)) {}
    ~Item() override { std::erase(m_bar.items, m_contents); }

  private:
    FakeStatusBar& m_bar;
    std::shared_ptr<StatusItemContents> m_contents;
  };
};

} // namespace orbel
