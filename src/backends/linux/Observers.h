// Blocks to call after a change, each for as long as its registration lives.
// Registrations may end, and new ones begin, inside a block; the list may go before its registrations.
#pragma once

#include "foundation/Registration.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class Observers {
public:
  Registration add(std::function<void()> block) {
    auto observer = std::make_shared<Observer>(Observer{std::move(block)});
    m_list->push_back(observer);
    return Registration([observer, list = std::weak_ptr(m_list)] {
      observer->hasEnded = true;
      if (const auto living = list.lock()) std::erase(*living, observer);
    });
  }

  void call() const {
    const List observers = *m_list;
    for (const auto& observer : observers) {
      if (!observer->hasEnded) observer->block();
    }
  }

private:
  struct Observer {
    std::function<void()> block;
    bool hasEnded = false;
  };
  using List = std::vector<std::shared_ptr<Observer>>;
  std::shared_ptr<List> m_list = std::make_shared<List>();
};

} // namespace orbel
