// What every LoginItem keeps to.
//
// Subject: a desktop on which nothing is decided yet, and its own tools.
//   LoginItem& item();
//   void switchWithTheDesktopsTools(bool registered);  returns when the change has been reported
//   void makeUnreadable();        from now on the registration can neither be read nor changed
//   void refuseRegistrations();   only while there is none
#pragma once

#include "platform/LoginItem.h"

#include <gtest/gtest.h>

#include <optional>

namespace orbel::contracts {

template <class Subject>
class LoginItemContract : public testing::Test {
protected:
  using State = LoginItem::State;
  // Nothing when it cannot be read.
  std::optional<State> state() {
    const auto state = subject.item().state();
    return state ? std::optional(*state) : std::nullopt;
  }
  bool setRegistered(bool registered) { return static_cast<bool>(subject.item().setRegistered(registered)); }
  Subject subject;
};

TYPED_TEST_SUITE_P(LoginItemContract);

TYPED_TEST_P(LoginItemContract, NobodyHasDecidedAtFirst) {
  EXPECT_EQ(this->state(), LoginItem::State::undecided);
}

TYPED_TEST_P(LoginItemContract, WhatIsAskedForIsDoneAndAgainIsHarmless) {
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(this->setRegistered(true));
    EXPECT_EQ(this->state(), LoginItem::State::registered);
  }
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(this->setRegistered(false));
    EXPECT_NE(this->state(), LoginItem::State::registered);
    EXPECT_TRUE(this->state().has_value());
  }
}

TYPED_TEST_P(LoginItemContract, AfterAFailureTheDesktopDoesWhatItDidBefore) {
  this->subject.refuseRegistrations();
  EXPECT_FALSE(this->setRegistered(true));
  EXPECT_EQ(this->state(), LoginItem::State::undecided);
}

TYPED_TEST_P(LoginItemContract, WhatTheDesktopsToolsHaveDoneIsRead) {
  this->subject.switchWithTheDesktopsTools(true);
  EXPECT_EQ(this->state(), LoginItem::State::registered);
  this->subject.switchWithTheDesktopsTools(false);
  EXPECT_EQ(this->state(), LoginItem::State::notRegistered);
}

TYPED_TEST_P(LoginItemContract, EveryObserverIsCalledAfterAChangeFromOutsideUntilItEnds) {
  int earlier = 0;
  std::optional<LoginItem::State> seen;
  auto observation = this->subject.item().observeChanges([&] { ++earlier; });
  const auto other = this->subject.item().observeChanges([&] { seen = this->state(); });
  this->subject.switchWithTheDesktopsTools(true);
  EXPECT_GE(earlier, 1);
  EXPECT_EQ(seen, LoginItem::State::registered);
  observation.reset();
  earlier = 0;
  this->subject.switchWithTheDesktopsTools(false);
  EXPECT_EQ(earlier, 0);
  EXPECT_EQ(seen, LoginItem::State::notRegistered);
}

TYPED_TEST_P(LoginItemContract, WhatCannotBeReadIsNeitherGuessedNorChanged) {
  this->subject.makeUnreadable();
  EXPECT_EQ(this->state(), std::nullopt);
  EXPECT_FALSE(this->setRegistered(true));
  EXPECT_EQ(this->state(), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemContract, NobodyHasDecidedAtFirst,
                            WhatIsAskedForIsDoneAndAgainIsHarmless,
                            AfterAFailureTheDesktopDoesWhatItDidBefore, WhatTheDesktopsToolsHaveDoneIsRead,
                            EveryObserverIsCalledAfterAChangeFromOutsideUntilItEnds,
                            WhatCannotBeReadIsNeitherGuessedNorChanged);

} // namespace orbel::contracts
