// Blocks that a double calls, each for as long as its registration lives, with the manners of the real lists:
// one that ends is not called any more, one that begins meanwhile waits for the next time.
#pragma once

#include "foundation/Registration.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orbel {

class ObserverList {
public:
  Registration add(std::function<void()> block) {
    auto entry = std::make_shared<Entry>(Entry{std::move(block)});
    m_entries->push_back(entry);
    return Registration([entry, entries = std::weak_ptr(m_entries)] {
      entry->hasEnded = true;
      if (const auto list = entries.lock()) std::erase(*list, entry);
    });
  }

  void call() const {
    const auto entries = *m_entries;
    for (const auto& entry : entries) {
      if (!entry->hasEnded) entry->block();
    }
  }

  std::size_t size() const { return m_entries->size(); }

private:
  struct Entry {
    std::function<void()> block;
    bool hasEnded = false;
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;
  std::shared_ptr<Entries> m_entries = std::make_shared<Entries>();
};

} // namespace orbel
