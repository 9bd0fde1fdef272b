// The desktop's login item as the test sets it; what the program asks for is carried out unless it
// shall fail.
#pragma once

#include "platform/LoginItem.h"
#include "tests/doubles/ObserverList.h"

#include <functional>
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
    return m_observers.add(std::move(block));
  }
  // With the desktop's own tools.
  void change(Result<State> state) {
    current = std::move(state);
    m_observers.call();
  }

  Result<State> current = State::undecided;
  bool succeeds = true;
  int requests = 0;

private:
  ObserverList m_observers;
};

} // namespace orbel
