// What every TextServices keeps to, for ASCII alone: the doubles know no more.
//
// Subject: text services of an English-speaking user.
//   TextServices& text();
#pragma once

#include "platform/TextServices.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel::contracts {

template <class Subject>
class TextServicesContract : public testing::Test {
protected:
  TextServices& text() { return subject.text(); }
  Subject subject;
};

TYPED_TEST_SUITE_P(TextServicesContract);

TYPED_TEST_P(TextServicesContract, ComparingDisregardsCaseAndOrdersBothWays) {
  const auto compare = [this](const char* left, const char* right) {
    return this->text().compareLocalizedCaseInsensitive(left, right);
  };
  EXPECT_EQ(compare("mail", "MAIL"), 0);
  EXPECT_EQ(compare("", ""), 0);
  EXPECT_LT(compare("apple", "Banana"), 0);
  EXPECT_GT(compare("Cherry", "banana"), 0);
  EXPECT_LT(compare("", "a"), 0);
  EXPECT_LT(compare("Mail", "Mailbox"), 0);
  EXPECT_GT(compare("mailbox", "MAIL"), 0);
}

TYPED_TEST_P(TextServicesContract, CaseChangesLettersAlone) {
  EXPECT_EQ(this->text().uppercased("iPod 2-go"), "IPOD 2-GO");
  EXPECT_EQ(this->text().lowercased("IPod 2-GO"), "ipod 2-go");
  EXPECT_EQ(this->text().uppercased(""), "");
  EXPECT_EQ(this->text().lowercased(""), "");
}

TYPED_TEST_P(TextServicesContract, EveryCharacterHasToBeAlphanumericPunctuationOrASymbol) {
  for (const char* yes : {"", "a", "Z9", "!", "_", "^+<", "~", "a-b"})
    EXPECT_TRUE(this->text().isAlphanumericPunctuationOrSymbol(yes)) << yes;
  for (const char* no : {" ", "a b", "a\n", "\t", "\x1b", "\x7f"})
    EXPECT_FALSE(this->text().isAlphanumericPunctuationOrSymbol(no));
}

TYPED_TEST_P(TextServicesContract, ATextWithoutTranslationStandsForItself) {
  EXPECT_EQ(this->text().localized("A text nobody knows"), "A text nobody knows");
  EXPECT_EQ(this->text().localized(""), "");
}

REGISTER_TYPED_TEST_SUITE_P(TextServicesContract, ComparingDisregardsCaseAndOrdersBothWays,
                            CaseChangesLettersAlone, EveryCharacterHasToBeAlphanumericPunctuationOrASymbol,
                            ATextWithoutTranslationStandsForItself);

} // namespace orbel::contracts
