// What every KeyRecorder keeps to.
//
// Subject: the recorder of a program whose window has the focus, and a keyboard. Each action returns when all
// that comes of it has come.
//   KeyRecorder& recorder();
//   void typeA(std::uint64_t modifierFlags);  holds control, option or both, taps the letter, releases
//   bool windowGotA();       whether the letter has reached the program's own window since the last question;
//                            only while there is no recording
//   void loseFocus();
//   void letAnotherProgramHoldTheKeyboard();  so that it cannot be taken
#pragma once

#include "platform/KeyRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace orbel::contracts {

template <class Subject>
class KeyRecorderContract : public testing::Test {
protected:
  static constexpr std::uint64_t kLetterA = 0;

  // Whether it has begun.
  bool record() {
    auto started = subject.recorder().record({[this](const KeyEvent& event) {
                                                told.push_back(event);
                                                if (endsAtKey && !event.modifierChange) recording.reset();
                                                return swallows;
                                              },
                                              [this] {
                                                ++focusLosses;
                                                recording.reset();
                                              }});
    EXPECT_EQ(started.cause().empty(), started.succeeded());
    const bool hasBegun = started.succeeded();
    recording = std::move(started).valueOr(Registration());
    return hasBegun;
  }
  long timesTold(std::uint64_t modifierFlags) const {
    return std::ranges::count_if(told, [&](const KeyEvent& event) {
      return !event.modifierChange && event.keyCode == kLetterA && event.modifierFlags == modifierFlags;
    });
  }

  Subject subject;
  Registration recording;
  std::vector<KeyEvent> told;
  bool swallows = true;
  bool endsAtKey = false;
  int focusLosses = 0;
};

TYPED_TEST_SUITE_P(KeyRecorderContract);

TYPED_TEST_P(KeyRecorderContract, AKeyIsToldWithItsModifiersAndReachesNoWindow) {
  ASSERT_TRUE(this->record());
  this->subject.typeA(kControlFlag | kOptionFlag);
  EXPECT_EQ(this->timesTold(kControlFlag | kOptionFlag), 1);
  this->recording.reset();
  EXPECT_FALSE(this->subject.windowGotA());
}

TYPED_TEST_P(KeyRecorderContract, EveryChangeOfAModifierIsTold) {
  ASSERT_TRUE(this->record());
  this->subject.typeA(kControlFlag);
  ASSERT_EQ(this->told.size(), 3u);
  EXPECT_TRUE(this->told.front().modifierChange);
  EXPECT_EQ(this->told.front().modifierFlags, kControlFlag);
  EXPECT_TRUE(this->told.back().modifierChange);
  EXPECT_EQ(this->told.back().modifierFlags, 0u);
}

TYPED_TEST_P(KeyRecorderContract, WhatIsNotSwallowedGoesOnToTheWindow) {
  this->swallows = false;
  ASSERT_TRUE(this->record());
  this->subject.typeA(0);
  EXPECT_EQ(this->timesTold(0), 1);
  this->recording.reset();
  EXPECT_TRUE(this->subject.windowGotA());
}

TYPED_TEST_P(KeyRecorderContract, AfterARecordingKeysAreTheWindowsUntilTheNextOne) {
  ASSERT_TRUE(this->record());
  this->recording.reset();
  this->subject.typeA(0);
  EXPECT_TRUE(this->told.empty());
  EXPECT_TRUE(this->subject.windowGotA());
  ASSERT_TRUE(this->record());
  this->subject.typeA(0);
  EXPECT_EQ(this->timesTold(0), 1);
}

TYPED_TEST_P(KeyRecorderContract, ARecordingMayEndFromWithinItsHandler) {
  this->endsAtKey = true;
  ASSERT_TRUE(this->record());
  this->subject.typeA(0);
  EXPECT_FALSE(this->recording);
  EXPECT_FALSE(this->subject.windowGotA()) << "the key was swallowed";
  this->subject.typeA(0);
  EXPECT_EQ(this->timesTold(0), 1);
  EXPECT_TRUE(this->subject.windowGotA());
}

TYPED_TEST_P(KeyRecorderContract, TheLossOfTheFocusIsToldAndMayEndTheRecording) {
  ASSERT_TRUE(this->record());
  this->subject.loseFocus();
  EXPECT_EQ(this->focusLosses, 1);
  EXPECT_FALSE(this->recording);
  this->subject.typeA(0);
  EXPECT_TRUE(this->told.empty());
}

TYPED_TEST_P(KeyRecorderContract, ALaterRecordingReplacesAnEarlierOneWhichThenEndsNothing) {
  ASSERT_TRUE(this->record());
  Registration earlier = std::move(this->recording);
  ASSERT_TRUE(this->record());
  earlier.reset();
  this->subject.typeA(0);
  EXPECT_EQ(this->timesTold(0), 1);
}

TYPED_TEST_P(KeyRecorderContract, WithoutTheKeyboardThereIsNoRecording) {
  this->subject.letAnotherProgramHoldTheKeyboard();
  EXPECT_FALSE(this->record());
  EXPECT_TRUE(this->told.empty());
}

REGISTER_TYPED_TEST_SUITE_P(KeyRecorderContract, AKeyIsToldWithItsModifiersAndReachesNoWindow,
                            EveryChangeOfAModifierIsTold, WhatIsNotSwallowedGoesOnToTheWindow,
                            AfterARecordingKeysAreTheWindowsUntilTheNextOne,
                            ARecordingMayEndFromWithinItsHandler,
                            TheLossOfTheFocusIsToldAndMayEndTheRecording,
                            ALaterRecordingReplacesAnEarlierOneWhichThenEndsNothing,
                            WithoutTheKeyboardThereIsNoRecording);

} // namespace orbel::contracts
