// A list of blocks that are called when something happens, each for as long as its registration lives, in the
// order in which they were added. Blocks may be added and removed while they are being called: one that was
// removed is not called any more, one that was added waits for the next time. The list may be destroyed
// before its registrations, also within a call. Calling allocates nothing. Main thread only.
#pragma once

#include "foundation/Registration.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orbel {

template <class... Arguments>
class Observers {
public:
  using Block = std::function<void(Arguments...)>;

  Observers() = default;
  // `countChanged` is called after a block was added or removed.
  explicit Observers(std::function<void()> countChanged) { m_state->countChanged = std::move(countChanged); }

  Registration add(Block block) {
    auto entry = std::make_shared<Block>(std::move(block));
    m_state->blocks.push_back(entry);
    m_state->changed(1);
    return Registration([state = std::weak_ptr(m_state), entry = std::weak_ptr(entry)] {
      if (auto living = state.lock()) living->remove(entry.lock());
    });
  }

  bool isEmpty() const { return m_state->count == 0; }

  void notify(Arguments... arguments) const {
    const auto state = m_state; // a block may destroy the owner of this list
    ++state->depth;
    const std::size_t end = state->blocks.size();
    for (std::size_t index = 0; index < end; ++index)
      if (const auto block = state->blocks[index]) (*block)(arguments...);
    if (--state->depth == 0) std::erase(state->blocks, nullptr);
  }

private:
  struct State {
    std::vector<std::shared_ptr<Block>> blocks; // removed ones are empty until the outermost call ends
    std::size_t count = 0;
    int depth = 0;
    std::function<void()> countChanged;

    void changed(int difference) {
      count += static_cast<std::size_t>(difference);
      if (countChanged) countChanged();
    }
    void remove(const std::shared_ptr<Block>& entry) {
      for (auto& block : blocks)
        if (block && block == entry) block = nullptr;
      if (depth == 0) std::erase(blocks, nullptr);
      changed(-1);
    }
  };
  std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace orbel
