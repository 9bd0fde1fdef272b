#include "foundation/Result.h"

#include "foundation/Log.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
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

TEST(ResultTest, IsMadeOfWhatConvertsToItsValue) {
  struct Shape {
    virtual ~Shape() = default;
  };
  struct Disc : Shape {};
  const auto disc = []() -> Result<std::unique_ptr<Shape>> { return std::make_unique<Disc>(); }();
  ASSERT_TRUE(disc);
  EXPECT_NE(dynamic_cast<Disc*>(disc->get()), nullptr);
  const auto nothing = []() -> Result<std::optional<int>> { return std::nullopt; }();
  ASSERT_TRUE(nothing) << "to find nothing is no failure";
  EXPECT_FALSE(*nothing);
  const auto text = []() -> Result<std::string> { return "text"; }();
  EXPECT_EQ(*text, "text");
}

TEST(ResultTest, IsLoggedOnlyAfterAFailure) {
  std::string logged;
  const auto earlier = Log::setSink([&](Log::Severity severity, const std::string& line) {
    logged += (severity == Log::Severity::warning ? "warning: " : "other: ") + line + "\n";
  });
  Log::warningIfFailed(half(6));
  Log::warningIfFailed(checkEven(2));
  Log::warningIfFailed(half(7));
  Log::warningIfFailed(checkEven(9));
  Log::setSink(earlier);
  EXPECT_EQ(logged, "warning: 7 is odd\nwarning: 9 is odd\n");
}

TEST(ResultTest, YieldsAValueThatCanOnlyBeMoved) {
  Result<std::unique_ptr<int>> answer = std::make_unique<int>(4);
  const std::unique_ptr<int> taken = *std::move(answer);
  ASSERT_TRUE(taken);
  EXPECT_EQ(*taken, 4);
}
