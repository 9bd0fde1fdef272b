// What every HotKeys keeps to.
//
// Subject: the hot keys of a program, a keyboard, and another program.
//   HotKeys& hotKeys();
//   void typeSpace(std::uint32_t modifiers);           holds the modifiers, taps the space bar, lets go;
//                                                      returns when all that comes of it has come
//   bool otherProgramGrabsSpace(std::uint32_t modifiers);  whether the other program got the combination;
//                                                      it keeps it
#pragma once

#include "platform/HotKeys.h"
#include "tests/contracts/LoggedLines.h"

#include <gtest/gtest.h>

#include <vector>

namespace orbel::contracts {

template <class Subject>
class HotKeysContract : public testing::Test {
protected:
  static constexpr std::uint64_t kSpace = 49;
  static constexpr std::uint64_t kNoKey = 0x7FFFFFFFFFFFFFFF;
  static constexpr std::uint32_t kCommand = 256;
  static constexpr std::uint32_t kShift = 512;
  static constexpr std::uint32_t kOption = 2048;
  static constexpr std::uint32_t kControl = 4096;
  using Numbers = std::vector<std::uint32_t>;

  HotKeys& hotKeys() { return subject.hotKeys(); }
  Registration installRecordingHandler() {
    return hotKeys().installHandler([this](HotKeyIdentity identity) { pressed.push_back(identity.number); });
  }
  Registration registerSpace(std::uint32_t modifiers, std::uint32_t number) {
    return hotKeys().registerHotKey(kSpace, modifiers, {0x41424344, number});
  }

  Subject subject;
  LoggedLines log;
  Numbers pressed; // the numbers of the registrations, in the order in which they were told
};

TYPED_TEST_SUITE_P(HotKeysContract);

TYPED_TEST_P(HotKeysContract, APressIsToldWithTheIdentityThatWasRegistered) {
  std::vector<HotKeyIdentity> told;
  const auto handler =
      this->hotKeys().installHandler([&](HotKeyIdentity identity) { told.push_back(identity); });
  ASSERT_TRUE(handler);
  const auto hotKey = this->hotKeys().registerHotKey(this->kSpace, this->kOption, {0x41424344, 7});
  ASSERT_TRUE(hotKey);
  EXPECT_TRUE(told.empty());
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(told, (std::vector<HotKeyIdentity>{{0x41424344, 7}}));
}

TYPED_TEST_P(HotKeysContract, EveryCombinationOfModifiersIsItsOwnHotKey) {
  const auto handler = this->installRecordingHandler();
  const auto first = this->registerSpace(this->kCommand | this->kOption, 1);
  const auto second = this->registerSpace(this->kControl, 2);
  ASSERT_TRUE(first && second);
  this->subject.typeSpace(this->kCommand | this->kOption);
  this->subject.typeSpace(this->kControl);
  this->subject.typeSpace(this->kOption);
  this->subject.typeSpace(this->kControl | this->kShift);
  this->subject.typeSpace(0);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1, 2}));
}

TYPED_TEST_P(HotKeysContract, AllWhoRegisteredACombinationHearOfAPress) {
  const auto handler = this->installRecordingHandler();
  auto earlier = this->registerSpace(this->kOption, 1);
  const auto later = this->registerSpace(this->kOption, 2);
  ASSERT_TRUE(earlier && later);
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1, 2}));
  earlier.reset();
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1, 2, 2}));
}

TYPED_TEST_P(HotKeysContract, AnEndedRegistrationIsSilentAndFreesTheCombination) {
  const auto handler = this->installRecordingHandler();
  auto hotKey = this->registerSpace(this->kOption, 1);
  EXPECT_FALSE(this->subject.otherProgramGrabsSpace(this->kOption));
  hotKey.reset();
  this->subject.typeSpace(this->kOption);
  EXPECT_TRUE(this->pressed.empty());
  EXPECT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
}

TYPED_TEST_P(HotKeysContract, ACombinationOfAnotherProgramIsRefusedAndLogged) {
  ASSERT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
  const auto handler = this->installRecordingHandler();
  EXPECT_FALSE(this->registerSpace(this->kOption, 1));
  EXPECT_EQ(this->log.lines.size(), 1u);
  EXPECT_TRUE(this->registerSpace(this->kControl, 2));
  this->subject.typeSpace(this->kOption);
  EXPECT_TRUE(this->pressed.empty());
}

TYPED_TEST_P(HotKeysContract, AskingWhoHoldsACombinationNeitherKeepsNorLogsAnything) {
  EXPECT_FALSE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption));
  EXPECT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
  EXPECT_TRUE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption));
  EXPECT_FALSE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kControl));
  EXPECT_FALSE(this->hotKeys().isTakenByAnotherProgram(this->kNoKey, this->kOption));
  EXPECT_TRUE(this->log.lines.empty());
}

TYPED_TEST_P(HotKeysContract, OurOwnCombinationIsNotAnotherProgramsAndSurvivesTheQuestion) {
  const auto handler = this->installRecordingHandler();
  const auto hotKey = this->registerSpace(this->kOption, 1);
  EXPECT_FALSE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption));
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
}

TYPED_TEST_P(HotKeysContract, AKeyThatTheKeyboardDoesNotHaveIsRefusedAndLogged) {
  EXPECT_FALSE(this->hotKeys().registerHotKey(this->kNoKey, this->kOption, {0, 1}));
  EXPECT_EQ(this->log.lines.size(), 1u);
}

TYPED_TEST_P(HotKeysContract, ThereIsOneHandlerAtATimeAndNoneWhileItsRegistrationIsDead) {
  auto handler = this->installRecordingHandler();
  ASSERT_TRUE(handler);
  int others = 0;
  EXPECT_FALSE(this->hotKeys().installHandler([&](HotKeyIdentity) { ++others; }));
  const auto hotKey = this->registerSpace(this->kOption, 1);
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
  handler.reset();
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
  EXPECT_EQ(others, 0);
  const auto next = this->hotKeys().installHandler([&](HotKeyIdentity) { ++others; });
  ASSERT_TRUE(next);
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(others, 1);
}

TYPED_TEST_P(HotKeysContract, AHandlerMayEndEveryRegistrationAndItself) {
  Registration one;
  Registration other;
  Registration handler;
  handler = this->hotKeys().installHandler([&](HotKeyIdentity identity) {
    this->pressed.push_back(identity.number);
    one.reset();
    other.reset();
    handler.reset();
  });
  one = this->registerSpace(this->kOption, 1);
  other = this->registerSpace(this->kOption, 2);
  this->subject.typeSpace(this->kOption);
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
}

REGISTER_TYPED_TEST_SUITE_P(
    HotKeysContract, APressIsToldWithTheIdentityThatWasRegistered, EveryCombinationOfModifiersIsItsOwnHotKey,
    AllWhoRegisteredACombinationHearOfAPress, AnEndedRegistrationIsSilentAndFreesTheCombination,
    ACombinationOfAnotherProgramIsRefusedAndLogged, AskingWhoHoldsACombinationNeitherKeepsNorLogsAnything,
    OurOwnCombinationIsNotAnotherProgramsAndSurvivesTheQuestion,
    AKeyThatTheKeyboardDoesNotHaveIsRefusedAndLogged,
    ThereIsOneHandlerAtATimeAndNoneWhileItsRegistrationIsDead, AHandlerMayEndEveryRegistrationAndItself);

} // namespace orbel::contracts
