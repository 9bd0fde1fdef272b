#include "shortcut/KeyNames.h"

#include "scene/Event.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace orbel {
namespace {

constexpr std::array<std::uint64_t, 19> kFunctionKeys = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                                         103, 111, 105, 107, 113, 106, 64, 79,  80};

TEST(KeyNamesTest, EveryKeyWithAFixedTextHasIt) {
  const std::vector<std::pair<std::uint64_t, std::string_view>> texts = {
      {36, "\u21A9"},  {48, "\u21E5"},  {49, "Space"},   {51, "\u232B"},  {53, "\u238B"},  {71, "\u2327"},
      {76, "\u2305"},  {114, "?"},      {115, "\u2196"}, {116, "\u21DE"}, {117, "\u2326"}, {119, "\u2198"},
      {121, "\u21DF"}, {123, "\u2190"}, {124, "\u2192"}, {125, "\u2193"}, {126, "\u2191"}, {65, "."},
      {67, "*"},       {69, "+"},       {75, "/"},       {81, "="},       {82, "0"},       {83, "1"},
      {84, "2"},       {85, "3"},       {86, "4"},       {87, "5"},       {88, "6"},       {89, "7"},
      {91, "8"},       {92, "9"}};
  for (const auto& [keyCode, text] : texts)
    EXPECT_EQ(KeyNames::fixedText(keyCode), text) << keyCode;
}

TEST(KeyNamesTest, KeypadMinusShowsAnEnDashAndNotAHyphen) {
  EXPECT_EQ(KeyNames::fixedText(78), "\u2013");
}

TEST(KeyNamesTest, TheNineteenFunctionKeysAreNumberedAndNamedInOrder) {
  for (std::size_t index = 0; index < kFunctionKeys.size(); ++index) {
    const int number = static_cast<int>(index) + 1;
    EXPECT_EQ(KeyNames::functionKeyNumber(kFunctionKeys[index]), number);
    EXPECT_EQ(KeyNames::fixedText(kFunctionKeys[index]), "F" + std::to_string(number));
    EXPECT_TRUE(KeyNames::isFunctionKey(kFunctionKeys[index]));
  }
}

TEST(KeyNamesTest, F20IsAFunctionKeyWithoutAFixedText) {
  EXPECT_TRUE(KeyNames::isFunctionKey(90));
  EXPECT_EQ(KeyNames::functionKeyNumber(90), std::nullopt);
  EXPECT_EQ(KeyNames::fixedText(90), std::nullopt);
}

TEST(KeyNamesTest, AllOtherKeysAreLeftToTheKeyboardLayout) {
  std::size_t fixed = 0;
  for (std::uint64_t keyCode = 0; keyCode < 256; ++keyCode) {
    if (KeyNames::fixedText(keyCode)) ++fixed;
    const bool isOutsideTheTable = keyCode < 36 || keyCode > 126;
    EXPECT_FALSE(isOutsideTheTable && KeyNames::fixedText(keyCode)) << keyCode;
  }
  EXPECT_EQ(fixed, 33u + 19u);
  EXPECT_EQ(KeyNames::fixedText(kNoKeyCode), std::nullopt);
  EXPECT_FALSE(KeyNames::isFunctionKey(0));
}

} // namespace
} // namespace orbel
