// What every EventTaps keeps to. Touches are reported by a source of their own and have their tests there.
//
// Subject: the taps of a program that may listen, and a mouse. Each action returns when all that comes of it
// has come.
//   EventTaps& taps();
//   void clickPrimaryButton();   presses and releases it
//   void clickSecondaryButton();
//   void movePointer();          to another place, no button held
//   void dragPointer();          presses the primary button, moves, releases it
//   void passInterval();         the time in which movements may be left out passes
#pragma once

#include "platform/EventTaps.h"

#include <gtest/gtest.h>

#include <memory>

namespace orbel::contracts {

template <class Subject>
class EventTapsContract : public testing::Test {
protected:
  std::unique_ptr<EventTap> makeMouseUpTap() {
    return subject.taps().makeMouseUpTap([this] { ++releases; });
  }
  std::unique_ptr<EventTap> makeMouseMovedTap() {
    return subject.taps().makeMouseMovedTap([this] {
      ++movements;
      return use;
    });
  }
  Subject subject;
  int releases = 0;
  int movements = 0;
  EventTaps::MovementUse use = EventTaps::MovementUse::taken;
};

TYPED_TEST_SUITE_P(EventTapsContract);

TYPED_TEST_P(EventTapsContract, ATapIsMadeDisabledAndHearsNothingUntilItIsEnabled) {
  const auto up = this->makeMouseUpTap();
  const auto moved = this->makeMouseMovedTap();
  const auto touch = this->subject.taps().makeTouchTap({});
  ASSERT_TRUE(up && moved && touch);
  EXPECT_FALSE(up->isEnabled());
  EXPECT_FALSE(moved->isEnabled());
  EXPECT_FALSE(touch->isEnabled());
  this->subject.movePointer();
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 0);
  EXPECT_EQ(this->movements, 0);
}

TYPED_TEST_P(EventTapsContract, EveryReleaseOfThePrimaryButtonIsToldOnce) {
  const auto up = this->makeMouseUpTap();
  up->setEnabled(true);
  EXPECT_TRUE(up->isEnabled());
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 1);
  this->subject.clickSecondaryButton();
  EXPECT_EQ(this->releases, 1);
  this->subject.dragPointer();
  EXPECT_EQ(this->releases, 2);
}

TYPED_TEST_P(EventTapsContract, MovementsAreToldWhileNoButtonIsHeld) {
  const auto moved = this->makeMouseMovedTap();
  moved->setEnabled(true);
  this->subject.movePointer();
  EXPECT_GE(this->movements, 1);
  const int before = this->movements;
  this->subject.passInterval();
  this->subject.dragPointer();
  EXPECT_EQ(this->movements, before);
  this->subject.passInterval();
  this->subject.movePointer();
  EXPECT_GT(this->movements, before);
}

TYPED_TEST_P(EventTapsContract, WhetherMovementsAreToldIsKnownBeforehand) {
  const bool tellsMovements = this->subject.taps().tellsMovements();
  const auto moved = this->makeMouseMovedTap();
  moved->setEnabled(true);
  this->subject.movePointer();
  EXPECT_EQ(this->movements > 0, tellsMovements);
}

TYPED_TEST_P(EventTapsContract, MovementsThatAreNotTakenAreAllTold) {
  this->use = EventTaps::MovementUse::ignored;
  const auto moved = this->makeMouseMovedTap();
  moved->setEnabled(true);
  for (int told = 1; told <= 5; ++told) {
    this->subject.movePointer();
    EXPECT_EQ(this->movements, told);
  }
}

TYPED_TEST_P(EventTapsContract, ADisabledTapHearsNothingAndMayBeEnabledAgain) {
  const auto up = this->makeMouseUpTap();
  up->setEnabled(true);
  up->setEnabled(false);
  EXPECT_FALSE(up->isEnabled());
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 0);
  up->setEnabled(true);
  up->setEnabled(true);
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 1);
}

TYPED_TEST_P(EventTapsContract, ADestroyedTapHearsNothingAndLeavesTheOthersAlone) {
  auto first = this->makeMouseUpTap();
  const auto second = this->makeMouseUpTap();
  first->setEnabled(true);
  second->setEnabled(true);
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 2);
  first.reset();
  this->subject.clickPrimaryButton();
  EXPECT_EQ(this->releases, 3);
}

TYPED_TEST_P(EventTapsContract, ATapMayBeDisabledOrDestroyedFromItsOwnCallback) {
  std::unique_ptr<EventTap> disabled;
  std::unique_ptr<EventTap> destroyed;
  int calls = 0;
  disabled = this->subject.taps().makeMouseUpTap([&] {
    ++calls;
    disabled->setEnabled(false);
  });
  destroyed = this->subject.taps().makeMouseUpTap([&] {
    destroyed.reset();
    ++calls;
  });
  disabled->setEnabled(true);
  destroyed->setEnabled(true);
  this->subject.clickPrimaryButton();
  this->subject.clickPrimaryButton();
  EXPECT_EQ(calls, 2);
}

TYPED_TEST_P(EventTapsContract, AProgramThatMayListenIsTrusted) {
  EXPECT_TRUE(this->subject.taps().isTrusted());
}

REGISTER_TYPED_TEST_SUITE_P(EventTapsContract, ATapIsMadeDisabledAndHearsNothingUntilItIsEnabled,
                            EveryReleaseOfThePrimaryButtonIsToldOnce, MovementsAreToldWhileNoButtonIsHeld,
                            WhetherMovementsAreToldIsKnownBeforehand, MovementsThatAreNotTakenAreAllTold,
                            ADisabledTapHearsNothingAndMayBeEnabledAgain,
                            ADestroyedTapHearsNothingAndLeavesTheOthersAlone,
                            ATapMayBeDisabledOrDestroyedFromItsOwnCallback, AProgramThatMayListenIsTrusted);

} // namespace orbel::contracts
