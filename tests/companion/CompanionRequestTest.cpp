#include "protocols/companion/CompanionRequest.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel {
namespace {

bool isRefused(const std::string& url) {
  return std::holds_alternative<CompanionRequest::Refusal>(CompanionRequest::parse(url));
}

TEST(CompanionRequestTest, TheBareSchemeStartsTheCompanionAndTheBareVerbEndsIt) {
  EXPECT_TRUE(std::holds_alternative<CompanionRequest::Start>(CompanionRequest::parse("orbelmenu-toolkit:")));
  EXPECT_TRUE(std::holds_alternative<CompanionRequest::Terminate>(
      CompanionRequest::parse("orbelmenu-toolkit:terminate")));
}

TEST(CompanionRequestTest, AProcessIsNamedByItsNumber) {
  const auto request = CompanionRequest::parse("orbelmenu-toolkit:terminate/4711");
  ASSERT_TRUE(std::holds_alternative<CompanionRequest::Quit>(request));
  EXPECT_EQ(std::get<CompanionRequest::Quit>(request).processIdentifier, 4711);
}

TEST(CompanionRequestTest, TheLargestNumberIsAProcessAndTheNextOneIsNot) {
  EXPECT_FALSE(isRefused("orbelmenu-toolkit:terminate/2147483647"));
  EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/2147483648"));
  EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/99999999999999999999999999"));
}

TEST(CompanionRequestTest, NumbersThatNameNoSingleProcessOfTheUserAreRefused) {
  for (const std::string number : {"0", "1", "-1", "-4711", "-2147483648"}) {
    EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/" + number)) << number;
  }
}

TEST(CompanionRequestTest, AnythingAroundOrInsteadOfTheNumberIsRefused) {
  for (const std::string text :
       {"", " 12", "12 ", "12x", "+12", "0x12", "12/", "12?x=1", "12#", "1e3", "twelve"}) {
    EXPECT_TRUE(isRefused("orbelmenu-toolkit:terminate/" + text)) << text;
  }
}

TEST(CompanionRequestTest, OtherVerbsAndOtherSchemesAreRefused) {
  for (const std::string url :
       {"", "orbelmenu-toolkit", "orbelmenu-toolkit:kill/12", "orbelmenu-toolkit:Terminate/12",
        "orbelmenu-toolkit:terminated", "orbelmenu-toolkit://terminate/12", "orbelmenu-toolkit:terminate12",
        "http://example.org/terminate/12", " orbelmenu-toolkit:", "xorbelmenu-toolkit:terminate/12"}) {
    EXPECT_TRUE(isRefused(url)) << url;
  }
}

} // namespace
} // namespace orbel
