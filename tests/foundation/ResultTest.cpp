#include "foundation/Result.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

using namespace orbel;

namespace {

Result<int> half(int number) {
  if (number % 2 != 0) return Failure{std::to_string(number) + " is odd"};
  return number / 2;
}

Result<> checkEven(int number) {
  const auto answer = half(number);
  if (!answer) return answer.failure();
  return {};
}

} // namespace

TEST(ResultTest, HoldsTheValueOfASuccess) {
  const auto answer = half(6);
  ASSERT_TRUE(answer);
  EXPECT_EQ(*answer, 3);
  EXPECT_EQ(answer.cause(), "");
}

TEST(ResultTest, HoldsTheCauseOfAFailure) {
  const auto answer = half(7);
  ASSERT_FALSE(answer);
  EXPECT_EQ(answer.cause(), "7 is odd");
}

TEST(ResultTest, GivesAnotherValueOnlyForAFailure) {
  EXPECT_EQ(half(6).valueOr(9), 3);
  EXPECT_EQ(half(7).valueOr(9), 9);
}

TEST(ResultTest, HandsAFailureOnAsAnotherAnswer) {
  EXPECT_TRUE(checkEven(2));
  EXPECT_EQ(checkEven(3).failure(), Failure{"3 is odd"});
}

TEST(ResultTest, TellsAnEmptyTextFromAFailure) {
  const Result<std::string> empty = std::string();
  EXPECT_TRUE(empty);
}

TEST(ResultTest, YieldsAValueThatCanOnlyBeMoved) {
  Result<std::unique_ptr<int>> answer = std::make_unique<int>(4);
  const std::unique_ptr<int> taken = *std::move(answer);
  ASSERT_TRUE(taken);
  EXPECT_EQ(*taken, 4);
}
