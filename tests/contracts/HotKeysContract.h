// What every HotKeys keeps to.
//
// Subject: the hot keys of a program, a keyboard, and another program.
//   HotKeys& hotKeys();
//   void settle();                                     returns when every registration so far has its answer
//   void typeSpace(std::uint32_t modifiers);           holds the modifiers, taps the space bar, releases;
//                                                      returns when all that comes of it has come
//   bool otherProgramGrabsSpace(std::uint32_t modifiers);  whether the other program got the combination;
//                                                      it keeps it
#pragma once

#include "platform/HotKeys.h"
#include "scene/Event.h"
#include "tests/support/base/LogCapture.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class HotKeysContract : public testing::Test {
protected:
  static constexpr std::uint64_t kSpace = 49;
  static constexpr std::uint64_t kNoKey = kNoKeyCode;
  static constexpr std::uint32_t kCommand = kHotKeyCommand;
  static constexpr std::uint32_t kShift = kHotKeyShift;
  static constexpr std::uint32_t kOption = kHotKeyOption;
  static constexpr std::uint32_t kControl = kHotKeyControl;
  using Numbers = std::vector<std::uint32_t>;

  HotKeys& hotKeys() { return subject.hotKeys(); }
  Registration installRecordingHandler() {
    return hotKeys().installHandler([this](HotKeyIdentity identity) { pressed.push_back(identity.number); });
  }
  // Waits for the answer. A refused registration is empty or dead.
  Registration registerKey(std::uint64_t keyCode, std::uint32_t modifiers, HotKeyIdentity identity) {
    answer.reset();
    auto registration = hotKeys().registerHotKey(keyCode, modifiers, identity,
                                                 [this](const HotKeyAnswer& given) { answer = given; });
    subject.settle();
    return registration;
  }
  Registration registerSpace(std::uint32_t modifiers, std::uint32_t number) {
    return registerKey(kSpace, modifiers, {0x41424344, number});
  }
  bool isBound() const {
    return answer && answer->succeeded() && answer->value().state == HotKeyStatus::State::bound;
  }
  bool isRefused() const { return answer && !answer->succeeded() && !answer->cause().empty(); }

  Subject subject;
  test::LogCapture log;
  std::optional<HotKeyAnswer> answer; // to the newest registration
  Numbers pressed; // the numbers of the registrations, in the order in which they were reported
};

TYPED_TEST_SUITE_P(HotKeysContract);

TYPED_TEST_P(HotKeysContract, APressIsToldWithTheIdentityThatWasRegistered) {
  std::vector<HotKeyIdentity> told;
  const auto handler =
      this->hotKeys().installHandler([&](HotKeyIdentity identity) { told.push_back(identity); });
  ASSERT_TRUE(handler);
  const auto hotKey = this->registerKey(this->kSpace, this->kOption, {0x41424344, 7});
  ASSERT_TRUE(hotKey);
  ASSERT_TRUE(this->isBound());
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

TYPED_TEST_P(HotKeysContract, ACombinationOfAnotherProgramIsRefusedWithItsCause) {
  ASSERT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
  const auto handler = this->installRecordingHandler();
  const auto refused = this->registerSpace(this->kOption, 1);
  EXPECT_TRUE(this->isRefused());
  EXPECT_TRUE(this->log.lines.empty()) << "that is for whoever asked";
  const auto other = this->registerSpace(this->kControl, 2);
  EXPECT_TRUE(this->isBound());
  this->subject.typeSpace(this->kOption);
  EXPECT_TRUE(this->pressed.empty());
}

TYPED_TEST_P(HotKeysContract, AskingWhoHoldsACombinationNeitherKeepsNorLogsAnything) {
  EXPECT_NE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption), true);
  EXPECT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
  EXPECT_NE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption), false);
  EXPECT_NE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kControl), true);
  EXPECT_NE(this->hotKeys().isTakenByAnotherProgram(this->kNoKey, this->kOption), true);
  EXPECT_TRUE(this->log.lines.empty());
}

TYPED_TEST_P(HotKeysContract, OurOwnCombinationIsNotAnotherProgramsAndSurvivesTheQuestion) {
  const auto handler = this->installRecordingHandler();
  const auto hotKey = this->registerSpace(this->kOption, 1);
  EXPECT_NE(this->hotKeys().isTakenByAnotherProgram(this->kSpace, this->kOption), true);
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
}

TYPED_TEST_P(HotKeysContract, AKeyThatTheKeyboardDoesNotHaveIsRefusedWithItsCause) {
  const auto refused = this->registerKey(this->kNoKey, this->kOption, {0, 1});
  EXPECT_TRUE(this->isRefused());
  EXPECT_TRUE(this->log.lines.empty());
}

TYPED_TEST_P(HotKeysContract, ARegistrationThatEndsBeforeItsAnswerIsNotAnswered) {
  int answers = 0;
  auto hotKey = this->hotKeys().registerHotKey(this->kSpace, this->kOption, {0, 1},
                                               [&](const HotKeyAnswer&) { ++answers; });
  const int before = answers; // one where the desktop answers at once
  hotKey.reset();
  this->subject.settle();
  EXPECT_EQ(answers, before);
  EXPECT_TRUE(this->subject.otherProgramGrabsSpace(this->kOption));
}

TYPED_TEST_P(HotKeysContract, NobodyNeedsToHearTheAnswer) {
  const auto handler = this->installRecordingHandler();
  const auto hotKey = this->hotKeys().registerHotKey(this->kSpace, this->kOption, {0, 1}, nullptr);
  this->subject.settle();
  this->subject.typeSpace(this->kOption);
  EXPECT_EQ(this->pressed, (std::vector<std::uint32_t>{1}));
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
    ACombinationOfAnotherProgramIsRefusedWithItsCause, AskingWhoHoldsACombinationNeitherKeepsNorLogsAnything,
    OurOwnCombinationIsNotAnotherProgramsAndSurvivesTheQuestion,
    AKeyThatTheKeyboardDoesNotHaveIsRefusedWithItsCause, ARegistrationThatEndsBeforeItsAnswerIsNotAnswered,
    NobodyNeedsToHearTheAnswer, ThereIsOneHandlerAtATimeAndNoneWhileItsRegistrationIsDead,
    AHandlerMayEndEveryRegistrationAndItself);

} // namespace orbel::contracts
