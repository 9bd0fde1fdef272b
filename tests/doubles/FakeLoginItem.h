// The desktop's login item as the test sets it; what the program asks for is carried out unless it shall
// fail.
#pragma once

#include "platform/LoginItem.h"

#include <functional>
#include <memory>
#include <utility>

namespace orbel {

class FakeLoginItem : public LoginItem {
public:
  Result<State> state() const override { return current; }
  Result<> setRegistered(bool registered) override {
    ++requests;
    if (!succeeds) return Failure{"the login item cannot be changed"};
    current = registered ? State::registered : State::notRegistered;
    return {};
  }
  Registration observeChanges(std::function<void()> block) override {
    *m_block = std::move(block);
    return Registration([block = m_block] { *block = nullptr; });
  }
  // With the desktop's own tools.
  void change(Result<State> state) {
    current = std::move(state);
    if (const auto block = *m_block) block();
  }

  Result<State> current = State::undecided;
  bool succeeds = true;
  int requests = 0;

private:
  std::shared_ptr<std::function<void()>> m_block = std::make_shared<std::function<void()>>();
};

} // namespace orbel
