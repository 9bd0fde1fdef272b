// What every KeyboardLayout keeps to.
//
// Subject: an American keyboard at the start.
//   KeyboardLayout& layout();
//   void switchToGerman();      the user does; returns when it has happened
//   void holdShift();           for the rest of the test
#pragma once

#include "platform/KeyboardLayout.h"
#include "scene/Event.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel::contracts {

template <class Subject>
class KeyboardLayoutContract : public testing::Test {
protected:
  static constexpr std::uint64_t kLetterS = 1, kLetterZ = 6, kDigitOne = 18, kGrave = 50, kFunctionOne = 122;
  std::string text(std::uint64_t virtualKeyCode) {
    return subject.layout().textForKeyCode(virtualKeyCode).value_or("nothing");
  }
  Subject subject;
};

TYPED_TEST_SUITE_P(KeyboardLayoutContract);

TYPED_TEST_P(KeyboardLayoutContract, AKeyYieldsWhatItTypesWithNoModifiers) {
  EXPECT_EQ(this->text(this->kLetterS), "s");
  EXPECT_EQ(this->text(this->kDigitOne), "1");
  this->subject.holdShift();
  EXPECT_EQ(this->text(this->kLetterS), "s");
  EXPECT_EQ(this->text(this->kDigitOne), "1");
}

TYPED_TEST_P(KeyboardLayoutContract, AKeyThatTypesNothingAndACodeWithoutAKeyYieldNothing) {
  EXPECT_EQ(this->text(this->kFunctionOne), "nothing");
  EXPECT_EQ(this->text(kNoKeyCode), "nothing");
}

TYPED_TEST_P(KeyboardLayoutContract, TheLayoutThatIsCurrentNowCounts) {
  EXPECT_EQ(this->text(this->kLetterZ), "z");
  this->subject.switchToGerman();
  EXPECT_EQ(this->text(this->kLetterZ), "y");
  EXPECT_EQ(this->text(this->kGrave), "^") << "a dead key yields its spacing character";
}

REGISTER_TYPED_TEST_SUITE_P(KeyboardLayoutContract, AKeyYieldsWhatItTypesWithNoModifiers,
                            AKeyThatTypesNothingAndACodeWithoutAKeyYieldNothing,
                            TheLayoutThatIsCurrentNowCounts);

} // namespace orbel::contracts
