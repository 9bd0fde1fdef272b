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

  std::vector<std::shared_ptr<StatusItemContents>> items; // that are there now

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
